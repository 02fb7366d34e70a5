-- The control counts: one row a form or report.
CREATE TABLE "T_RvControlCount" (
    "objectNo" INTEGER,
    "Class" TEXT,               -- Form or Report
    "ObjectName" TEXT,
    "RectangleCount" INTEGER,
    "LabelCount" INTEGER,
    "LineCount" INTEGER,
    "ImageCount" INTEGER,
    "CommandButtonCount" INTEGER,
    "OptionButtonCount" INTEGER,
    "CheckBoxCount" INTEGER,
    "OptionGroupCount" INTEGER,
    "BoundObjectFrameCount" INTEGER,
    "TextBoxCount" INTEGER,
    "ListBoxCount" INTEGER,
    "ComboBoxCount" INTEGER,
    "SubformCount" INTEGER,
    "ObjectFrameCount" INTEGER,
    "PageBreakCount" INTEGER,
    "PageCount" INTEGER,
    "CustomControlCount" INTEGER,
    "ToggleButtonCount" INTEGER,
    "TabCtlCount" INTEGER
) STRICT;
