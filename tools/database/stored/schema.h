#pragma once

/// The statements of db/schema.sql.
extern const char* const SCHEMA;
