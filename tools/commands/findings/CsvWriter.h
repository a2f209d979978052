#pragma once

#include "FindingWriter.h"
#include "output/Output.h"

/// Writes findings as CSV; what does not apply, and NULL, is \N.
class CsvWriter : public FindingWriter {
public:
    explicit CsvWriter(Output& output) : m_output(output) {}

    void begin() override;
    void beginFile(const std::string& file) override { m_file = file; }
    void add(const Finding& finding) override;

private:
    Output& m_output;
    std::string m_file;
};
