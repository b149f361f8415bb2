#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace quillary::platform {

/// Memory without a name that two processes share through a descriptor. Movable, closes its descriptor; a mapping of it
/// outlives it.
class SharedMemory {
public:
    /// Empty and growing, for another process to fill. Absent when the system has no descriptors or memory left.
    static std::optional<SharedMemory> create();
    /// Filled with `bytes` and sealed: nobody can change it any more.
    static std::optional<SharedMemory> sealed(std::span<const std::byte> bytes);

    SharedMemory(SharedMemory&& other) noexcept;
    SharedMemory& operator=(SharedMemory&&) = delete;
    ~SharedMemory();

    int descriptor() const { return m_descriptor; }

    /// Forbids every later change of size, so that no other holder of the descriptor can pull a mapping away.
    bool fixSize();

private:
    explicit SharedMemory(int descriptor) : m_descriptor(descriptor) {}

    int m_descriptor;
};

/// A mapping of a descriptor's whole content into memory, undone with the object.
class Mapping {
public:
    enum class Access { read, write };

    /// `write` shares every change with the other holders. Absent for an empty or unmappable descriptor.
    static std::optional<Mapping> of(int descriptor, Access access);

    Mapping(Mapping&& other) noexcept;
    Mapping& operator=(Mapping&&) = delete;
    ~Mapping();

    std::byte* data() const { return m_data; }
    std::size_t size() const { return m_size; }

private:
    Mapping(std::byte* data, std::size_t size) : m_data(data), m_size(size) {}

    std::byte* m_data;
    std::size_t m_size;
};

} // namespace quillary::platform
