#pragma once

#include <cstdint>
#include <string>

#include "zav/export.h"

/// One row of the table "fault_type_definition": one type of fault.
///
/// A value type that owns its strings: copies are member by member, there are no moves. The fields
/// bear the names of the database columns. A default-constructed record has every number 0 and
/// every string empty. Strings are the database's bytes unchanged; no encoding is imposed. A
/// negative number in the database wraps: -1 reads as the largest number of the field.
struct ZAV_EXPORT FaultTypeDef {
    FaultTypeDef();
    /// Copies every field.
    FaultTypeDef(const FaultTypeDef& other);
    /// Copies every field.
    FaultTypeDef& operator=(const FaultTypeDef& other);
    ~FaultTypeDef();

    /// Primary key. 32 bits, 0 to 4294967295, although a lookup by code takes 16 bits; 0 when the
    /// database holds NULL or no number of that range.
    std::uint32_t code = 0;
    /// Short name; "n/a" when the database holds NULL.
    std::string alias;
    /// Kind of fault; "n/a" when the database holds NULL.
    std::string type;
    /// Bug number. 32 bits, 0 to 4294967295; 0 when the database holds NULL or no number of that
    /// range.
    std::uint32_t bug = 0;
    /// Number of the cycle after which the fault clears. 16 bits, 0 to 65535; 0 when the database
    /// holds NULL or no number of that range.
    std::uint16_t clear_after_cycle_nr = 0;
};
