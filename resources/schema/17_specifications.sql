-- The import and export specifications of the target, copied as they stand.

-- One row a specification.
CREATE TABLE "T_RvTeigi" (
    "DateDelim" TEXT,
    "DateFourDigitYear" INTEGER NOT NULL DEFAULT 0 CHECK ("DateFourDigitYear" IN (0, 1)),
    "DateLeadingZeros" INTEGER NOT NULL DEFAULT 0 CHECK ("DateLeadingZeros" IN (0, 1)),
    "DateOrder" INTEGER,
    "DecimalPoint" TEXT,
    "FieldSeparator" TEXT,
    "FileType" INTEGER,
    "SpecID" INTEGER,
    "SpecName" TEXT,
    "SpecType" INTEGER,
    "StartRow" INTEGER,
    "TextDelim" TEXT,
    "TimeDelim" TEXT
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvTeigi', 'DateFourDigitYear', 'yes/no'),
    ('T_RvTeigi', 'DateLeadingZeros', 'yes/no');

-- One row a column of a specification.
CREATE TABLE "T_RvTeigiItem" (
    "Attributes" INTEGER,
    "dataType" INTEGER,
    "FieldName" TEXT,
    "IndexType" INTEGER,
    "SkipColumn" INTEGER NOT NULL DEFAULT 0 CHECK ("SkipColumn" IN (0, 1)),
    "SpecID" INTEGER,
    "Start" INTEGER,
    "Width" INTEGER
) STRICT;
INSERT INTO "RvColumns" VALUES
    ('T_RvTeigiItem', 'SkipColumn', 'yes/no');
