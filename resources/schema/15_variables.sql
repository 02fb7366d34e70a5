-- The variable catalogue: one row a declared name.
CREATE TABLE "T_RvHensu" (
    "objectNo" INTEGER,
    "ProcedureNo" INTEGER,
    "ObjectName" TEXT,
    "ProcedureName" TEXT,
    "HensuName" TEXT,
    "Property" TEXT,            -- Dim, Global, Public, Private
    "Bunrui" TEXT,              -- 定義, 定数, 変数
    "Type" TEXT,                -- 型/ and the type, or 値/ and the value
    "Line" INTEGER,             -- number of the row within the object
    "Description" TEXT          -- the comment
) STRICT;
