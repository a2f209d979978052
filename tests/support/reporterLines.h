#pragma once

#include <string>

/// The whole lines that the reporters write.
inline std::string errorLine(const std::string& message)
{
    return "[ERROR] SQL3::printError() " + message + "\n";
}

inline std::string warningLine(const std::string& message)
{
    return "[WARNING] SQL3::printWarning() " + message + "\n";
}
