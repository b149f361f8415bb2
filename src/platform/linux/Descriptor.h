#pragma once

#include <unistd.h>
#include <utility>

namespace quillary::platform {

/// Owns a file descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            reset();
            m_number = std::exchange(other.m_number, -1);
        }
        return *this;
    }
    ~Descriptor() { reset(); }

    explicit operator bool() const { return m_number >= 0; }
    int get() const { return m_number; }
    /// Closing it is the caller's from now on.
    [[nodiscard]] int release() { return std::exchange(m_number, -1); }
    void reset() {
        if (m_number >= 0) ::close(m_number);
        m_number = -1;
    }

private:
    int m_number = -1;
};

} // namespace quillary::platform
