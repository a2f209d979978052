#pragma once

#include <mutex>
#include <ostream>

#include "zav/LogUtil.h"

namespace LogUtil {

constexpr const char* DEBUG_PREFIX = "[DEBUG] ";
constexpr const char* WARNING_PREFIX = "[WARNING] ";
constexpr const char* ERROR_PREFIX = "[ERROR] ";

constexpr const char* SERVICE_TAG = "ZAV";
constexpr const char* ACCESS_LAYER_TAG = "SQL3";

/// Writes what stands before a message.
///
/// @return standard output.
std::ostream& beginLine(const char* severity, const char* component, const char* function);

/// Writes one diagnostic line whole and flushes it; every line of the library comes from here.
///
/// @param message  the pieces of the message, each written as it is: a null text puts standard
///                 output into its bad state, and the rest of the line is lost.
template <class... Message>
void writeLine(const char* severity, const char* component, const char* function,
               const Message&... message)
{
    const std::lock_guard<std::mutex> lock(logMutex);
    (beginLine(severity, component, function) << ... << message) << std::endl;
}

}  // namespace LogUtil
