#pragma once

#include "base/Background.h"
#include "blocks/BlockHealth.h"
#include "panel/BlockMediaModel.h"

#include <QObject>
#include <QtQml/qqml.h>
#include <expected>
#include <filesystem>
#include <memory>
#include <unordered_map>
#include <vector>

namespace quillary {

class Storage;

/// How the media of the shelf's blocks are: all of them are looked at in the background, one block at a time, and again
/// whenever the shelf was listed. Nothing is written but what is asked for. Main thread.
class BlockCare : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the shelf")
    /// Of the block whose sheet is open.
    Q_PROPERTY(quillary::BlockMediaModel* media READ media CONSTANT FINAL)
    Q_PROPERTY(bool looking READ looking NOTIFY lookingChanged FINAL)

public:
    /// Both outlive this object.
    BlockCare(Storage& storage, QThreadPool& work, QObject* parent = nullptr);

    /// The shelf's blocks. Replaces a look that is under way.
    void follow(std::vector<std::filesystem::path> blocks);
    /// Null for what was not looked at yet.
    const BlockHealth* of(const std::filesystem::path& block) const;

    BlockMediaModel* media() { return &m_media; }
    /// Whether the block of the sheet is being looked at.
    bool looking() const { return m_one.busy(); }
    /// Lists the media of the block with this file: URL, once they were looked at anew.
    Q_INVOKABLE void show(const QString& url);
    /// Points the block that is shown at the files that were found elsewhere in the library.
    Q_INVOKABLE void useFoundFiles();

Q_SIGNALS:
    /// What is known of some block changed.
    void changed();
    void lookingChanged();
    void done(const QString& text);
    void failed(const QString& text);

private:
    struct Kept;
    void look(const std::filesystem::path& block);

    Storage& m_storage;
    std::shared_ptr<Kept> m_kept;
    std::unordered_map<std::string, BlockHealth> m_health; ///< by path
    BlockMediaModel m_media;
    Background m_all;
    Background m_one;
};

} // namespace quillary
