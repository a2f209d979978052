#include "database.h"

#include "support/database.h"

namespace {

std::string rowsSql(int faultTypes)
{
    return R"(
WITH RECURSIVE number(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM number LIMIT )" +
           std::to_string(faultTypes) + R"()
INSERT INTO "fault_type_definition"
SELECT n, printf(iif(n % 2, 'DRIVE_%d_HOT', 'GATE_%d_NOT_CLOSED'), n), iif(n % 3, 'error', 'warning'),
       iif(n % 7, n * 37, NULL), n % 100
FROM number;

WITH language(n) AS (VALUES (0), (1), (2), (3), (4))
INSERT INTO "descriptions"
SELECT (code * 5 + n) % 65536, code % 65536, n + 1,
       printf(iif(code % 3, 'Drive %d in cabinet %d', 'Gate %d open'), code % 40, code % 12),
       iif(code % 10, 'Overcurrent', 'Encoder lost on axis'),
       printf('The motor current was above %d A for %d ms.', code % 90, code % 20),
       iif(code % 4, NULL, 'Reported as a warning on panel 2.'),
       iif(code % 10, 'Check that the axis moves freely.', NULL)
FROM "fault_type_definition", language
ORDER BY code, n;
)";
}

constexpr const char* TABLES = R"(
CREATE TABLE "fault_type_definition" (
    "code" INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL, "alias" VARCHAR, "type" VARCHAR,
    "bug" INTEGER, "clear_after_cycle_nr" INTEGER);
CREATE TABLE "descriptions" (
    "id" INTEGER, "id_fault_type" INTEGER, "id_language" INTEGER, "name" VARCHAR,
    "short_description" VARCHAR, "description" VARCHAR, "comment" VARCHAR, "remedy" VARCHAR);
)";

constexpr const char* INDEX =
    R"(CREATE INDEX "descriptions_id_fault_type" ON "descriptions" ("id_fault_type");)";

}  // namespace

void makeFaultDatabase(const std::string& file, int faultTypes, bool indexed)
{
    runSql(file, std::string("BEGIN;") + TABLES + rowsSql(faultTypes) + (indexed ? INDEX : "") +
                     "COMMIT;");
}

int codeToLookUp(int faultTypes)
{
    return faultTypes / 2;
}
