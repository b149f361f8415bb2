#include "platform/SharedMemory.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillary::platform {

std::optional<SharedMemory> SharedMemory::create() {
    const int descriptor = memfd_create("quillary", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (descriptor < 0) return std::nullopt;
    return SharedMemory(descriptor);
}

std::optional<SharedMemory> SharedMemory::sealed(std::span<const std::byte> bytes) {
    auto memory = create();
    if (!memory) return std::nullopt;
    while (!bytes.empty()) {
        const ssize_t written = ::write(memory->m_descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return std::nullopt;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    constexpr int seals = F_SEAL_WRITE | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;
    if (fcntl(memory->m_descriptor, F_ADD_SEALS, seals) != 0) return std::nullopt;
    return memory;
}

SharedMemory::SharedMemory(SharedMemory&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

SharedMemory::~SharedMemory() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

bool SharedMemory::fixSize() {
    return fcntl(m_descriptor, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) == 0;
}

std::optional<Mapping> Mapping::of(int descriptor, Access access) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || status.st_size <= 0) return std::nullopt;
    const auto size = static_cast<std::size_t>(status.st_size);
    const bool write = access == Access::write;
    void* data = mmap(nullptr, size, write ? PROT_READ | PROT_WRITE : PROT_READ, write ? MAP_SHARED : MAP_PRIVATE,
                      descriptor, 0);
    if (data == MAP_FAILED) return std::nullopt;
    return Mapping(static_cast<std::byte*>(data), size);
}

Mapping::Mapping(Mapping&& other) noexcept : m_data(std::exchange(other.m_data, nullptr)), m_size(other.m_size) {}

Mapping::~Mapping() {
    if (m_data) munmap(m_data, m_size);
}

} // namespace quillary::platform
