#include "zav/sqlTblUtil.h"

#include <stdexcept>

#include "logLine.h"

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

void eraseLastSeparator(std::string& list)
{
    const std::string::size_type comma = list.rfind(',');
    if (comma == std::string::npos) {
        throw std::out_of_range("basic_string::erase");
    }
    list.erase(comma);
}

template int setValueFromSqlResult(char** cell, unsigned short* value);
template int setValueFromSqlResult(char** cell, unsigned int* value);
template int setValueFromSqlResult(char** cell, unsigned long long* value);

}  // namespace sqlTblUtil
