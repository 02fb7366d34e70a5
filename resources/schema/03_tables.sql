-- The table analysis: tables, their fields, and the index list.

-- One row a table.
CREATE TABLE "T_RvTblInfo" (
    "objectNo" INTEGER,
    "TableName" TEXT,
    "DateCreated" TEXT,
    "LastUpdated" TEXT,
    "Attributes" INTEGER,
    "LinkTable" TEXT,           -- Link(Access), Link(ODBC), Link(その他); Null for a local table
    "Connect" TEXT,
    "RecordCount" INTEGER,      -- -1 for a link
    "SourceTableName" TEXT,
    "Updatable" INTEGER NOT NULL DEFAULT 0 CHECK ("Updatable" IN (0, 1)),
    "Midasi" INTEGER,           -- option of the run
    "Description" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvTblInfo', 'DateCreated', 'date'),
    ('T_RvTblInfo', 'LastUpdated', 'date'),
    ('T_RvTblInfo', 'Updatable', 'yes/no');

-- One row a field.
CREATE TABLE "T_RvTblItem" (
    "objectNo" INTEGER,         -- of the table
    "FieldNo" INTEGER,          -- from 1 within the table
    "FieldName" TEXT,
    "PrimaryKey" INTEGER NOT NULL DEFAULT 0 CHECK ("PrimaryKey" IN (0, 1)),
    "FieldType" TEXT,           -- in words
    "FieldSize" INTEGER,
    "ZeroLength" INTEGER NOT NULL DEFAULT 0 CHECK ("ZeroLength" IN (0, 1)),
    "DefaultValue" TEXT,
    "ValRule" TEXT,             -- validation rule
    "Description" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvTblItem', 'PrimaryKey', 'yes/no'),
    ('T_RvTblItem', 'ZeroLength', 'yes/no');

-- A head row for each index, with its first field, and a row for each further field.
CREATE TABLE "T_RvIndex" (
    "objectNo" INTEGER,         -- of the table
    "FieldNo" INTEGER,          -- from 1 within the table, through all indexes
    "TableName" TEXT,           -- head row only, like all that follow but FieldName
    "IndexName" TEXT,
    "FieldName" TEXT,
    "Primary" INTEGER NOT NULL DEFAULT 0 CHECK ("Primary" IN (0, 1)),
    "Clustered" INTEGER NOT NULL DEFAULT 0 CHECK ("Clustered" IN (0, 1)),
    "Foreign" INTEGER NOT NULL DEFAULT 0 CHECK ("Foreign" IN (0, 1)),
    "Unique" INTEGER NOT NULL DEFAULT 0 CHECK ("Unique" IN (0, 1)),
    "IgnoreNulls" INTEGER NOT NULL DEFAULT 0 CHECK ("IgnoreNulls" IN (0, 1)),
    "Required" INTEGER NOT NULL DEFAULT 0 CHECK ("Required" IN (0, 1))
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvIndex', 'Primary', 'yes/no'),
    ('T_RvIndex', 'Clustered', 'yes/no'),
    ('T_RvIndex', 'Foreign', 'yes/no'),
    ('T_RvIndex', 'Unique', 'yes/no'),
    ('T_RvIndex', 'IgnoreNulls', 'yes/no'),
    ('T_RvIndex', 'Required', 'yes/no');

-- A table without fields stays in the list.
CREATE VIEW "QE_RvTable" AS
SELECT
    "info"."TableName" AS "テーブル名",
    "item"."FieldName" AS "フィールド名",
    "item"."PrimaryKey" AS "主キー",
    "item"."FieldType" AS "属性",
    "item"."FieldSize" AS "サイズ",
    "item"."Description" AS "説明"
FROM "T_RvTblInfo" AS "info"
LEFT JOIN "T_RvTblItem" AS "item" ON "item"."objectNo" = "info"."objectNo"
ORDER BY "info"."objectNo", "item"."FieldNo";
