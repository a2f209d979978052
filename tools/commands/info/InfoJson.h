#pragma once

#include <nlohmann/json_fwd.hpp>

#include "database/info/FileInfo.h"

/// What a file is, in JSON: for other programs, and between the processes of this one.

nlohmann::ordered_json toJson(const FileInfo& info);

/// @param json  made by toJson().
FileInfo infoFrom(const nlohmann::ordered_json& json);

/// @return as PRAGMA journal_mode says it.
const char* journalModeOf(const FileInfo& info);
