#pragma once

#include "blocks/ArrangementFailure.h"
#include "blocks/MediaIdentity.h"
#include "xml/Document.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace quillary {

/// An FCPXML document of any version: its parts that matter to a block. What it does not know stays as it is.
///
/// Movable; any one thread at a time. Nodes that it hands out are good while it lives.
class FCPXMLDocument {
public:
    /// A document of more bytes than this is refused unread.
    static constexpr qsizetype largest = 256 * 1024 * 1024;

    /// One file that an asset refers to. From version 1.9 on each asset has a `media-rep` for each of its files, up to
    /// 1.8 the asset itself carries the reference.
    struct MediaReference {
        xml::Node holder;       ///< the element with the "src" attribute and the "bookmark" child
        QByteArray assetId;     ///< empty when it has none
        QByteArray uid;         ///< of the asset, empty when it has none
        bool isOriginal = true; ///< false for a proxy that stands beside the original
        /// By what its file is known where it does not lie where it is looked for.
        MediaIdentity identity = MediaIdentity::uid;
        std::shared_ptr<const std::filesystem::path> folder = {}; ///< the document's, where it was read from a file

        /// The file behind "src"; none when that is missing or no file of this machine. What is relative counts from
        /// the document's folder.
        std::optional<std::filesystem::path> file() const;
        bool isRelative() const;
        /// The file's name for the eye; what stands there instead where it is no file of this machine.
        QString shownName() const;
        /// Points it at a file, by its absolute URL or, where `from` is given, as it is reached from there; the
        /// bookmark, which would name another one, goes.
        void setFile(const std::filesystem::path& file, const std::optional<std::filesystem::path>& from = {});
    };

    static std::expected<FCPXMLDocument, ArrangementFailure> parse(QByteArrayView bytes);
    static std::expected<FCPXMLDocument, ArrangementFailure> read(const std::filesystem::path& file);
    /// A document's bytes. Only of a regular file, and of none that is larger than `largest`.
    static std::expected<QByteArray, ArrangementFailure> bytesOf(const std::filesystem::path& file);

    /// The clip's own name; else that of the file, where the document is a whole library, event or project; else that
    /// of the first compound media.
    std::optional<QString> derivedName() const;

    xml::Node root() const { return m_document.root(); }
    /// The timelines ("project" and "sequence") and then the loose clips that stand at the top of the document or in
    /// its library and events, each in document order. Where there are none, the first element that is neither the
    /// resources nor the options of an import; nothing for a document without such an element.
    std::vector<xml::Node> clips() const;
    /// The first of them, which stands for the document.
    xml::Node clip() const;
    /// Whether an element of `clips` is a timeline.
    static bool isTimeline(xml::Node clip);
    /// Whether an element is a clip, or something else that may stand in a storyline.
    static bool isLooseClip(xml::Node element);
    /// The groups of resources: at the top, and where the earliest versions have them, in projects and events.
    std::vector<xml::Node> resourceGroups() const;
    using Resources = QHash<QByteArray, xml::Node>;
    /// By their ids; of several with one id the first.
    Resources resources() const;
    /// The storyline of a timeline, or of the compound clip that a clip stands for; no node for every other clip.
    static xml::Node spineOf(xml::Node clip, const Resources& resources);

    /// Every element of that name, in document order. Those within one of them, or within an asset, do not count: there
    /// are none in a valid document.
    std::vector<xml::Node> elements(const char* name) const;
    /// Every reference to a file, in document order.
    std::vector<MediaReference> media() const;

    /// In UTF-8, whatever encoding it came in: others recognise a clip by its first bytes. Fails only when memory is
    /// short.
    std::expected<QByteArray, ArrangementFailure> serialize() const;

private:
    explicit FCPXMLDocument(xml::Document document) : m_document(std::move(document)) {}

    xml::Document m_document;
    std::shared_ptr<const std::filesystem::path> m_folder; ///< none for bytes from elsewhere
    QString m_fileName;                                    ///< without its extension; empty likewise
};

} // namespace quillary
