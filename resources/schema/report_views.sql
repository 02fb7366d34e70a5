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

-- Declarations sections, API declarations and procedures, each with its declarations and calls by class: variables,
-- constants, calls. A row has a Part when it is one of these three, and the first of its rows has it; rows without
-- are statements inside a procedure that look like the head of one. A detail belongs to the last head whose number is
-- not greater than its own; those of a declarations section have number 0 and so stand before its API declarations,
-- which have none. The line is that of the module: pLine counts one more where there is a declarations section.
-- Windows instead of joins: SQLite makes no passing index for what they compute.
CREATE VIEW "Print_RvProcName" AS
WITH "named" AS (
    SELECT
        *,
        CASE
            WHEN "Api" THEN 'api'
            WHEN "Declarations" THEN 'declarations'
            WHEN "Type" LIKE 'Property%'
                OR "ProcedureName" IS NOT LAG("ProcedureName") OVER (PARTITION BY "objectNo", "Api" ORDER BY "pLine")
            THEN 'procedure'
        END AS "Part",
        COALESCE(MAX(CASE WHEN NOT "Api" THEN "Object" END) OVER "module", "Object") AS "ModuleKind",
        MAX("Declarations") OVER "module" AS "LinesBefore"
    FROM (
        SELECT
            *,
            "Object" LIKE '%(Api)' AS "Api",
            "ProcedureNo" = 0 AND "ProcedureName" = '(Declarations)' AS "Declarations"
        FROM "T_RvProcName"
    )
    WINDOW "module" AS (PARTITION BY "objectNo")
), "listed" AS (
    SELECT
        "objectNo", "ProcedureNo", "pLine", "Midasi", "ObjectName", "ProcedureName", "PrivatePublic", "Type",
        "Parameters", "As", "Line", "Api", "Part", "ModuleKind", "LinesBefore",
        CASE WHEN "Part" IN ('declarations', 'procedure') THEN "pLine" END AS "HeadLine",
        0 AS "ClassNo", NULL AS "Bunrui", NULL AS "Keyword", NULL AS "Statement", NULL AS "Comment"
    FROM "named"
    UNION ALL
    SELECT
        "objectNo", "ProcedureNo", "pLine", NULL, NULL, NULL, NULL, NULL,
        NULL, NULL, NULL, NULL, NULL, NULL, NULL,
        NULL,
        CASE "Bunrui" WHEN '変数' THEN 1 WHEN '定数' THEN 2 ELSE 3 END, "Bunrui", "Type", "Parameters", "As"
    FROM "T_RvDimCall"
), "owned" AS (
    SELECT
        *,
        CASE
            WHEN "ClassNo" = 0 THEN "pLine"
            ELSE COALESCE(MAX("HeadLine") OVER "before", FIRST_VALUE("pLine") OVER "before")
        END AS "OwnerLine"
    FROM "listed"
    WINDOW "before" AS (PARTITION BY "objectNo" ORDER BY "ProcedureNo", "ClassNo" > 0, "pLine")
)
SELECT
    "objectNo",
    "OwnerLine",
    "DetailNo",
    "Midasi",
    "ObjectName",
    "ModuleKind",
    "ProcedureName",
    MAX("OwnerLine" - "LinesBefore", 1) AS "StartLine",
    CASE WHEN "OwnPart" IS NOT NULL THEN "PrivatePublic" END AS "PrivatePublic",
    CASE WHEN "Api" THEN 'API ' || "Type" ELSE "Type" END AS "Type",
    "Parameters",
    "As",
    "Line",
    CASE WHEN "DetailNo" <= 1 THEN "OwnPart" END AS "Part",
    "Bunrui",
    "Keyword",
    "pLine" - "LinesBefore" AS "StatementLine",
    "Statement",
    ltrim("Comment") AS "Comment"
FROM (
    SELECT
        "objectNo", "OwnerLine", "pLine", "Bunrui", "Keyword", "Statement", "Comment",
        ROW_NUMBER() OVER "block" - 1 AS "DetailNo",
        LEAD("pLine") OVER "block" IS NULL AS "Last",
        FIRST_VALUE("Midasi") OVER "block" AS "Midasi",
        FIRST_VALUE("ObjectName") OVER "block" AS "ObjectName",
        FIRST_VALUE("ModuleKind") OVER "block" AS "ModuleKind",
        FIRST_VALUE("ProcedureName") OVER "block" AS "ProcedureName",
        FIRST_VALUE("PrivatePublic") OVER "block" AS "PrivatePublic",
        FIRST_VALUE("Type") OVER "block" AS "Type",
        FIRST_VALUE("Parameters") OVER "block" AS "Parameters",
        FIRST_VALUE("As") OVER "block" AS "As",
        FIRST_VALUE("Line") OVER "block" AS "Line",
        FIRST_VALUE("Api") OVER "block" AS "Api",
        FIRST_VALUE("Part") OVER "block" AS "OwnPart",
        FIRST_VALUE("LinesBefore") OVER "block" AS "LinesBefore"
    FROM "owned"
    WINDOW "block" AS (PARTITION BY "objectNo", "OwnerLine" ORDER BY "ClassNo", "pLine")
)
WHERE "Keyword" IS NOT NULL OR "Last";

-- Actions of macros and their arguments. Two numbers also take in lines that are not what their word says, among them
-- every End If: of these the line itself is shown, and not counted as an action.
CREATE VIEW "Print_RvMacro" AS
SELECT
    "macro"."objectNo",
    "macro"."ProcedureNo",
    "macro"."ObjectName",
    "macro"."ProcName",
    "macro"."LineNo",
    "macro"."Midasi",
    CASE WHEN COALESCE("argument"."HikiNo", 1) = 1 THEN "macro"."AcWhere" END AS "AcWhere",
    CASE WHEN COALESCE("argument"."HikiNo", 1) = 1 THEN "macro"."Tekiyou" END AS "Tekiyou",
    CASE
        WHEN COALESCE("argument"."HikiNo", 1) = 1 THEN COALESCE("action"."ActionName", trim("macro"."Procedure"))
    END AS "NewAction",
    COALESCE("action"."ActionName", trim("macro"."Procedure")) AS "Action",
    CASE WHEN "action"."ActionNo" IS NULL THEN 1 END AS "ActionIsLine",
    CASE WHEN "action"."ActionNo" IS NOT NULL AND COALESCE("argument"."HikiNo", 1) = 1 THEN 1 END AS "Counted",
    "argument"."HikiNo",
    "argument"."Hikisu",
    CASE WHEN "argument"."HikiNo" > 1 THEN 1 END AS "FurtherArgument"
FROM "T_RvMacro" AS "macro"
LEFT JOIN "RvMacroActions" AS "action"
    ON "action"."ActionNo" = "macro"."ActionNo"
    AND ("macro"."ActionNo" <> 45 OR trim("macro"."Procedure") = 'End')
    AND ("macro"."ActionNo" <> 34 OR "macro"."Procedure" LIKE '%Spreadsheet%')
LEFT JOIN "T_RvMacro2" AS "argument"
    ON "argument"."ProcedureNo" = "macro"."ProcedureNo" AND "argument"."LineNo" = "macro"."LineNo";

-- Lines of source with the counts of their object. A procedure is counted by the line that ends it: two procedures of
-- one property have a name and often a number in common. Most lines are told apart by the first test, which is quick.
CREATE VIEW "Print_RvModule" AS
WITH "line" AS (
    SELECT
        *,
        CASE
            WHEN "Procedure" LIKE '%End %'
                AND lower(substr(ltrim("Procedure", char(9, 32)), 1, 7)) IN ('end sub', 'end fun', 'end pro')
            THEN 1
        END AS "ProcedureEnd"
    FROM "T_RvModule"
)
SELECT
    "line".*,
    "object"."LineCount",
    "object"."ProcedureCount"
FROM "line"
JOIN (
    SELECT "objectNo", COUNT(*) AS "LineCount", COUNT("ProcedureEnd") AS "ProcedureCount"
    FROM "line"
    GROUP BY "objectNo"
) AS "object" ON "object"."objectNo" = "line"."objectNo";

-- Where a table is used, object by object: the further places of an object continue its row.
CREATE VIEW "Print_RvLinkTable" AS
SELECT
    "objectNo",
    "Bunrui",
    "ObjectName",
    CASE WHEN "FurtherPlace" IS NULL THEN "ObjectName" END AS "NewObject",
    "ControlName",
    "PropertyName",
    "FurtherPlace"
FROM (
    SELECT
        *,
        rowid AS "PlaceNo",
        CASE WHEN LAG("objectNo") OVER (ORDER BY rowid) IS "objectNo" THEN 1 END AS "FurtherPlace"
    FROM "T_RvLinkObject"
)
ORDER BY "PlaceNo";

-- What was asked, and the answer in numbers.
CREATE VIEW "Print_RvLinkTableHead" AS
SELECT
    "MotoName",
    COUNT(DISTINCT CASE WHEN "Bunrui" = 'クエリ' THEN "objectNo" END) AS "QueryCount",
    COUNT(DISTINCT CASE WHEN "Bunrui" = 'フォーム' THEN "objectNo" END) AS "FormCount",
    COUNT(DISTINCT CASE WHEN "Bunrui" = 'レポート' THEN "objectNo" END) AS "ReportCount",
    COUNT(*) AS "PlaceCount"
FROM "T_RvLinkObject"
GROUP BY "MotoName";

-- What forms or reports refer to: their own sources and events and those of their controls (Part 0), then the
-- procedures that their code calls (Part 1), each once for a calling procedure, with the number of lines. The rows keep
-- the kind of control and the object of the row before where they have none of their own: those are not shown. Only
-- events tell forms from reports, and one run walks forms alone or reports alone.
CREATE VIEW "Print_RvLinkObject" AS
WITH "listed" AS (
    SELECT
        "objectNo", 0 AS "Part", rowid AS "PlaceNo", "ObjectName",
        "ControlNo" AS "OwnerNo",
        CASE WHEN "ControlNo" > 0 THEN "ControlName" ELSE '(オブジェクト自体)' END AS "Owner",
        CASE WHEN "ControlNo" > 0 THEN "ControlBunrui" END AS "ControlKind",
        "PropertyName", "Bunrui", "PropertyValue",
        CASE
            WHEN "Bunrui" = 'ﾕｰｻﾞｰ関数' THEN "MotoName"
            WHEN "Bunrui" = 'マクロ' AND "PropertyValue" NOT LIKE '=%' THEN NULLIF("MotoName", "PropertyValue")
        END AS "MotoName",
        NULL AS "LinkProcedure", NULL AS "LineCount"
    FROM "T_RvLinkObject"
    UNION ALL
    SELECT
        "objectNo", 1, MIN(rowid), "ObjectName",
        "Procedure",
        COALESCE(NULLIF("Procedure", ''), '(Declarations)'),
        NULL,
        NULL, NULL, NULL,
        "MotoName",
        "LinkProcedure", COUNT(*)
    FROM "T_RvLinkModule"
    GROUP BY "objectNo", "Procedure", "LinkProcedure", "MotoName"
), "continued" AS (
    SELECT
        *,
        CASE
            WHEN LAG("PlaceNo") OVER "part" IS NOT NULL AND LAG("OwnerNo") OVER "part" IS "OwnerNo" THEN 1
        END AS "FurtherRow"
    FROM "listed"
    WINDOW "part" AS (PARTITION BY "objectNo", "Part" ORDER BY "PlaceNo")
)
SELECT
    *,
    CASE WHEN "FurtherRow" IS NULL THEN "Owner" END AS "NewOwner",
    CASE WHEN "FurtherRow" IS NULL THEN "ControlKind" END AS "NewKind",
    (
        SELECT MAX(CASE WHEN "ControlNo" > 0 THEN 'フォーム' ELSE "ControlName" END)
        FROM "T_RvLinkObject"
        WHERE "Bunrui" = 'マクロ'
    ) AS "ObjectKind"
FROM "continued";

-- The callers of each procedure, each once with the number of its lines; how many callers and lines there are in all.
CREATE VIEW "Print_RvLinkProc" AS
SELECT
    *,
    CASE WHEN "FurtherCaller" IS NULL THEN "Bunrui" END AS "NewKind",
    CASE WHEN "FurtherCaller" IS NULL THEN "ObjectName" END AS "NewObject"
FROM (
    SELECT
        "MotoName",
        "LinkProcedure",
        "Bunrui",
        "ObjectName",
        COALESCE(NULLIF("Procedure", ''), '(Declarations)') AS "Caller",
        COUNT(*) AS "LineCount",
        MIN(rowid) AS "PlaceNo",
        COUNT(*) OVER "called" AS "CallerCount",
        SUM(COUNT(*)) OVER "called" AS "CallCount",
        CASE
            WHEN LAG("objectNo") OVER (PARTITION BY "MotoName", "LinkProcedure" ORDER BY MIN(rowid)) IS "objectNo" THEN 1
        END AS "FurtherCaller"
    FROM "T_RvLinkModule"
    GROUP BY "MotoName", "LinkProcedure", "objectNo", "Procedure"
    WINDOW "called" AS (PARTITION BY "MotoName", "LinkProcedure")
);

-- Declared names without what marks their type or value and their comment. The name of a type without a comment has
-- its whole line as one, which is not shown.
CREATE VIEW "Print_RvHensu" AS
SELECT
    rowid AS "PlaceNo",
    "objectNo",
    "ObjectName",
    COALESCE(NULLIF("ProcedureName", ''), '(Declarations)') AS "ProcedureName",
    "HensuName",
    "Property",
    "Bunrui",
    substr("Type", instr("Type", '/') + 1) AS "Type",
    CASE
        WHEN "Bunrui" <> '定義' OR "Description" NOT LIKE "Property" || '%Type%' || "HensuName"
        THEN ltrim("Description", ''' ')
    END AS "Description"
FROM "T_RvHensu";

-- Constants and variables: the further ones of a procedure continue its row.
CREATE VIEW "Print_RvHensuNames" AS
SELECT *, CASE WHEN "FurtherName" IS NULL THEN "ProcedureName" END AS "NewProcedure"
FROM (
    SELECT *, CASE WHEN LAG("ProcedureName") OVER "object" IS "ProcedureName" THEN 1 END AS "FurtherName"
    FROM "Print_RvHensu"
    WINDOW "object" AS (PARTITION BY "Bunrui", "objectNo" ORDER BY "PlaceNo")
);
CREATE VIEW "Print_RvHensuT" AS SELECT * FROM "Print_RvHensuNames" WHERE "Bunrui" = '定数';
CREATE VIEW "Print_RvHensuH" AS SELECT * FROM "Print_RvHensuNames" WHERE "Bunrui" = '変数';

-- Members of types, each with the name, scope and comment of its type. A row without a type of its own is the name of
-- one, and stays where no member follows it.
CREATE VIEW "Print_RvHensuU" AS
SELECT *
FROM (
    SELECT
        "PlaceNo",
        "objectNo",
        "ObjectName",
        "TypeNo",
        FIRST_VALUE("HensuName") OVER "members" AS "TypeName",
        FIRST_VALUE("Property") OVER "members" AS "Property",
        FIRST_VALUE("Description") OVER "members" AS "TypeDescription",
        CASE WHEN "IsName" THEN NULL ELSE "HensuName" END AS "MemberName",
        "Type",
        "Description",
        "IsName" AND LEAD("PlaceNo") OVER "members" IS NOT NULL AS "HasMembers"
    FROM (
        SELECT *, SUM("IsName") OVER (ORDER BY "PlaceNo") AS "TypeNo"
        FROM (SELECT *, COALESCE("Type", '') = '' AS "IsName" FROM "Print_RvHensu" WHERE "Bunrui" = '定義')
    )
    WINDOW "members" AS (PARTITION BY "TypeNo" ORDER BY "PlaceNo")
)
WHERE NOT "HasMembers";

-- The objects of now beside those of the earlier state. Names that differ in case alone are one name to Access. Grouped,
-- as SQLite has no index for a join that keeps what only one side has.
-- Change: 1 new, 2 changed, 3 deleted, 4 the same.
CREATE VIEW "Print_RvObjectUpdate" AS
SELECT
    *,
    CASE WHEN "Change" < 4 THEN 1 END AS "Differs",
    CASE "Class"
        WHEN 'Table' THEN 1 WHEN 'Query' THEN 2 WHEN 'Form' THEN 3 WHEN 'Report' THEN 4 WHEN 'Macro' THEN 5
        WHEN 'Module' THEN 6 ELSE 7
    END AS "ClassNo"
FROM (
    SELECT
        "Class",
        MAX("ObjectName") AS "ObjectName",
        MAX("Now") AS "DateUpdate",
        MAX("Old") AS "OldDateUpdate",
        CASE
            WHEN MAX("IsOld") = 0 THEN 1
            WHEN MIN("IsOld") = 1 THEN 3
            WHEN MAX("Now") IS NOT MAX("Old") THEN 2
            ELSE 4
        END AS "Change"
    FROM (
        SELECT "Class", "ObjectName", "DateUpdate" AS "Now", NULL AS "Old", 0 AS "IsOld" FROM "T_RvSaveObject"
        UNION ALL
        SELECT "Class", "ObjectName", NULL, "DateUpdate", 1 FROM "T_RvSaveObjectOld"
    )
    GROUP BY "Class", "ObjectName" COLLATE NOCASE
);

-- Which two files were compared, and the result in numbers.
CREATE VIEW "Print_RvObjectUpdateHead" AS
SELECT
    "flag"."ObjName",
    "flag"."ObjNameOld",
    COUNT(CASE WHEN "object"."Change" = 1 THEN 1 END) AS "NewCount",
    COUNT(CASE WHEN "object"."Change" = 2 THEN 1 END) AS "ChangedCount",
    COUNT(CASE WHEN "object"."Change" = 3 THEN 1 END) AS "DeletedCount",
    COUNT(CASE WHEN "object"."Change" = 4 THEN 1 END) AS "SameCount"
FROM "T_RvSaveFlag" AS "flag"
LEFT JOIN "Print_RvObjectUpdate" AS "object" ON TRUE
GROUP BY "flag".rowid;

-- Specifications and their columns, by their place in the line.
CREATE VIEW "Print_RvTeigi" AS
SELECT
    "spec".rowid AS "SpecNo",
    "spec".*,
    CASE
        WHEN "item".rowid IS NOT NULL
        THEN ROW_NUMBER() OVER (PARTITION BY "spec".rowid ORDER BY "item"."Start", "item".rowid)
    END AS "ColumnNo",
    "item"."FieldName",
    "item"."dataType",
    "item"."Start",
    "item"."Width",
    "item"."IndexType",
    "item"."SkipColumn",
    "item"."Attributes"
FROM "T_RvTeigi" AS "spec"
LEFT JOIN "T_RvTeigiItem" AS "item" ON "item"."SpecID" = "spec"."SpecID";
