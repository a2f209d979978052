#pragma once

#include <chrono>
#include <thread>

/// How long others are waited for: as long as the library waits for a writer.
class Patience {
public:
    /// Waits for a moment.
    ///
    /// @return false once there is no patience left.
    bool wait() const
    {
        constexpr std::chrono::milliseconds MOMENT(20);
        std::this_thread::sleep_for(MOMENT);
        return std::chrono::steady_clock::now() < m_end;
    }

private:
    static constexpr std::chrono::seconds MOST{5};

    std::chrono::steady_clock::time_point m_end = std::chrono::steady_clock::now() + MOST;
};
