#include "zav/sqlTblUtil.h"

#include <stdexcept>
#include <string_view>

#include "logLine.h"
#include "zav/detail/tableParts.h"

namespace {

constexpr const char* KEY = "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL";
constexpr const char* TEXT = "VARCHAR";
constexpr const char* NUMBER = "INTEGER";

// As a view: a function that the library imports takes a hundred bytes of its file.
bool is(const std::string& sqlType, const char* other)
{
    return std::string_view(sqlType) == other;
}

/// A text column of any built-in kind is bound to a string. Without a field it reads null, a text
/// quoted like any other, not a database null.
std::string textValue(const void* field)
{
    return field == nullptr ? "null" : *static_cast<const std::string*>(field);
}

std::string numberValue(std::uint32_t kind, const void* field)
{
    if (field == nullptr) {
        return "0";
    }
    switch (kind) {
    case sqlTblUtil::FIELD_UINT64:
        return sqlTblUtil::numberText(*static_cast<const unsigned long long*>(field));
    case sqlTblUtil::FIELD_UINT32:
        return sqlTblUtil::numberText(*static_cast<const unsigned int*>(field));
    case sqlTblUtil::FIELD_UINT16:
        return sqlTblUtil::numberText(*static_cast<const unsigned short*>(field));
    default:
        return "";  // a string is no number
    }
}

template <class Number>
void decodeNumber(void* field, char** cell)
{
    auto* const number = static_cast<Number*>(field);
    if (cell == nullptr || sqlTblUtil::setValueFromSqlResult(cell, number) != 0) {
        *number = 0;
    }
}

}  // namespace

namespace sqlTblUtil {

void printError(const std::string& message)
{
    LogUtil::writeLine(LogUtil::ERROR_PREFIX, LogUtil::ACCESS_LAYER_TAG, "printError", message);
}

void printWarning(const std::string& message)
{
    LogUtil::writeLine(LogUtil::WARNING_PREFIX, LogUtil::ACCESS_LAYER_TAG, "printWarning", message);
}

std::string numberText(unsigned long long number)
{
    std::ostringstream stream;
    stream << number;
    return stream.str();
}

bool isKey(const std::string& sqlType)
{
    return is(sqlType, KEY);
}

bool takesValue(const std::string& sqlType)
{
    return is(sqlType, TEXT) || is(sqlType, NUMBER);
}

std::string literal(const std::string& sqlType, const std::string& text)
{
    return is(sqlType, TEXT) ? std::string("'").append(text).append("'") : text;
}

std::string valueText(const std::string& sqlType, std::uint32_t kind, const void* field)
{
    if (isKey(sqlType)) {
        return "null";
    }
    if (!takesValue(sqlType)) {
        return "";
    }
    return literal(sqlType, is(sqlType, TEXT) ? textValue(field) : numberValue(kind, field));
}

void warnIfNotBound(const void* field, const std::string& columnName)
{
    if (field == nullptr) {
        printWarning(std::string("value nullptr in column ").append(columnName));
    }
}

void decodeField(std::uint32_t kind, void* field, char** cell)
{
    switch (kind) {
    case FIELD_UINT64:
        decodeNumber<unsigned long long>(field, cell);
        break;
    case FIELD_UINT32:
        decodeNumber<unsigned int>(field, cell);
        break;
    case FIELD_UINT16:
        decodeNumber<unsigned short>(field, cell);
        break;
    default:
        *static_cast<std::string*>(field) = cell != nullptr && *cell != nullptr ? *cell : "n/a";
    }
}

void eraseLastSeparator(std::string& list)
{
    const std::size_t comma = std::string_view(list).rfind(',');
    if (comma == std::string_view::npos) {
        throw std::out_of_range("basic_string::erase");
    }
    list.erase(comma);
}

template int setValueFromSqlResult(char** cell, unsigned short* value);
template int setValueFromSqlResult(char** cell, unsigned int* value);
template int setValueFromSqlResult(char** cell, unsigned long long* value);

}  // namespace sqlTblUtil
