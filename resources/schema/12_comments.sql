-- The comment catalogue: one row a whole-line comment inside a procedure.
CREATE TABLE "T_RvComment" (
    "Object" TEXT,              -- Form, Report, Module
    "ObjectName" TEXT,
    "ProcedureName" TEXT,
    "Comment" TEXT,
    "objectNo" INTEGER,
    "ProcedureNo" INTEGER
) STRICT;
