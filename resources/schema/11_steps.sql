-- The step counts: one row a procedure or declarations section.
CREATE TABLE "T_RvProcCount" (
    "Object" TEXT,              -- Form, Report, Module
    "ObjectName" TEXT,
    "ProcedureName" TEXT,
    "objectNo" INTEGER,
    "ProcedureNo" INTEGER,
    "ComentCnt" INTEGER,        -- comment lines
    "SpaceCnt" INTEGER,         -- blank lines
    "ProcCnt" INTEGER,          -- the others
    "TotalCnt" INTEGER
) STRICT;
