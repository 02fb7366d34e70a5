// What a report looks like, as data. A definition is a JSON text stored in the work database (table RvReports,
// columns Name and Definition); docs/reports.md describes its language. Lengths are millimetres, type sizes
// points. A report is either a list (head blocks, nested groups, one table of rows) or a sheet of placed fields,
// one page for each row (cover, labels).
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "platform/recordset.h"
#include "platform/text.h"
#include "reports/style.h"

namespace relvane::reports {

enum class Orientation { Upright, Lying };
enum class Align { Left, Center, Right };
enum class VerticalAlign { Top, Middle, Bottom };

// How a value becomes text. Automatic: dates as yyyy/mm/dd hh:nn:ss, yes/no as "○" or nothing, the rest plain.
enum class Format {
    Automatic,
    Plain,
    Count,    // 12,345
    Size,     // 1,234.5
    Date,     // 2026/11/20
    Time,     // 2026/11/20 16:05:09
    LongDate, // 2026年11月20日
    Tally,    // 12,345, and nothing for zero
    Mark,     // "○" or nothing
    YesNo,    // "はい" or "いいえ"
};

// Where a text too wide for its place breaks. Source keeps its indentation, is set in the fixed-width face and
// carries a mark at each wrap.
enum class Wrap { Words, Characters, Source };

// The names of the fields that a definition uses of one row source; a field is known by its position here.
using FieldNames = std::vector<Text>;

// A table that turns codes into words ("Table" into "テーブル").
struct Words {
    Text name;
    std::vector<std::pair<Text, Text>> entries;
    std::optional<Text> otherwise; // without it an unknown code stays as it is
};

// A text with fields in it: "[ObjectName]", "[DateUpdate:date]", "[Class|kinds]" (through Words),
// "[MaxRecords|limits:count]" (through Words, in that format what they do not know), "[#tables]" (a counter); "[["
// stands for the bracket itself. A Null adds nothing.
struct Piece {
    enum class Kind { Literal, Field, Counter };
    Kind kind = Kind::Literal;
    Text literal;
    int index = 0; // of the field or counter
    Format format = Format::Automatic;
    int words = -1;
};
using Template = std::vector<Piece>;

struct Condition {
    int field = -1;
    bool filled = false; // instead of a comparison: neither Null nor the empty text
    Text value;          // compared with the plain text of the field
};
using Conditions = std::vector<Condition>; // all of them hold; an empty list always does

// A running total, kept for the whole report and anew for each group. It counts rows, or adds up a field of them,
// or counts the groups of one level.
struct Counter {
    Text name;
    Conditions when;
    int sumOf = -1;    // field
    int groupsOf = -1; // level
};

// "テーブル 12 件" at the end of a group or of the report.
struct Count {
    Text label;
    int counter = 0;
    Text unit;
    Format format = Format::Count;
    bool omitZero = false;
};

// What ends a group or the report: a row of totals below the table, with this label, unless it is empty; then the counts.
struct Closing {
    Template totals;
    std::vector<Count> counts;

    int lines() const { return (totals.empty() ? 0 : 1) + (counts.empty() ? 0 : 1); }
};

// A label and its value in a block of two columns; a wide one takes the whole line, and one that is a block of its own
// has the label above the text.
struct Attribute {
    Template label, text;
    bool wide = false;
    bool block = false;
    bool omitEmpty = false;
    Wrap wrap = Wrap::Words;
    std::optional<Condition> source; // as that of a column
};

struct AttributeBlock {
    std::vector<Attribute> attributes;
    double labelWidth = 35;
};

// A block before the first row, with the first row of a source of its own.
struct HeadBlock {
    Text caption;
    Text source;
    FieldNames fields;
    AttributeBlock block;
};

enum class BarStyle {
    None, // the group has no bar of its own
    Bar,  // grey ground, type of the group bar
    Sub,  // a level inside: light ground, type of the table
    Line, // bold line without ground: a procedure in a listing
};

struct Column {
    Text heading;
    Template text;
    Template again;   // of a row that continues the one on the page before: instead of the text
    Template total;   // in the row of totals
    double width = 0; // mm; 0: a share of what the others leave
    double share = 1;
    Align align = Align::Left;
    Wrap wrap = Wrap::Words;
    bool grow = true; // false: one line, ended with "…" when it does not fit
    bool faint = false;
    bool bold = false;
    bool ruled = false;              // a row that continues one has a rule above it here also without a text
    std::optional<Condition> source; // holds: the text is set as source
    std::optional<Condition> accent; // holds: the text stands out
};

struct Group {
    Text name;
    std::vector<int> by; // fields; a change of one begins a new group
    Conditions when;     // else it is no group: neither shown nor counted
    BarStyle style = BarStyle::Bar;
    Template number, title, kind; // on the bar: number, name in bold, kind at the right
    std::vector<Column> columns;  // instead of these: the bar is a row of columns
    AttributeBlock block;
    double keep = 30;     // the group is not begun when less is left of the column
    bool newPage = false; // begins on a new page
    bool repeat = true;   // the bar is repeated with "(続き)" where the group goes on
    Template outline;     // entry of the outline; empty: no entry
    Closing closing;
};

enum class Rules { Grid, Rows, None };

struct Table {
    Conditions when;                    // the first table whose conditions hold prints the row
    std::optional<Condition> continues; // such a row belongs to the one above: see docs/reports.md
    int within = -1;                    // group with columns: the headings of both stand together
    double indent = 0;                  // mm
    bool heading = true;
    Rules rules = Rules::Grid;
    std::vector<Column> columns;
    Text
        emptyText; // a row that neither a table nor a group with columns prints: this line instead, or nothing
};

// A field, line or box at a fixed place, measured from the upper left corner of the sheet. A text that does not
// fit is set smaller down to minPoints, and then ended with "…".
struct Placed {
    enum class Kind { Text, Line, Box };
    Kind kind = Kind::Text;
    Conditions when;
    double x = 0, y = 0, width = 0, height = 0;
    Template text;
    double points = 9, minPoints = 6;
    bool bold = false;
    bool vertical = false; // characters stacked upright, columns from right to left
    Align align = Align::Left;
    VerticalAlign verticalAlign = VerticalAlign::Top;
    Wrap wrap = Wrap::Words;
    double pen = 0.5; // points
    double fill = 0;  // share of black of the ground, 0 none
    bool dashed = false;
};

struct ReportDefinition {
    Text name;
    Template title;
    Orientation orientation = Orientation::Upright;
    int columns = 1;
    Text source; // table or view of the work database
    FieldNames fields;
    std::vector<SortKey> sort;
    Template inHand; // foot of the page: what it holds, as first and last row say it
    std::vector<Words> words;
    std::vector<Counter> counters;
    std::vector<HeadBlock> heads;
    std::vector<Group> groups; // outermost first
    std::vector<Table> tables;
    Closing closing;
    Text nothing = style::nothingToShow; // what is printed where there are no rows
    std::vector<Placed> placed;          // not empty: a sheet of placed fields, without head, foot and rows
};

// Reads a definition. Error 3049 (a damaged work database) with the report, the place in the definition and the
// reason when it is no JSON, lacks something, or has a key, name or value that the language does not know.
ReportDefinition parseDefinition(const Text& name, const Text& json);

} // namespace relvane::reports
