#pragma once

#include <string>

#include "check/Finding.h"

/// One way in which findings are written.
class FindingWriter {
public:
    virtual ~FindingWriter() = default;

    /// @return whether errors must come before warnings, and these before notes.
    virtual bool wantsOrder() const { return false; }

    virtual void begin() {}
    virtual void beginFile(const std::string& file) = 0;
    virtual void add(const Finding& finding) = 0;
    virtual void endFile() {}
    virtual void end() {}
};
