#pragma once

// SQLite's header as the oldest supported version had it: without what came later.

#include <sqlite3.h>

#undef SQLITE_DBCONFIG_DEFENSIVE
#undef SQLITE_DBCONFIG_TRUSTED_SCHEMA
