-- The file list: one row a file that belongs to the target.
CREATE TABLE "T_RvFile" (
    "FileNo" INTEGER,           -- from 1
    "FileName" TEXT,
    "FileSize" REAL,            -- kilobytes
    "UpdateDate" TEXT,
    "FilePath" TEXT,            -- folder, with the separator at its end
    "ReadOnly" INTEGER          -- 1 read-only, 0 not: a number, not a yes/no field
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvFile', 'UpdateDate', 'date');
