#pragma once

#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "zav/export.h"

/// What the table model needs beside its columns: the reporters of one message each, the decoder of
/// a number cell, and the handling of fields and values that does not depend on the record type.
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

/// Writes the line `[ERROR] SQL3::printError() <message>` to standard output and flushes it.
///
/// @param message  one complete message without line end; not kept.
/// @note Takes LogUtil::logMutex; throws nothing but what that lock or the stream throws.
ZAV_EXPORT void printError(const std::string& message);

/// Writes the line `[WARNING] SQL3::printWarning() <message>` to standard output and flushes it.
///
/// @param message  one complete message without line end; not kept.
/// @note Takes LogUtil::logMutex; throws nothing but what that lock or the stream throws.
ZAV_EXPORT void printWarning(const std::string& message);

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

/// Reads the common text of a number cell, a few plain decimal digits and nothing else, without the
/// cost of a stream. A stream would read the same, whatever the global locale: digits need no
/// grouping.
///
/// @tparam T      an unsigned type that a stream reads as a number, not as a character or a bool.
/// @param text    any text.
/// @param number  written only when the result is true.
/// @return whether it was such a text, and its number one that T can hold.
template <class T>
typename std::enable_if<std::is_unsigned<T>::value && (sizeof(T) > 1), bool>::type readPlainDigits(
    const char* text, T* number)
{
    unsigned long long value = 0;
    int digits = 0;
    while (digits < std::numeric_limits<unsigned long long>::digits10 && text[digits] >= '0' &&
           text[digits] <= '9') {
        value = value * 10 + static_cast<unsigned>(text[digits] - '0');
        ++digits;
    }
    if (digits == 0 || text[digits] != '\0' || value > std::numeric_limits<T>::max()) {
        return false;
    }
    *number = static_cast<T>(value);
    return true;
}

/// Leaves every other type to the stream.
inline bool readPlainDigits(const char* /*text*/, const void* /*number*/)
{
    return false;
}

/// Reads a number of the type that `value` points to; see readFromStream().
template <class T>
void extract(std::istream& stream, void* value)
{
    stream >> *static_cast<T*>(value);
}

/// Reads any text of a number cell; see setValueFromSqlResult(). Once for all types: a stream is
/// much code.
///
/// @param cell           the text; not null.
/// @param typeName       of the number's type, for the message.
/// @param extractNumber  reads from the stream what its second argument points to; see extract().
/// @param[out] number    of that type; of no meaning unless the result is 0.
/// @return 0 a number was read; -1 the text holds none, which is reported.
inline int readFromStream(const char* cell, const char* typeName,
                          void (*extractNumber)(std::istream&, void*), void* number)
{
    std::istringstream stream{std::string(cell)};
    extractNumber(stream, number);
    if (!stream.fail()) {
        return 0;
    }
    std::string message = "casting value \"";
    message.append(cell).append("\", typeid=").append(typeName);
    printError(message);
    return -1;
}

/// Decodes one cell of a result row into a number.
///
/// The text is read by the rules of an input stream: leading white space is skipped and reading
/// stops at the first character that cannot continue the number, so " 42" and "42abc" are 42. A
/// text that holds no number, or one that T cannot hold, is reported through printError() as
/// `casting value "<text>", typeid=<type name of T>`, where the type name is the platform's raw one
/// (`t`, `j` and `y` for 16, 32 and 64 bits).
///
/// @tparam T     the field's type; the library carries the instances for unsigned short, unsigned
///               int and unsigned long long.
/// @param cell   the position of the cell in its row; not null. The cell itself is null for an SQL
///               NULL.
/// @param value  the field; written only when the result is 0.
/// @return 0 the field was written; -1 the cell is NULL (nothing is reported) or unreadable.
template <class T>
ZAV_EXPORT int setValueFromSqlResult(char** cell, T* value)
{
    if (*cell == nullptr) {
        return -1;
    }
    T number = 0;
    if (!readPlainDigits(*cell, &number) &&
        readFromStream(*cell, typeid(T).name(), extract<T>, &number) != 0) {
        return -1;
    }
    *value = number;
    return 0;
}

/// @cond  instances in the library
extern template int setValueFromSqlResult<unsigned short>(char** cell, unsigned short* value);
extern template int setValueFromSqlResult<unsigned int>(char** cell, unsigned int* value);
extern template int setValueFromSqlResult<unsigned long long>(char** cell,
                                                              unsigned long long* value);
/// @endcond

}  // namespace sqlTblUtil
