-- The form analysis: forms, and the properties of their controls.

-- One row a form.
CREATE TABLE "T_RvFrmInfo" (
    "objectNo" INTEGER,
    "RecordSource" TEXT,
    "Filter" TEXT,
    "OrderBy" TEXT,
    "Caption" TEXT,
    "DefaultView" INTEGER,
    "AllowEdits" INTEGER NOT NULL DEFAULT 0 CHECK ("AllowEdits" IN (0, 1)),
    "AllowDeletions" INTEGER NOT NULL DEFAULT 0 CHECK ("AllowDeletions" IN (0, 1)),
    "AllowAdditions" INTEGER NOT NULL DEFAULT 0 CHECK ("AllowAdditions" IN (0, 1)),
    "DataEntry" INTEGER NOT NULL DEFAULT 0 CHECK ("DataEntry" IN (0, 1)),
    "RecordsetType" INTEGER,
    "RecordLocks" INTEGER,
    "PopUp" INTEGER NOT NULL DEFAULT 0 CHECK ("PopUp" IN (0, 1)),
    "Modal" INTEGER NOT NULL DEFAULT 0 CHECK ("Modal" IN (0, 1)),
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
    "FormName" TEXT,
    "DateCreated" TEXT,
    "LastUpdated" TEXT,
    "Description" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvFrmInfo', 'AllowEdits', 'yes/no'),
    ('T_RvFrmInfo', 'AllowDeletions', 'yes/no'),
    ('T_RvFrmInfo', 'AllowAdditions', 'yes/no'),
    ('T_RvFrmInfo', 'DataEntry', 'yes/no'),
    ('T_RvFrmInfo', 'PopUp', 'yes/no'),
    ('T_RvFrmInfo', 'Modal', 'yes/no'),
    ('T_RvFrmInfo', 'DateCreated', 'date'),
    ('T_RvFrmInfo', 'LastUpdated', 'date');

-- One row a property of a control.
CREATE TABLE "T_RvFrmItem" (
    "objectNo" INTEGER,         -- of the form
    "ControlNo" INTEGER,        -- rising through all forms
    "PropertyNo" INTEGER,       -- from 1 within the control
    "Name" TEXT,                -- of the control
    "ControlType" TEXT,         -- in words
    "cntlVisible" TEXT,         -- True or False
    "TLWH" TEXT,                -- top, left, width, height in centimetres
    "Bunrui" TEXT,              -- group of the property
    "PropertyName" TEXT,
    "PropertyValue" TEXT
) STRICT;

-- A form without controls stays in the list.
CREATE VIEW "QE_RvForm" AS
SELECT
    "info"."FormName" AS "フォーム名",
    "item"."Name" AS "コントロール名",
    "item"."ControlType" AS "ｺﾝﾄﾛｰﾙの種類",
    "item"."Bunrui" AS "分類",
    "item"."PropertyName" AS "属性",
    "item"."PropertyValue" AS "属性値"
FROM "T_RvFrmInfo" AS "info"
LEFT JOIN "T_RvFrmItem" AS "item" ON "item"."objectNo" = "info"."objectNo"
ORDER BY "info"."objectNo", "item"."ControlNo", "item"."PropertyNo";
