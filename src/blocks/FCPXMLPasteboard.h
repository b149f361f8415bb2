#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <optional>

namespace quillary {

namespace platform {
class ItemProvider;
class Pasteboard;
} // namespace platform

/// The one place that knows under which types Final Cut's clips travel. The documents are opaque bytes here. Stateless;
/// pasteboards are asked on the threads that they allow.
namespace FCPXMLPasteboard {

inline const QString primary = QStringLiteral("com.apple.finalcutpro.xml");
/// Final Cut's private clip type: its presence alone marks a pasteboard that holds clips.
inline const QString flexoType = QStringLiteral("com.apple.flexo.proFFPasteboardUTI");

/// The types that carry FCPXML, in the order in which they are tried and offered; plain text last.
const QStringList& types();

/// The same, as a drop target registers for them.
inline const QStringList& pasteboardTypes() {
    return types();
}

/// Whether the first 512 bytes are UTF-8 that contains "<fcpxml". A cut inside a character makes it no FCPXML.
bool isFCPXML(QByteArrayView bytes);

/// The first of `types` that passes the test, unaltered.
std::optional<QByteArray> xml(platform::Pasteboard& pasteboard);
std::optional<QByteArray> xml(const platform::ItemProvider& item);

/// The item that a drag of a block carries: the same bytes under every type, named like the block.
platform::ItemProvider provider(const QByteArray& xml, const QString& name);

/// Whether there are clips and nothing that could be pasted: the private type without FCPXML and without a file or
/// image.
bool holdsFinalCutClips(platform::Pasteboard& pasteboard);
/// Whether a dropped item is a clip: it carries FCPXML, or the private type and no file.
bool carriesClips(const platform::ItemProvider& item);

} // namespace FCPXMLPasteboard

} // namespace quillary
