#pragma once

#include <string>

#include "zav/LogUtil.h"

namespace LogUtil {

constexpr const char* DEBUG_PREFIX = "[DEBUG] ";
constexpr const char* WARNING_PREFIX = "[WARNING] ";
constexpr const char* ERROR_PREFIX = "[ERROR] ";

constexpr const char* SERVICE_TAG = "ZAV";
constexpr const char* ACCESS_LAYER_TAG = "SQL3";

/// Writes one diagnostic line whole and flushes it; every line of the library comes from here.
///
/// @param message  any bytes.
void writeLine(const char* severity, const char* component, const char* function,
               const std::string& message);

/// The same, of a message in pieces. A null piece puts standard output into its bad state, and the
/// rest of the line is lost.
void writeLine(const char* severity, const char* component, const char* function,
               const char* message, const char* second = "", const char* third = "",
               const char* last = "");

}  // namespace LogUtil
