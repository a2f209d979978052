#pragma once

#include <string>
#include <vector>

/// One thing about a database file that would surprise an application.
struct Finding {
    std::string kind;
    std::string table;
    std::string row;        ///< as an SQL condition where there is one; empty: not about one row
    std::string column;     ///< empty: not about one column
    std::string value;      ///< what the file holds, shortened
    std::string delivered;  ///< what the library makes of it
    std::string advice;
    bool isLoss;  ///< the library's records do not tell what the file holds
};

using Findings = std::vector<Finding>;
