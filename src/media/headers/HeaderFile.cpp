#include "media/headers/HeaderFile.h"

#include "media/MediaError.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillary::media {

struct HeaderFile::Window {
    std::uint64_t offset = 0;
    std::size_t filled = 0;
    std::uint8_t bytes[capacity];
};

namespace {

/// What one read fetches when little is asked for: most headers lie in it.
constexpr std::size_t smallRead = 4096;

} // namespace

std::expected<HeaderFile, MediaError> HeaderFile::open(const std::filesystem::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) return std::unexpected(MediaError::unreadable);
    struct stat status {};
    HeaderFile opened(descriptor, 0);
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return std::unexpected(MediaError::unreadable);
    if (status.st_size == 0) return std::unexpected(MediaError::empty);
    opened.m_size = static_cast<std::uint64_t>(status.st_size);
    return opened;
}

HeaderFile::HeaderFile(HeaderFile&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_size(other.m_size)
    , m_window(std::exchange(other.m_window, nullptr)) {}

HeaderFile::~HeaderFile() {
    if (m_descriptor >= 0) ::close(m_descriptor);
    delete m_window;
}

std::span<const std::uint8_t> HeaderFile::bytes(std::uint64_t offset, std::size_t length) const {
    if (offset >= m_size) return {};
    length = std::min<std::uint64_t>({length, capacity, m_size - offset});
    if (!m_window) m_window = new Window;
    Window& window = *m_window;
    if (offset < window.offset || offset + length > window.offset + window.filled) {
        window.offset = offset;
        window.filled = 0;
        const std::size_t wanted = std::max(length, smallRead);
        while (window.filled < length) {
            const ssize_t read = pread(m_descriptor, window.bytes + window.filled, wanted - window.filled,
                                       static_cast<off_t>(offset + window.filled));
            if (read < 0 && errno == EINTR) continue;
            if (read <= 0) break;
            window.filled += static_cast<std::size_t>(read);
        }
    }
    const std::size_t skipped = offset - window.offset;
    return {window.bytes + skipped, std::min(length, window.filled - skipped)};
}

bool HeaderFile::holds(std::uint64_t offset, std::string_view magic) const {
    return std::ranges::equal(bytes(offset, magic.size()), magic, [](std::uint8_t byte, char letter) {
        return byte == static_cast<unsigned char>(letter);
    });
}

std::uint64_t HeaderFile::number(std::uint64_t offset, int length, bool littleEndian) const {
    const auto read = bytes(offset, static_cast<std::size_t>(length));
    if (read.size() < static_cast<std::size_t>(length)) return 0;
    std::uint64_t value = 0;
    for (int i = 0; i < length; ++i)
        value = value << 8 | read[static_cast<std::size_t>(littleEndian ? length - 1 - i : i)];
    return value;
}

std::uint8_t HeaderFile::u8(std::uint64_t offset) const {
    return static_cast<std::uint8_t>(number(offset, 1, false));
}
std::uint16_t HeaderFile::be16(std::uint64_t offset) const {
    return static_cast<std::uint16_t>(number(offset, 2, false));
}
std::uint32_t HeaderFile::be32(std::uint64_t offset) const {
    return static_cast<std::uint32_t>(number(offset, 4, false));
}
std::uint64_t HeaderFile::be64(std::uint64_t offset) const {
    return number(offset, 8, false);
}
std::uint16_t HeaderFile::le16(std::uint64_t offset) const {
    return static_cast<std::uint16_t>(number(offset, 2, true));
}
std::uint32_t HeaderFile::le32(std::uint64_t offset) const {
    return static_cast<std::uint32_t>(number(offset, 4, true));
}
std::uint64_t HeaderFile::le64(std::uint64_t offset) const {
    return number(offset, 8, true);
}

} // namespace quillary::media
