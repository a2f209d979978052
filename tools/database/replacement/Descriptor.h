#pragma once

#include <unistd.h>

#include <utility>

/// Owns a file descriptor.
class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (isOpen()) {
            close(m_number);
        }
    }

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }

private:
    int m_number;
};
