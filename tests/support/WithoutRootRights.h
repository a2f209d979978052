#pragma once

#include <cstdint>

/// While it lives, the permissions of files bind this thread as they bind any user, even if it runs
/// as root. Throws std::system_error if that cannot be had.
class WithoutRootRights {
public:
    WithoutRootRights();
    // NOLINTNEXTLINE(bugprone-exception-escape): no test may go on without its rights
    ~WithoutRootRights();
    WithoutRootRights(const WithoutRootRights&) = delete;
    WithoutRootRights& operator=(const WithoutRootRights&) = delete;

private:
    std::uint32_t m_effective;  // the capabilities before, of the first 32
};
