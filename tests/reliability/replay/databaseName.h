#pragma once

/// The database in each folder of a replay.
constexpr const char* DATABASE_NAME = "faults.db";
