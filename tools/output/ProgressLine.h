#pragma once

#include <chrono>
#include <string>

/// A line on standard error that says what takes so long, on a terminal alone and after a second.
class ProgressLine {
public:
    /// @param doing  what is done to the things that are shown.
    explicit ProgressLine(const std::string& doing);
    ~ProgressLine() { clear(); }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Shows what is being done now; to be called often.
    void show(const std::string& thing);

    /// Takes the line away.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    std::string m_doing;
    bool m_isTerminal;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_lastShown;
    bool m_isShown = false;
};
