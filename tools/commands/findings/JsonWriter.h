#pragma once

#include "FindingWriter.h"
#include "output/JsonList.h"

/// Writes findings as an array of objects.
class JsonWriter : public FindingWriter {
public:
    explicit JsonWriter(Output& output) : m_list(output) {}

    void beginFile(const std::string& file) override { m_file = file; }
    void add(const Finding& finding) override;
    void end() override;

private:
    JsonList m_list;
    std::string m_file;
};
