#pragma once

#include <string>
#include <string_view>

namespace quillary {

/// The sequence of file names that is tried when a file is placed in a folder: "stem.ext", "stem 2.ext", "stem 3.ext" …
///
/// Names are bytes as the file system keeps them. Every name of the sequence fits into 255 bytes: a stem that is too
/// long is shortened at a UTF-8 character boundary, never the number or the extension (extensions over 32 bytes count
/// as part of the stem).
class NumberedName {
public:
    /// `extension` without its dot; empty for a name without one.
    NumberedName(std::string stem, std::string extension);

    /// Splits at the last dot, as std::filesystem does: ".hidden" is a stem without extension.
    static NumberedName ofFileName(std::string_view fileName);

    const std::string& stem() const { return m_stem; }
    const std::string& extension() const { return m_extension; }

    /// The name of attempt `n`, counted from 1: attempt 1 bears no number.
    std::string at(unsigned n) const;

private:
    std::string m_stem;
    std::string m_extension;
};

} // namespace quillary
