#pragma once

#include <iostream>
#include <sstream>
#include <string>

/// Takes what is written to std::cout while it lives; afterwards std::cout is as it was, and good.
class CoutCapture {
public:
    CoutCapture() : m_previous(std::cout.rdbuf(m_buffer.rdbuf())) {}
    ~CoutCapture()
    {
        std::cout.rdbuf(m_previous);  // also clears a bad state
    }
    CoutCapture(const CoutCapture&) = delete;
    CoutCapture& operator=(const CoutCapture&) = delete;

    /// @return all that has been written so far.
    std::string text() const { return m_buffer.str(); }

private:
    std::ostringstream m_buffer;
    std::streambuf* m_previous;
};
