-- The cross-references of the developer support: what objects refer to, and which procedures call which.

-- One row a reference found in a query, form or report.
CREATE TABLE "T_RvLinkObject" (
    "objectNo" INTEGER,
    "ObjectName" TEXT,
    "ControlNo" INTEGER,
    "PropertyNo" INTEGER,
    "Bunrui" TEXT,              -- kind of the reference
    "ControlName" TEXT,
    "ControlBunrui" TEXT,       -- kind of the control
    "PropertyName" TEXT,
    "PropertyValue" TEXT,
    "MotoName" TEXT,            -- what is referred to
    "Midasi" INTEGER
) STRICT;

-- One row a call found in a module.
CREATE TABLE "T_RvLinkModule" (
    "objectNo" INTEGER,
    "ProcedureNo" INTEGER,
    "Bunrui" TEXT,              -- kind of the calling object
    "ObjectName" TEXT,          -- the calling object
    "Procedure" TEXT,           -- the calling procedure; empty in the declarations section
    "LinkProcedure" TEXT,       -- the procedure called
    "MotoName" TEXT             -- the module that holds it
) STRICT;
