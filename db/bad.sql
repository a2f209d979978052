-- What careless hands can do to the sample database: run on a copy of it, it leaves a file in which
-- an application would find surprises. "zav check" lists them all.

-- Texts are looked up by reading the whole table.
DROP INDEX "descriptions_id_fault_type";

-- The library looks for "remedy" and leaves the field empty.
ALTER TABLE "descriptions" RENAME COLUMN "remedy" TO "Remedy";

-- Beyond 16 bits: reads as 0.
UPDATE "descriptions" SET "id_fault_type" = 70101 WHERE "id" = 1;

-- No number: reads as 0, and the library writes an error line at each query.
UPDATE "fault_type_definition" SET "clear_after_cycle_nr" = 'three' WHERE "code" = 103;

-- A single quote breaks the statements that the library writes.
UPDATE "descriptions" SET "name" = 'Surchauffe de l''entraînement' WHERE "id" = 3;

-- Fault type 102 has no text in French any more.
DELETE FROM "descriptions" WHERE "id_fault_type" = 102 AND "id_language" = 3;
