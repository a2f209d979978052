#pragma once

#include <sha2.h>

#include <string>
#include <string_view>

/// The SHA-256 of bytes that come one after the other.
class Sha256 {
public:
    Sha256() { SHA256Init(&m_state); }

    void add(std::string_view bytes)
    {
        // The library counts bytes where it says uint8_t: the two are the same here.
        SHA256Update(&m_state, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }

    /// @return its 32 bytes; to be called once, last.
    std::string digest()
    {
        std::string bytes(SHA256_DIGEST_LENGTH, '\0');
        SHA256Final(reinterpret_cast<std::uint8_t*>(bytes.data()), &m_state);
        return bytes;
    }

private:
    SHA2_CTX m_state = {};
};
