#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <span>
#include <string_view>

namespace quillary::media {

enum class MediaError;

/// Files of zeros are endless rows of empty chunks; no header is looked for behind so many.
inline constexpr int chunksAtMost = 100'000;

/// A media file as readers of headers see it: bytes at a position, the first of them at hand. Only regular files open,
/// so that no pipe keeps anybody waiting. Not thread-safe.
class HeaderFile {
public:
    /// An error for a missing, unreadable or empty file and for what is no regular file.
    static std::expected<HeaderFile, MediaError> open(const std::filesystem::path& file);
    HeaderFile(HeaderFile&& other) noexcept;
    ~HeaderFile();

    std::uint64_t size() const { return m_size; }

    /// Up to `length` bytes from `offset` on, fewer at the end of the file, none when it cannot be read. Valid until
    /// the next call.
    std::span<const std::uint8_t> bytes(std::uint64_t offset, std::size_t length) const;
    bool startsWith(std::string_view magic) const { return holds(0, magic); }
    bool holds(std::uint64_t offset, std::string_view magic) const;

    // Numbers; 0 beyond the end of the file.
    std::uint8_t u8(std::uint64_t offset) const;
    std::uint16_t be16(std::uint64_t offset) const;
    std::uint32_t be32(std::uint64_t offset) const;
    std::uint64_t be64(std::uint64_t offset) const;
    std::uint16_t le16(std::uint64_t offset) const;
    std::uint32_t le32(std::uint64_t offset) const;
    std::uint64_t le64(std::uint64_t offset) const;

    static constexpr std::size_t capacity = 128 * 1024; ///< the most that `bytes` gives at once

private:
    HeaderFile(int descriptor, std::uint64_t size) : m_descriptor(descriptor), m_size(size) {}
    std::uint64_t number(std::uint64_t offset, int length, bool littleEndian) const;

    int m_descriptor;
    std::uint64_t m_size;
    struct Window;
    mutable Window* m_window = nullptr;
};

} // namespace quillary::media
