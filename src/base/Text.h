#pragma once

#include <QString>
#include <QStringView>
#include <filesystem>
#include <string_view>

namespace quillary {

/// Between the folder names of a collection path: blank, slash, blank.
inline constexpr QStringView collectionSeparator = u" / ";

/// Text as it is compared when a user searches: case folded, compatibility forms and composed characters unified, so
/// that "É" typed in either form finds both. Diacritics stay significant.
QString foldedForSearch(const QString& text);

/// A file name's bytes as text for the eye. Bytes that are no UTF-8 show as U+FFFD, so the way back is not open: keep
/// the path and show the text.
QString shown(const std::filesystem::path& path);

/// The last component without its extension, as text for the eye.
QString shownStem(const std::filesystem::path& path);

/// Text as file-system bytes.
std::filesystem::path pathOf(const QString& text);

/// The extension in lower case, without its dot, empty when there is none.
std::string lowercaseExtension(const std::filesystem::path& path);

/// "1 video", "2 videos": the number, a blank and the noun with an "s" unless the number is 1.
QString counted(qsizetype number, QStringView noun);

} // namespace quillary
