-- The two tables of a database of fault definitions, with the columns in the order in which the
-- library knows them. NULL means "not known, or not there": it is delivered as 0 or as "n/a".

CREATE TABLE "fault_type_definition" (
    "code" INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,  -- up to 65535 for a lookup by code
    "alias" VARCHAR,
    "type" VARCHAR,
    "bug" INTEGER,                                      -- up to 4294967295
    "clear_after_cycle_nr" INTEGER                      -- up to 65535
);

CREATE TABLE "descriptions" (
    "id" INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,    -- up to 65535
    "id_fault_type" INTEGER,                            -- the fault type's code, up to 65535
    "id_language" INTEGER,                              -- up to 65535
    "name" VARCHAR,
    "short_description" VARCHAR,
    "description" VARCHAR,
    "comment" VARCHAR,
    "remedy" VARCHAR
);

-- Without it, reading the texts of one fault type scans the whole table.
CREATE INDEX "descriptions_id_fault_type" ON "descriptions" ("id_fault_type");
