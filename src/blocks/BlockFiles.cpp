#include "blocks/BlockFiles.h"

#include "base/Text.h"
#include "library/ShelfIndex.h"

namespace quillary {

std::string blockStem(const QString& name) {
    if (name.trimmed().isEmpty()) return "Block";
    QString safe = name;
    for (QChar& c : safe)
        if (c == u'/' || c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u'-';
    if (safe.startsWith(u'.')) safe[0] = u'-';
    return safe.toStdString();
}

std::optional<QString> collectionOfBlock(const std::filesystem::path& block, const std::filesystem::path& root) {
    const auto below = block.parent_path().lexically_relative(root / Storage::blocksFolder());
    if (below.empty() || below == ".") return {};
    QStringList names;
    for (const auto& part : below)
        if (const QString name = shown(part).trimmed(); !name.isEmpty()) names.append(name);
    if (names.isEmpty()) return {};
    return names.join(collectionSeparator.toString());
}

LibraryItems blocksBelow(const std::filesystem::path& root) {
    ShelfIndex index(root / Storage::blocksFolder(), Storage::blockExtensions, false);
    index.refresh();
    return *index.items();
}

std::filesystem::path posterPath(const std::filesystem::path& block) {
    auto poster = block;
    return poster.replace_extension("png");
}

std::optional<FileDate> posterStampOf(const std::filesystem::path& block) {
    std::error_code none;
    const auto written = std::filesystem::last_write_time(posterPath(block), none);
    if (none) return {};
    return std::chrono::time_point_cast<FileDate::duration>(std::chrono::file_clock::to_sys(written));
}

} // namespace quillary
