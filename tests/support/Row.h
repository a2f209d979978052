#pragma once

#include <initializer_list>
#include <list>
#include <string>
#include <vector>

/// One row of a result: a text for each cell, or nullptr for an SQL NULL.
class Row {
public:
    Row(std::initializer_list<const char*> cells)
    {
        for (const char* cell : cells) {
            m_cells.push_back(cell != nullptr ? m_texts.emplace_back(cell).data() : nullptr);
        }
    }
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;

    char** data() { return m_cells.data(); }

private:
    std::list<std::string> m_texts;  // a list, since the cells point into its texts
    std::vector<char*> m_cells;
};
