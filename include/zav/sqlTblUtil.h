#pragma once

#include <sstream>
#include <string>
#include <typeinfo>

#include "zav/export.h"

/// What the table model needs beside its columns: the reporters of one message each, the decoder of
/// a number cell, and the pieces of a statement text that do not depend on the record type.
namespace sqlTblUtil {

/// Writes the line `[ERROR] SQL3::printError() <message>` to standard output and flushes it.
///
/// @param message  one complete message without line end; copied before the call returns.
/// @note Takes LogUtil::logMutex; throws nothing but what that lock or the stream throws.
ZAV_EXPORT void printError(const std::string& message);

/// Writes the line `[WARNING] SQL3::printWarning() <message>` to standard output and flushes it.
///
/// @param message  one complete message without line end; copied before the call returns.
/// @note Takes LogUtil::logMutex; throws nothing but what that lock or the stream throws.
ZAV_EXPORT void printWarning(const std::string& message);

/// @return the number in the default formatting of a fresh output stream: unsigned decimal without
///         sign or fill, grouped only if the global locale groups digits.
ZAV_EXPORT std::string numberText(unsigned long long number);

/// Erases the last comma of a list and everything behind it.
///
/// @param[in,out] list  the list's text, each entry of which ends with a comma.
/// @throws std::out_of_range with the text "basic_string::erase" if there is no comma; the list is
///         then unchanged.
ZAV_EXPORT void eraseLastSeparator(std::string& list);

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
    const std::string text(*cell);
    std::istringstream stream(text);
    T number = 0;
    stream >> number;
    if (stream.fail()) {
        printError("casting value \"" + text + "\", typeid=" + typeid(T).name());
        return -1;
    }
    *value = number;
    return 0;
}

extern template int setValueFromSqlResult<unsigned short>(char** cell, unsigned short* value);
extern template int setValueFromSqlResult<unsigned int>(char** cell, unsigned int* value);
extern template int setValueFromSqlResult<unsigned long long>(char** cell,
                                                              unsigned long long* value);

}  // namespace sqlTblUtil
