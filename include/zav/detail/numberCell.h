// The end of zav/sqlTblUtil.h, which includes it: the definition of setValueFromSqlResult().
#pragma once

#include <istream>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

namespace sqlTblUtil {

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

template <class T>
int setValueFromSqlResult(char** cell, T* value)
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

}  // namespace sqlTblUtil
