#include "base/Text.h"
#include "library/Storage.h"
#include "platform/FileAttributes.h"
#include "platform/OpenFolder.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <array>

namespace quillary {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

namespace {

constexpr std::array imageExtensions{"png"sv, "jpg"sv, "jpeg"sv, "tiff"sv, "tif"sv, "svg"sv, "pdf"sv};
constexpr std::array vectorExtensions{"svg"sv, "pdf"sv};
constexpr std::array audioExtensions{"wav"sv, "aif"sv, "aiff"sv, "mp3"sv, "m4a"sv, "caf"sv, "flac"sv, "aac"sv};
constexpr std::array videoExtensions{"mov"sv, "mp4"sv, "m4v"sv, "avi"sv, "mxf"sv, "hevc"sv};

constexpr QStringView forbidden = u"/\\:*?\"<>|";
constexpr qsizetype longestName = 80; ///< characters as a reader counts them

bool has(std::span<const std::string_view> extensions, const fs::path& file) {
    return std::ranges::find(extensions, lowercaseExtension(file)) != extensions.end();
}

bool isControl(QChar c) {
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

QString firstCharacters(const QString& text, qsizetype count) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    while (count-- > 0) {
        end = finder.toNextBoundary();
        if (end < 0) return text;
    }
    return text.first(end);
}

/// What a collection's folder may be called: one component that shows.
QString folderName(QString piece) {
    for (QChar& c : piece)
        if (c == u'/' || isControl(c)) c = u'-';
    if (piece.startsWith(u'.')) piece[0] = u'-';
    return piece;
}

/// The folder that is the collection of this name, or is to become it.
fs::path folderIn(const fs::path& above, const QString& name) {
    const fs::path folder = above / pathOf(folderName(name));
    if (platform::isTaken(folder)) return folder;
    std::error_code gone;
    std::vector<fs::path> padded;
    for (const fs::path& entry : platform::visibleEntries(above))
        if (shown(entry.filename()).trimmed() == name && fs::is_directory(entry, gone)) padded.push_back(entry);
    return padded.empty() ? folder : std::ranges::min(padded);
}

} // namespace

std::span<const std::string_view> Storage::extensions(Folder folder) {
    switch (folder) {
    case Folder::videos:
        return videoExtensions;
    case Folder::audio:
        return audioExtensions;
    case Folder::images:
    case Folder::recent:
        break;
    }
    return imageExtensions;
}

std::optional<Storage::Folder> Storage::shelf(const fs::path& file) {
    for (const Folder folder : {Folder::images, Folder::videos, Folder::audio})
        if (has(extensions(folder), file)) return folder;
    return {};
}

bool Storage::isReadableImage(const fs::path& file) {
    return has(imageExtensions, file);
}
bool Storage::isVector(const fs::path& file) {
    return has(vectorExtensions, file);
}

fs::path Storage::relativeFolder(Folder folder) {
    switch (folder) {
    case Folder::images:
        return "Library/Images";
    case Folder::videos:
        return "Library/Videos";
    case Folder::audio:
        return "Library/Audio";
    case Folder::recent:
        break;
    }
    return "Recent";
}

const fs::path& Storage::blocksFolder() {
    static const fs::path folder = "Library/Blocks";
    return folder;
}

std::span<const fs::path> Storage::layout() {
    static const std::array folders{relativeFolder(Folder::images), relativeFolder(Folder::videos),
                                    relativeFolder(Folder::audio), relativeFolder(Folder::recent), blocksFolder()};
    return folders;
}

QString Storage::sanitize(const QString& name) {
    QString safe = name;
    // Blanks and line breaks at the ends are cut, in the middle of a name a line break is a control character.
    for (QChar& c : safe)
        if (forbidden.contains(c)) c = u'-';
    safe = safe.trimmed();
    for (QChar& c : safe)
        if (isControl(c)) c = u'-';
    if (safe.isEmpty()) return QStringLiteral("Image");
    safe = firstCharacters(safe, longestName);
    if (safe.startsWith(u'.')) safe[0] = u'-';
    return safe;
}

fs::path Storage::appending(const QString& collection, const fs::path& folder) {
    fs::path path = folder;
    for (const QString& piece : collection.split(collectionSeparator.toString())) {
        const QString name = piece.trimmed();
        if (!name.isEmpty() && name != u"." && name != u"..") path = folderIn(path, name);
    }
    return path;
}

} // namespace quillary
