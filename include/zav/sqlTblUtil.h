#pragma once

#include <string>

#include "zav/export.h"

/// For tables of an application's own: the reporters of one message each, and the decoder of a
/// number cell.
namespace sqlTblUtil {

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
ZAV_EXPORT int setValueFromSqlResult(char** cell, T* value);

/// @cond  instances in the library
extern template int setValueFromSqlResult<unsigned short>(char** cell, unsigned short* value);
extern template int setValueFromSqlResult<unsigned int>(char** cell, unsigned int* value);
extern template int setValueFromSqlResult<unsigned long long>(char** cell,
                                                              unsigned long long* value);
/// @endcond

}  // namespace sqlTblUtil

#include "zav/detail/numberCell.h"  // what the template is made of
