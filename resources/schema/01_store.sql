-- The work database itself: what it is, and what every other file here relies on. The files of this folder are
-- applied in the order of their names.
--
-- Tables T_... belong to the analyses, which empty and refill them; their fields stand in the order in which they
-- are written, under the names by which reports and exports know them. Every field is Null until it is written,
-- except yes/no fields, which start as no (0), and the four event slots of forms and reports. Texts have no width
-- limit: what is cut is cut by the analysis that writes it.
PRAGMA encoding = 'UTF-16le'; -- texts come and go as UTF-16, and a text that is not well-formed survives
PRAGMA application_id = 0x52764462; -- "RvDb": how an open tells a work database from any other SQLite file
PRAGMA user_version = 1; -- the version of this schema

-- SQLite keeps yes/no values as integers and dates as texts. This table names the fields that hold them, so that
-- rows come back as they were written; views take the kind from the field behind their column.
--   'yes/no'  0 or 1
--   'date'    local time as YYYY-MM-DD HH:MM:SS
-- All other fields are what their column type says: INTEGER (32 bits), REAL, TEXT, or ANY for either of them.
CREATE TABLE "RvColumns" (
    "TableName" TEXT NOT NULL,
    "FieldName" TEXT NOT NULL,
    "Kind" TEXT NOT NULL CHECK ("Kind" IN ('yes/no', 'date'))
) STRICT;

-- The definitions of the reports, one JSON text each, put in by the build from resources/reports.
CREATE TABLE "RvReports" (
    "Name" TEXT NOT NULL PRIMARY KEY,
    "Definition" TEXT NOT NULL
) STRICT;
