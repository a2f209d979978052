#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "RowCheck.h"

/// Finds values of the key column that several rows share.
class KeyCheck : public RowCheck {
public:
    KeyCheck(const TableModel& model, const FindingSink& sink) : m_model(model), m_sink(sink) {}

    void read(const TableRow& row) override;
    bool finish() override;

private:
    void report(const RawCell& value, std::size_t count) const;

    const TableModel& m_model;
    const FindingSink& m_sink;
    std::vector<std::int64_t> m_numbers;
    std::map<std::string, std::size_t> m_others;
};
