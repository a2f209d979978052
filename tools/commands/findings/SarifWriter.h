#pragma once

#include <cstddef>
#include <vector>

#include "FindingWriter.h"
#include "output/JsonList.h"

/// Writes findings as SARIF 2.1.0, the form that CI systems read.
class SarifWriter : public FindingWriter {
public:
    /// @param files  all that will be written about.
    SarifWriter(Output& output, const std::vector<std::string>& files);

    void begin() override;
    void beginFile(const std::string& file) override;
    void add(const Finding& finding) override;
    void end() override;

private:
    Output& m_output;
    const std::vector<std::string> m_files;  ///< each once
    JsonList m_results;
    std::string m_file;
};
