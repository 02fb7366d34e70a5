-- What stands on paper besides the lists: the cover, and the line that names the analysed file.

-- One row: the cover.
CREATE TABLE "T_RvHyousi" (
    "SysTitle" TEXT,
    "SysName" TEXT,
    "Company" TEXT,
    "Bumon" TEXT,               -- department
    "Auther" TEXT,
    "CreateDate" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvHyousi', 'CreateDate', 'date');

-- At most one row. The only field of all that refuses the empty text.
CREATE TABLE "T_RvTitle" (
    "FileName" TEXT CHECK ("FileName" <> '')
) STRICT;
