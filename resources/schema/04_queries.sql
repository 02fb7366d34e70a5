-- The query analysis: saved queries and the fields of their results.

-- One row a query.
CREATE TABLE "T_RvQeryInfo" (
    "objectNo" INTEGER,
    "QueryName" TEXT,
    "QueryType" TEXT,           -- in words
    "DateCreated" TEXT,
    "LastUpdated" TEXT,
    "ODBCTimeout" INTEGER,      -- seconds
    "MaxRecords" INTEGER,
    "Updatable" INTEGER NOT NULL DEFAULT 0 CHECK ("Updatable" IN (0, 1)),
    "Connect" TEXT,
    "RecordsAffected" INTEGER,
    "Midasi" INTEGER,           -- option of the run
    "QuerySQL" TEXT,
    "Description" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvQeryInfo', 'DateCreated', 'date'),
    ('T_RvQeryInfo', 'LastUpdated', 'date'),
    ('T_RvQeryInfo', 'Updatable', 'yes/no');

-- One row a field of a query's result.
CREATE TABLE "T_RvQeryItem" (
    "objectNo" INTEGER,         -- of the query
    "FieldNo" INTEGER,          -- from 1 within the query
    "FieldName" TEXT,
    "FieldType" TEXT,           -- in words
    "FieldSize" ANY,            -- a number, or the text ? when the field cannot be traced
    "SourceField" TEXT,
    "ZeroLength" INTEGER NOT NULL DEFAULT 0 CHECK ("ZeroLength" IN (0, 1)),
    "DefaultValue" TEXT,
    "SourceTable" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvQeryItem', 'ZeroLength', 'yes/no');

-- A query without fields (an action query, or any in the SQL list) stays in the list.
CREATE VIEW "QE_RvQuery" AS
SELECT
    "info"."QueryName" AS "クエリー名",
    "info"."QueryType" AS "ｸｴﾘｰの種類",
    "item"."FieldName" AS "フィールド名",
    "item"."FieldType" AS "属性",
    "item"."FieldSize" AS "サイズ",
    "info"."Description" AS "説明"
FROM "T_RvQeryInfo" AS "info"
LEFT JOIN "T_RvQeryItem" AS "item" ON "item"."objectNo" = "info"."objectNo"
ORDER BY "info"."objectNo", "item"."FieldNo";
