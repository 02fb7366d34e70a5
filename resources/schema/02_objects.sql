-- The object list: the properties of the target database, and its objects.

-- One row a run. The S... fields are the start-up properties as the target's authors left them.
CREATE TABLE "T_DataBase" (
    "DbNo" INTEGER,             -- always 0
    "DbName" TEXT,              -- full path
    "FileSize" REAL,            -- kilobytes
    "Version" TEXT,             -- of the file format
    "QueryTimeout" INTEGER,     -- seconds
    "Updatable" INTEGER NOT NULL DEFAULT 0 CHECK ("Updatable" IN (0, 1)),
    "Stitle" TEXT,              -- title of the application
    "Smenubar" TEXT,
    "Sformdisp" TEXT,           -- form shown at start-up
    "Smenudisp" INTEGER NOT NULL DEFAULT 0 CHECK ("Smenudisp" IN (0, 1)),
    "Sdbdisp" INTEGER NOT NULL DEFAULT 0 CHECK ("Sdbdisp" IN (0, 1)),
    "Sstatusbar" INTEGER NOT NULL DEFAULT 0 CHECK ("Sstatusbar" IN (0, 1)),
    "Sallowshortcutbar" INTEGER NOT NULL DEFAULT 0 CHECK ("Sallowshortcutbar" IN (0, 1)),
    "Stoolbar" INTEGER NOT NULL DEFAULT 0 CHECK ("Stoolbar" IN (0, 1)),
    "AccessVersion" TEXT        -- Null when the target does not say
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_DataBase', 'Updatable', 'yes/no'),
    ('T_DataBase', 'Smenudisp', 'yes/no'),
    ('T_DataBase', 'Sdbdisp', 'yes/no'),
    ('T_DataBase', 'Sstatusbar', 'yes/no'),
    ('T_DataBase', 'Sallowshortcutbar', 'yes/no'),
    ('T_DataBase', 'Stoolbar', 'yes/no');

-- One row an object.
CREATE TABLE "T_RvObject" (
    "DbNo" INTEGER,             -- always 0
    "objectNo" INTEGER,         -- from 1, through all kinds
    "Class" TEXT,               -- Table, Query, Form, Report, Macro, Module
    "ObjectName" TEXT,
    "DateCreate" TEXT,
    "DateUpdate" TEXT,
    "QueryType" TEXT,           -- kind of query, or of link
    "Midasi" INTEGER,           -- option of the run, 1 to 7: selects the heading
    "Description" TEXT          -- of a linked table: where its data lies
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvObject', 'DateCreate', 'date'),
    ('T_RvObject', 'DateUpdate', 'date');

CREATE VIEW "QE_RvObject" AS
SELECT
    "Class" AS "分類",
    "QueryType" AS "ﾃｰﾌﾞﾙの種類",
    "ObjectName" AS "オブジェクト名",
    "Description" AS "説明",
    "DateUpdate" AS "更新日",
    "DateCreate" AS "作成日"
FROM "T_RvObject"
ORDER BY "objectNo";
