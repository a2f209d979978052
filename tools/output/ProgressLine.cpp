#include "ProgressLine.h"

#include <unistd.h>

#include <iostream>

#include "text/TextWidth.h"
#include "text/formatted.h"

ProgressLine::ProgressLine(const std::string& doing)
    : m_doing(doing), m_isTerminal(isatty(STDERR_FILENO) == 1)
{
}

void ProgressLine::show(const std::string& thing)
{
    constexpr std::chrono::milliseconds INTERVAL(200);
    const Clock::time_point now = Clock::now();
    const auto taken = std::chrono::duration_cast<std::chrono::seconds>(now - m_start);
    if (!m_isTerminal || taken.count() < 1 || now - m_lastShown < INTERVAL) {
        return;
    }
    std::cerr << formatted("\r\x1b[Kzav: {} {}, {} s", m_doing, printableLine(thing), taken.count())
              << std::flush;
    m_lastShown = now;
    m_isShown = true;
}

void ProgressLine::clear()
{
    if (m_isShown) {
        std::cerr << "\r\x1b[K" << std::flush;
        m_isShown = false;
    }
}
