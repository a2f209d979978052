#pragma once

#include <iostream>
#include <streambuf>

/// Sends what is written to std::cout elsewhere while it lives; afterwards std::cout is as it was,
/// and good.
class CoutRedirect {
public:
    explicit CoutRedirect(std::streambuf& buffer)
        : m_previous(std::cout.rdbuf(&buffer)), m_exceptions(std::cout.exceptions())
    {
    }
    ~CoutRedirect()
    {
        std::cout.rdbuf(m_previous);  // also clears a bad state
        std::cout.exceptions(m_exceptions);
    }
    CoutRedirect(const CoutRedirect&) = delete;
    CoutRedirect& operator=(const CoutRedirect&) = delete;

private:
    std::streambuf* m_previous;
    std::ios_base::iostate m_exceptions;
};
