-- The rows of the reports that print two tables: each row of the details with the fields of its master, and a master
-- without details once, with Null in the fields of the details. What may be long and is printed above the details
-- alone (descriptions, SQL) stands in a master's first row only. Nothing but reports reads these views.

-- Tables and their fields.
CREATE VIEW "Print_RvTable" AS
SELECT
    "info"."objectNo",
    "info"."TableName",
    "info"."DateCreated",
    "info"."LastUpdated",
    "info"."Attributes",
    "info"."LinkTable",
    "info"."Connect",
    "info"."RecordCount",
    "info"."SourceTableName",
    "info"."Updatable",
    "info"."Midasi",
    CASE WHEN "item"."FieldNo" IS NULL OR "item"."FieldNo" = 1 THEN "info"."Description" END AS "TableDescription",
    "item"."FieldNo",
    "item"."FieldName",
    "item"."PrimaryKey",
    "item"."FieldType",
    "item"."FieldSize",
    "item"."ZeroLength",
    "item"."DefaultValue",
    "item"."ValRule",
    "item"."Description"
FROM "T_RvTblInfo" AS "info"
LEFT JOIN "T_RvTblItem" AS "item" ON "item"."objectNo" = "info"."objectNo";

-- Indexes and their fields, each with the names of its table and index, which only the rows of first fields have.
CREATE VIEW "Print_RvIndex" AS
SELECT
    "objectNo",
    MAX("TableName") OVER (PARTITION BY "objectNo") AS "TableName",
    "FieldNo",
    "IndexName",
    MAX("IndexName") OVER (PARTITION BY "objectNo", "IndexNo") AS "FieldOf",
    "FieldName",
    "Primary",
    "Clustered",
    "Foreign",
    "Unique",
    "IgnoreNulls",
    "Required",
    CASE WHEN "IndexName" IS NULL THEN 1 END AS "FurtherField"
FROM (
    SELECT *, COUNT("IndexName") OVER (PARTITION BY "objectNo" ORDER BY "FieldNo") AS "IndexNo"
    FROM "T_RvIndex"
);

-- Queries and their fields. The SQL list leaves the fields of an earlier query list standing; they are not its own.
CREATE VIEW "Print_RvQuery" AS
SELECT
    "info"."objectNo",
    "info"."QueryName",
    "info"."QueryType",
    "info"."DateCreated",
    "info"."LastUpdated",
    "info"."ODBCTimeout",
    "info"."MaxRecords",
    "info"."Updatable",
    "info"."Connect",
    "info"."RecordsAffected",
    "info"."Midasi",
    CASE WHEN "item"."FieldNo" IS NULL OR "item"."FieldNo" = 1 THEN "info"."QuerySQL" END AS "QuerySQL",
    CASE WHEN "item"."FieldNo" IS NULL OR "item"."FieldNo" = 1 THEN "info"."Description" END AS "Description",
    "item"."FieldNo",
    "item"."FieldName",
    "item"."FieldType",
    "item"."FieldSize",
    "item"."SourceField",
    "item"."ZeroLength",
    "item"."DefaultValue",
    "item"."SourceTable"
FROM "T_RvQeryInfo" AS "info"
LEFT JOIN "T_RvQeryItem" AS "item" ON "item"."objectNo" = "info"."objectNo" AND "info"."Midasi" <> 1;

-- Forms and the properties of their controls. The texts that begin with their own label are printed behind one.
CREATE VIEW "Print_RvForm" AS
SELECT
    "info"."objectNo",
    "info"."FormName",
    "info"."Midasi",
    substr("head"."RecordSource", instr("head"."RecordSource", ' : ') + 3) AS "RecordSource",
    substr("head"."RecordSource", instr("head"."RecordSource", ' : ') + 3) LIKE 'SELECT%' AS "SourceIsSql",
    substr("head"."Filter", instr("head"."Filter", ' : ') + 3) AS "Filter",
    substr("head"."OrderBy", instr("head"."OrderBy", ' : ') + 3) AS "OrderBy",
    "head"."Caption",
    "head"."DefaultView",
    "head"."AllowEdits",
    "head"."AllowDeletions",
    "head"."AllowAdditions",
    "head"."DataEntry",
    "head"."RecordsetType",
    "head"."RecordLocks",
    "head"."PopUp",
    "head"."Modal",
    "head"."Smenubar",
    "head"."Ibent1",
    "head"."IbentVL1",
    "head"."Ibent2",
    "head"."IbentVL2",
    "head"."Ibent3",
    "head"."IbentVL3",
    "head"."Ibent4",
    "head"."IbentVL4",
    "head"."DateCreated",
    "head"."LastUpdated",
    "head"."Description",
    "item"."ControlNo",
    "item"."PropertyNo",
    "item"."Name",
    "item"."ControlType",
    "item"."cntlVisible",
    "item"."TLWH",
    "item"."Bunrui",
    "item"."PropertyName",
    "item"."PropertyValue",
    "item"."PropertyValue" LIKE 'SELECT%' AS "ValueIsSql",
    CASE WHEN "item"."PropertyNo" > 1 THEN 1 END AS "FurtherProperty"
FROM "T_RvFrmInfo" AS "info"
LEFT JOIN "T_RvFrmItem" AS "item" ON "item"."objectNo" = "info"."objectNo"
LEFT JOIN (
    SELECT "objectNo", MIN("ControlNo") AS "ControlNo" FROM "T_RvFrmItem" GROUP BY "objectNo"
) AS "first" ON "first"."objectNo" = "info"."objectNo"
LEFT JOIN "T_RvFrmInfo" AS "head"
    ON "head"."objectNo" = "info"."objectNo" AND "item"."ControlNo" IS "first"."ControlNo";

-- Reports: their grouping levels (Part 0), then the properties of their controls (Part 1).
CREATE VIEW "Print_RvReport" AS
SELECT
    "info"."objectNo",
    "info"."ReportName",
    "info"."Midasi",
    substr("head"."RecordSource", instr("head"."RecordSource", ' : ') + 3) AS "RecordSource",
    substr("head"."RecordSource", instr("head"."RecordSource", ' : ') + 3) LIKE 'SELECT%' AS "SourceIsSql",
    substr("head"."Filter", instr("head"."Filter", ' : ') + 3) AS "Filter",
    substr("head"."OrderBy", instr("head"."OrderBy", ' : ') + 3) AS "OrderBy",
    "head"."Caption",
    "head"."RecordLocks",
    "head"."Smenubar",
    "head"."Ibent1",
    "head"."IbentVL1",
    "head"."Ibent2",
    "head"."IbentVL2",
    "head"."Ibent3",
    "head"."IbentVL3",
    "head"."Ibent4",
    "head"."IbentVL4",
    "head"."DateCreated",
    "head"."LastUpdated",
    "head"."Description",
    "part"."Part",
    "part"."GroupNo",
    "part"."ControlSource",
    "part"."SortOrder",
    "part"."GroupHeader",
    "part"."GroupFooter",
    "part"."GroupOn",
    "part"."GroupInterval",
    "part"."KeepTogether",
    "part"."ControlNo",
    "part"."PropertyNo",
    "part"."Name",
    "part"."ControlType",
    "part"."cntlVisible",
    "part"."TLWH",
    "part"."Bunrui",
    "part"."PropertyName",
    "part"."PropertyValue",
    "part"."PropertyValue" LIKE 'SELECT%' AS "ValueIsSql",
    CASE WHEN "part"."PropertyNo" > 1 THEN 1 END AS "FurtherProperty"
FROM "T_RvRepInfo" AS "info"
JOIN (
    SELECT
        "objectNo", 0 AS "Part",
        "GroupNo", "ControlSource", "SortOrder", "GroupHeader", "GroupFooter", "GroupOn", "GroupInterval",
        "KeepTogether",
        NULL AS "ControlNo", NULL AS "PropertyNo", NULL AS "Name", NULL AS "ControlType", NULL AS "cntlVisible",
        NULL AS "TLWH", NULL AS "Bunrui", NULL AS "PropertyName", NULL AS "PropertyValue"
    FROM "T_RvRepGrp"
    UNION ALL
    SELECT
        "each"."objectNo", 1,
        NULL, NULL, NULL, NULL, NULL, NULL, NULL,
        NULL,
        "item"."ControlNo", "item"."PropertyNo", "item"."Name", "item"."ControlType", "item"."cntlVisible",
        "item"."TLWH", "item"."Bunrui", "item"."PropertyName", "item"."PropertyValue"
    FROM "T_RvRepInfo" AS "each"
    LEFT JOIN "T_RvRepItem" AS "item" ON "item"."objectNo" = "each"."objectNo"
) AS "part" ON "part"."objectNo" = "info"."objectNo"
LEFT JOIN (
    SELECT "objectNo", MIN("ControlNo") AS "ControlNo" FROM "T_RvRepItem" GROUP BY "objectNo"
) AS "first" ON "first"."objectNo" = "info"."objectNo"
LEFT JOIN "T_RvRepInfo" AS "head"
    ON "head"."objectNo" = "info"."objectNo"
    AND ("part"."GroupNo" = 0 OR ("part"."Part" = 1 AND "part"."ControlNo" IS "first"."ControlNo"));

-- The census, with the controls of each form or report added up, and whether forms and reports both stand in it.
CREATE VIEW "Print_RvControlCount" AS
SELECT
    *,
    "RectangleCount" + "LabelCount" + "LineCount" + "ImageCount" + "CommandButtonCount" + "OptionButtonCount"
        + "CheckBoxCount" + "OptionGroupCount" + "BoundObjectFrameCount" + "TextBoxCount" + "ListBoxCount"
        + "ComboBoxCount" + "SubformCount" + "ObjectFrameCount" + "PageBreakCount" + "PageCount"
        + "CustomControlCount" + "ToggleButtonCount" + "TabCtlCount" AS "ControlCount",
    CASE WHEN (SELECT COUNT(DISTINCT "Class") FROM "T_RvControlCount") > 1 THEN 1 END AS "BothClasses"
FROM "T_RvControlCount";
