#pragma once

#include <sstream>
#include <string>

#include "support/CoutRedirect.h"

/// Takes what is written to std::cout while it lives; afterwards std::cout is as it was, and good.
class CoutCapture {
public:
    /// @return all that has been written so far.
    std::string text() const { return m_buffer.str(); }

private:
    std::stringbuf m_buffer;
    CoutRedirect m_redirect{m_buffer};
};
