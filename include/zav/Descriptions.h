#pragma once

#include <cstdint>
#include <string>

#include "zav/export.h"

/// One row of the table "descriptions": the texts of one fault type in one language.
///
/// A value type that owns its strings: copies are member by member, there are no moves. The fields
/// bear the names of the database columns. A default-constructed record has every number 0 and
/// every string empty. Strings are the database's bytes unchanged; no encoding is imposed. A text
/// that is NULL in the database reads "n/a", a number that is NULL or out of its field's range 0; a
/// negative one wraps: -1 reads as 65535.
struct ZAV_EXPORT Descriptions {
    Descriptions();
    /// Copies every field.
    Descriptions(const Descriptions& other);
    /// Copies every field.
    Descriptions& operator=(const Descriptions& other);
    virtual ~Descriptions();

    /// Primary key. 16 bits, 0 to 65535.
    std::uint16_t id = 0;
    /// Code of the fault type that the texts belong to. 16 bits, 0 to 65535, although a lookup by
    /// fault code takes 32 bits.
    std::uint16_t id_fault_type = 0;
    /// Number of the language. 16 bits, 0 to 65535.
    std::uint16_t id_language = 0;
    std::string name;               ///< what the fault is called
    std::string short_description;  ///< for a line of a list or a small display
    std::string description;        ///< what has happened
    std::string comment;            ///< a note
    std::string remedy;             ///< what to do
};
