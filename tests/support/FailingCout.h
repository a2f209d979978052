#pragma once

#include <iostream>
#include <streambuf>

#include "support/CoutRedirect.h"

/// While it lives, writing to std::cout throws a WriteFailure.
class FailingCout {
public:
    struct WriteFailure {};

    FailingCout() { std::cout.exceptions(std::ios_base::badbit); }

private:
    class Buffer : public std::streambuf {
    protected:
        int_type overflow(int_type /*character*/) override { throw WriteFailure(); }
    };

    Buffer m_buffer;
    CoutRedirect m_redirect{m_buffer};
};
