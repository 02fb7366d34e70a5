-- The procedure catalogue: declarations sections, API declarations and procedures, and in the detailed list the
-- declarations and calls inside them.

-- One row a declarations section, API declaration or procedure line.
CREATE TABLE "T_RvProcName" (
    "Object" TEXT,              -- Form, Report, Module(Standard), Module(Class), Form(Api) ...
    "ObjectName" TEXT,
    "ProcedureName" TEXT,
    "PrivatePublic" INTEGER NOT NULL DEFAULT 0 CHECK ("PrivatePublic" IN (0, 1)), -- yes: private
    "Type" TEXT,                -- Function, Sub, Property Get ...
    "Parameters" TEXT,
    "As" TEXT,                  -- type of the result
    "Line" INTEGER,             -- number of lines
    "objectNo" INTEGER,
    "ProcedureNo" INTEGER,
    "pLine" INTEGER,            -- running line number within the object
    "Midasi" INTEGER            -- option of the run
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvProcName', 'PrivatePublic', 'yes/no');

-- One row a declaration or call statement.
CREATE TABLE "T_RvDimCall" (
    "objectNo" INTEGER,
    "ProcedureNo" INTEGER,      -- 0 in the declarations section
    "pLine" INTEGER,
    "DimCall" INTEGER,          -- 1 Global, 2 Public, 3 Private, 4 Dim, 5 Const, 6 Call
    "Bunrui" TEXT,              -- 変数, 定数, 呼出
    "Type" TEXT,                -- the keyword
    "As" TEXT,                  -- the comment behind the statement
    "Parameters" TEXT           -- the statement behind its keyword
) STRICT;
