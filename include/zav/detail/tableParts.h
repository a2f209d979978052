#pragma once

#include <cstdint>
#include <string>

#include "zav/export.h"

// What SqlTbl calls, whatever its record. An application uses nothing of this; but the names belong
// to the binary interface, since one with a table of its own has compiled calls of them.
namespace sqlTblUtil {

/// The kinds of field that the table model handles itself, see SqlTbl::columnValueType_t.
enum FieldKind : std::uint32_t {
    FIELD_NONE = 0,
    FIELD_UINT64 = 1,
    FIELD_UINT32 = 2,
    FIELD_UINT16 = 3,
    FIELD_STRING = 4
};

/// @return whether it is one of the four kinds that a field can be of.
inline bool isBuiltIn(std::uint32_t kind)
{
    return kind >= FIELD_UINT64 && kind <= FIELD_STRING;
}

/// @return the number in the default formatting of a fresh output stream: unsigned decimal without
///         sign or fill, grouped only if the global locale groups digits.
ZAV_EXPORT std::string numberText(unsigned long long number);

/// @return whether a column of this SQL type is the key, which the database assigns.
ZAV_EXPORT bool isKey(const std::string& sqlType);

/// @return whether a column of this SQL type has its field's value in a statement text.
ZAV_EXPORT bool takesValue(const std::string& sqlType);

/// @return the text as a value in a statement: in single quotes for "VARCHAR", else bare.
ZAV_EXPORT std::string literal(const std::string& sqlType, const std::string& text);

/// Writes what a column has as its value in a statement.
///
/// @param sqlType  the column's SQL type.
/// @param kind     the column's `valueType`.
/// @param field    null: the column is not bound. Otherwise a field of that built-in kind; in a
///                 "VARCHAR" column a `std::string`, whatever the kind.
/// @return "null" for the key; the literal of the field for a column that takes a value; empty for
///         any other.
ZAV_EXPORT std::string valueText(const std::string& sqlType, std::uint32_t kind, const void* field);

/// Warns of a column that is not bound to a field, through printWarning().
///
/// @param field       null: it is not.
/// @param columnName  the column's name.
ZAV_EXPORT void warnIfNotBound(const void* field, const std::string& columnName);

/// Decodes one cell of a result row into a field of a built-in kind: a number that is NULL or
/// unreadable becomes 0, a NULL text "n/a".
///
/// @param kind   the column's `valueType`; built-in (see isBuiltIn()).
/// @param field  the field, of that kind.
/// @param cell   the position of the cell in its row; null in a null row only.
ZAV_EXPORT void decodeField(std::uint32_t kind, void* field, char** cell);

/// Erases the last comma of a list and everything behind it.
///
/// @param[in,out] list  the list's text, each entry of which ends with a comma.
/// @throws std::out_of_range with the text "basic_string::erase" if there is no comma; the list is
///         then unchanged.
ZAV_EXPORT void eraseLastSeparator(std::string& list);

}  // namespace sqlTblUtil
