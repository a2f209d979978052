#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

/// Numbers that are the same for the same seed.
class Random {
public:
    explicit Random(std::uint32_t seed) : m_engine(seed) {}

    /// @return one of 0, 1, ..., last.
    std::size_t upTo(std::size_t last) { return m_engine() % (last + 1); }

    /// @return true in so many of a hundred cases.
    bool isWithin(std::size_t percent) { return upTo(99) < percent; }

    /// @return bytes that mean nothing.
    std::string garbage(std::size_t size)
    {
        std::string bytes;
        while (bytes.size() < size) {
            const auto number = static_cast<std::uint32_t>(m_engine());
            bytes.append(reinterpret_cast<const char*>(&number), sizeof(number));
        }
        bytes.resize(size);
        return bytes;
    }

private:
    std::mt19937 m_engine;
};
