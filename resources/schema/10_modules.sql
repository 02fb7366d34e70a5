-- The module listing: one row a source line, blank and Option lines left out.
CREATE TABLE "T_RvModule" (
    "Label" TEXT,               -- 1 form, 2 report, 3 module
    "objectNo" INTEGER,
    "ProcedureNo" INTEGER,
    "ObjectName" TEXT,
    "Line" INTEGER,             -- from 1 within the object
    "ProcedureName" TEXT,       -- empty in the declarations section
    "Procedure" TEXT            -- the line itself
) STRICT;
