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

-- Indexes and their fields, each with the name of the table, which only the rows of first fields have.
CREATE VIEW "Print_RvIndex" AS
SELECT
    "row"."objectNo",
    "first"."TableName",
    "row"."FieldNo",
    "row"."IndexName",
    "row"."FieldName",
    "row"."Primary",
    "row"."Clustered",
    "row"."Foreign",
    "row"."Unique",
    "row"."IgnoreNulls",
    "row"."Required",
    CASE WHEN "row"."IndexName" IS NULL THEN 1 END AS "FurtherField"
FROM "T_RvIndex" AS "row"
LEFT JOIN "T_RvIndex" AS "first" ON "first"."objectNo" = "row"."objectNo" AND "first"."FieldNo" = 1;

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
