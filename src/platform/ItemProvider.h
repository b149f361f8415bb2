#pragma once

#include "base/WebOrigin.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <vector>

class QMimeData;

namespace quillary::platform {

/// One dragged item: a file, a picture as data, or a clip, under every type it is offered as. A value, complete when it
/// is made; any thread.
class ItemProvider {
public:
    ItemProvider() = default;
    /// Offers the file's content type, whose bytes stay in the file, and its URL. Reads no more than is needed to tell
    /// the type, and only of regular files: others are "inode/directory" or "application/octet-stream".
    static ItemProvider file(const std::filesystem::path& url);

    /// Types are tried by readers in their own order; registering a type again replaces its data.
    void registerData(const QString& type, const QByteArray& data);
    void setSuggestedName(const std::optional<QString>& name) { m_suggestedName = name; }
    void setWebOrigin(const WebOrigin& origin) { m_webOrigin = origin; }

    const QStringList& types() const { return m_types; }
    /// Whether a type is offered that is `type` or a kind of it.
    bool hasItemConforming(const QString& type) const;
    /// Also found under another spelling of the type's name.
    std::optional<QByteArray> data(const QString& type) const;
    /// The file it stands for, if any.
    const std::optional<std::filesystem::path>& fileURL() const { return m_fileURL; }
    const std::optional<QString>& suggestedName() const { return m_suggestedName; }
    const WebOrigin& webOrigin() const { return m_webOrigin; }

private:
    QStringList m_types;
    QMap<QString, QByteArray> m_data;
    std::optional<std::filesystem::path> m_fileURL;
    std::optional<QString> m_suggestedName;
    WebOrigin m_webOrigin;
};

/// Takes over what a drop brings, while the drop lasts: one item for each file, or one for a picture that comes as
/// data, or one for plain text, which is a drawing as well if it holds SVG. Data of no told type are a picture if their
/// first bytes say so. Types named like "com.maker.type", in which editors carry clips, go along as bytes with the
/// first item. A picture is named as `Pasteboard::pictureName` says. Main thread; a source that hangs is waited for once,
/// for some seconds at most, and what it did not give is left out.
std::vector<ItemProvider> itemProviders(const QMimeData& drop);

} // namespace quillary::platform
