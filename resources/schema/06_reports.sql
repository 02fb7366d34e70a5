-- The report analysis: the target's reports, their grouping levels, and the properties of their controls.

-- One row a report.
CREATE TABLE "T_RvRepInfo" (
    "objectNo" INTEGER,
    "RecordSource" TEXT,
    "Filter" TEXT,
    "OrderBy" TEXT,
    "Caption" TEXT,
    "RecordLocks" INTEGER,
    "Smenubar" TEXT,
    "Midasi" INTEGER,           -- option of the run
    "Ibent1" TEXT DEFAULT '',   -- the first four events with a value
    "IbentVL1" TEXT,
    "Ibent2" TEXT DEFAULT '',
    "IbentVL2" TEXT,
    "Ibent3" TEXT DEFAULT '',
    "IbentVL3" TEXT,
    "Ibent4" TEXT DEFAULT '',
    "IbentVL4" TEXT,
    "ReportName" TEXT,
    "DateCreated" TEXT,
    "LastUpdated" TEXT,
    "Description" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvRepInfo', 'DateCreated', 'date'),
    ('T_RvRepInfo', 'LastUpdated', 'date');

-- One row a property of a control.
CREATE TABLE "T_RvRepItem" (
    "objectNo" INTEGER,         -- of the report
    "ControlNo" INTEGER,        -- rising through all reports
    "PropertyNo" INTEGER,       -- from 1 within the control
    "Name" TEXT,                -- of the control
    "ControlType" TEXT,         -- in words
    "cntlVisible" TEXT,         -- True or False
    "TLWH" TEXT,                -- top, left, width, height in centimetres
    "Bunrui" TEXT,              -- group of the property
    "PropertyName" TEXT,
    "PropertyValue" TEXT
) STRICT;

-- One row a grouping level.
CREATE TABLE "T_RvRepGrp" (
    "objectNo" INTEGER,         -- of the report
    "GroupNo" INTEGER,          -- from 0
    "ControlSource" TEXT,       -- field or expression
    "SortOrder" INTEGER,        -- 0 ascending
    "GroupHeader" INTEGER NOT NULL DEFAULT 0 CHECK ("GroupHeader" IN (0, 1)),
    "GroupFooter" INTEGER NOT NULL DEFAULT 0 CHECK ("GroupFooter" IN (0, 1)),
    "GroupOn" INTEGER,
    "GroupInterval" INTEGER,
    "KeepTogether" INTEGER
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvRepGrp', 'GroupHeader', 'yes/no'),
    ('T_RvRepGrp', 'GroupFooter', 'yes/no');

-- A report without controls stays in the list.
CREATE VIEW "QE_RvReport" AS
SELECT
    "info"."ReportName" AS "レポート名",
    "item"."Name" AS "コントロール名",
    "item"."ControlType" AS "ｺﾝﾄﾛｰﾙの種類",
    "item"."Bunrui" AS "分類",
    "item"."PropertyName" AS "属性",
    "item"."PropertyValue" AS "属性値"
FROM "T_RvRepInfo" AS "info"
LEFT JOIN "T_RvRepItem" AS "item" ON "item"."objectNo" = "info"."objectNo"
ORDER BY "info"."objectNo", "item"."ControlNo", "item"."PropertyNo";
