#pragma once

/// What the queries of DescriptionDb are made of, beside the columns of the tables.
namespace tables {

constexpr const char* FAULT_TYPE_DEFINITION = "fault_type_definition";
constexpr const char* DESCRIPTIONS = "descriptions";

/// How a lookup compares its column with a code. The two differ on purpose: each finds what
/// applications have always been given.
constexpr const char* COMPARES_CODE = " LIKE ";
constexpr const char* COMPARES_FAULT_TYPE = "=";

}  // namespace tables
