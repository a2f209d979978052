#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "database/FieldKind.h"
#include "database/RawCell.h"

/// The files of a folder of sources: one of all fault types, and one of the texts in each language.

constexpr const char* FAULTS_FILE = "faults.csv";

/// @return such as "texts-2.csv".
std::string textsFileOf(std::uint16_t language);

/// @return whether the name is meant for a file of texts, of whatever language.
bool isLikeTextsFile(const std::string& name);

/// A table of a database as such a file has it.
struct SourceTable {
    struct Column {
        std::string name;
        FieldKind kind;
        std::size_t position;  ///< in a row of the database's
    };

    static SourceTable ofFaultTypes();

    /// The language is in the name of the file.
    static SourceTable ofTexts();

    std::vector<Column> columns;  ///< the first is the code
};

/// @return the number in a cell that holds one of 16 bits.
std::uint16_t shortNumber(const RawCell& cell);

/// @return what is wrong with a value for a column; empty: nothing.
std::string mistakeIn(const RawCell& cell, const SourceTable::Column& column);
