-- What makes a copy of this database a saved analysis, and the comparison of two such states.

-- One row: for each panel the option whose result the tables hold, its choices, and the cover texts.
CREATE TABLE "T_RvSaveFlag" (
    "ObjName" TEXT,             -- file name of the target
    "fObj" INTEGER,
    "fTbl" INTEGER,
    "fQry" INTEGER,
    "fFrm" INTEGER,
    "fRep" INTEGER,
    "fPrc" INTEGER,
    "fSoc" INTEGER,
    "fPsp" INTEGER,
    "fMcr" INTEGER,
    "fCtl" INTEGER,
    "fFil" INTEGER,
    "mTs" INTEGER,
    "mQs" INTEGER,
    "mFs" INTEGER,
    "mRs" INTEGER,
    "mMs" INTEGER,
    "mPs" INTEGER,
    "mPss" INTEGER,
    "Title" TEXT,
    "System" TEXT,
    "Company" TEXT,
    "Bumon" TEXT,
    "Auther" TEXT,
    "CreateDate" TEXT,          -- as typed, so a text
    "ObjNameOld" TEXT           -- file name of the earlier target, in a comparison
) STRICT;

-- The objects of the target now.
CREATE TABLE "T_RvSaveObject" (
    "objectNo" INTEGER,
    "Class" TEXT,               -- as in T_RvObject
    "ObjectName" TEXT,
    "DateUpdate" TEXT,
    "DateCreate" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvSaveObject', 'DateUpdate', 'date'),
    ('T_RvSaveObject', 'DateCreate', 'date');

-- The objects of the earlier state.
CREATE TABLE "T_RvSaveObjectOld" (
    "Class" TEXT,
    "ObjectName" TEXT,
    "DateUpdate" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvSaveObjectOld', 'DateUpdate', 'date');
