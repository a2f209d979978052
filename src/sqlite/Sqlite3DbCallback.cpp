#include "zav/Sqlite3Db.h"

Sqlite3DbCallback::~Sqlite3DbCallback() = default;
