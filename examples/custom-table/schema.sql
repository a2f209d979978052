CREATE TABLE "service_log" (
    "id" INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,
    "technician" VARCHAR,
    "cycles" INTEGER,               -- of the machine since it was built
    "outcome" VARCHAR NOT NULL      -- "done", "parts missing" or "postponed"
);
INSERT INTO "service_log" ("technician", "cycles", "outcome") VALUES
('Moreau', 4917600000, 'done'),
('Lindqvist', 4933368000, 'parts missing');
