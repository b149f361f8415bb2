#include "base/NumberedName.h"

#include <cstddef>

namespace quillary {

namespace {

constexpr std::size_t longestName = 255;
constexpr std::size_t longestExtension = 32;

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

NumberedName::NumberedName(std::string stem, std::string extension)
    : m_stem(std::move(stem)), m_extension(std::move(extension)) {
    if (m_extension.size() > longestExtension) {
        m_stem += '.' + m_extension;
        m_extension.clear();
    }
}

NumberedName NumberedName::ofFileName(std::string_view fileName) {
    const auto dot = fileName.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || fileName == "..") return {std::string(fileName), {}};
    return {std::string(fileName.substr(0, dot)), std::string(fileName.substr(dot + 1))};
}

std::string NumberedName::at(unsigned n) const {
    std::string tail = n < 2 ? std::string() : ' ' + std::to_string(n);
    if (!m_extension.empty()) tail += '.' + m_extension;
    auto length = m_stem.size();
    if (length + tail.size() > longestName) {
        length = longestName - tail.size();
        while (length > 0 && continuesCharacter(m_stem[length])) --length;
    }
    return m_stem.substr(0, length) + tail;
}

} // namespace quillary
