#include "sample_builder/description_table.h"

#include <algorithm>

#include "sample_builder/description_value.h"

namespace relvane::samples {

namespace {

struct ColumnWord {
    const char16_t* name;
    void (*apply)(ColumnSpec&);
};

constexpr ColumnWord columnWords[] = {
    {u"auto", [](ColumnSpec& column) { column.autoNumber = true; }},
    {u"hyperlink", [](ColumnSpec& column) { column.hyperlink = true; }},
    {u"deleted", [](ColumnSpec& column) { column.deleted = true; }},
    {u"variable", [](ColumnSpec& column) { column.place = ColumnPlace::Variable; }},
    {u"fixed", [](ColumnSpec& column) { column.place = ColumnPlace::Fixed; }},
    {u"inline", [](ColumnSpec& column) { column.longValues = LongValuePlace::Inline; }},
    {u"one-page", [](ColumnSpec& column) { column.longValues = LongValuePlace::OnePage; }},
    {u"chain", [](ColumnSpec& column) { column.longValues = LongValuePlace::Chain; }},
};

void readColumn(TableInProgress& progress, DescriptionLine& line) {
    ColumnSpec column;
    column.name = line.takeText("a name");
    column.type = takeType(line);
    if (column.type == ColumnType::Text || column.type == ColumnType::Binary) {
        column.size = takeNumber(line, "a size");
    }
    while (!line.atEnd()) {
        if (line.takeIf(u"ordinal")) {
            column.ordinal = takeNumber(line, "an ordinal");
            continue;
        }
        const Text option = line.takeText("an option");
        const auto known =
            std::ranges::find_if(columnWords, [&](const ColumnWord& word) { return option == word.name; });
        if (known == std::end(columnWords)) {
            line.fail("no option of a column: " + toUtf8(option));
        }
        known->apply(column);
    }
    progress.table->columns.push_back(std::move(column));
    progress.column = &progress.table->columns.back();
}

void readIndex(TableInProgress& progress, DescriptionLine& line) {
    IndexSpec index;
    index.name = line.takeText("a name");
    index.primary = line.takeIf(u"primary");
    index.unique = line.takeIf(u"unique");
    index.ignoreNulls = line.takeIf(u"ignore-nulls");
    index.required = line.takeIf(u"required");
    do {
        IndexColumnSpec column{line.takeText("a column")};
        column.descending = line.takeIf(u"descending");
        index.columns.push_back(column);
    } while (!line.atEnd());
    progress.table->indexes.push_back(std::move(index));
}

RowSpec takeRow(const TableSpec& table, DescriptionLine& line) {
    RowSpec row{};
    for (const ColumnSpec& column : table.columns) {
        if (!column.deleted && !line.atEnd()) {
            row.values.push_back(takeValue(line, column.type));
        }
    }
    return row;
}

void readRow(TableInProgress& progress, DescriptionLine& line) {
    progress.table->rows.push_back(takeRow(*progress.table, line));
}

void readMovedRow(TableInProgress& progress, DescriptionLine& line) {
    progress.table->rows.push_back(takeRow(*progress.table, line).asMoved());
}

void readDeletedRow(TableInProgress& progress, DescriptionLine&) {
    progress.table->rows.push_back(RowSpec{}.asDeleted());
}

void readFlags(TableInProgress& progress, DescriptionLine& line) {
    progress.table->flags = static_cast<std::uint32_t>(takeNumber(line, "flags"));
}

void readRowCount(TableInProgress& progress, DescriptionLine& line) {
    progress.table->storedRowCount = static_cast<std::uint32_t>(takeNumber(line, "a number of rows"));
}

void readPageMap(TableInProgress& progress, DescriptionLine& line) {
    if (line.takeIf(u"pages")) {
        progress.table->pageMap = PageMapKind::Pages;
    } else if (line.takeIf(u"bitmap")) {
        progress.table->pageMap = PageMapKind::Bitmap;
    } else {
        line.fail("a page map is bitmap or pages");
    }
}

struct Keyword {
    const char16_t* name;
    void (*read)(TableInProgress&, DescriptionLine&);
};

constexpr Keyword tableKeywords[] = {
    {u"column", readColumn},
    {u"index", readIndex},
    {u"row", readRow},
    {u"moved-row", readMovedRow},
    {u"deleted-row", readDeletedRow},
    {u"flags", readFlags},
    {u"row-count", readRowCount},
    {u"page-map", readPageMap},
};

// Lines of a column that are a property of one name.
struct PropertyKeyword {
    const char16_t* name;
    const char16_t* property;
};

constexpr PropertyKeyword textProperties[] = {
    {u"description", u"Description"}, {u"caption", u"Caption"},      {u"default", u"DefaultValue"},
    {u"format", u"Format"},           {u"input-mask", u"InputMask"},
};
constexpr PropertyKeyword switches[] = {{u"required", u"Required"}, {u"zero-length", u"AllowZeroLength"}};

bool readColumnLine(ColumnSpec& column, TextView keyword, DescriptionLine& line) {
    auto& properties = column.properties;
    const auto named = [&](const auto& known) { return keyword == known.name; };
    if (const auto text = std::ranges::find_if(textProperties, named); text != std::end(textProperties)) {
        properties.push_back({text->property, line.takeText("a text")});
    } else if (const auto on = std::ranges::find_if(switches, named); on != std::end(switches)) {
        properties.push_back({on->property, true});
    } else if (keyword == u"rule") {
        properties.push_back({u"ValidationRule", line.takeText("a condition")});
        properties.push_back({u"ValidationText", line.takeText("a message")});
    } else if (keyword == u"column-property") {
        properties.push_back(takeProperty(line));
    } else {
        return false;
    }
    return true;
}

} // namespace

bool readTableLine(TableInProgress& progress, TextView keyword, DescriptionLine& line) {
    const auto known =
        std::ranges::find_if(tableKeywords, [&](const Keyword& one) { return keyword == one.name; });
    if (known != std::end(tableKeywords)) {
        known->read(progress, line);
        return true;
    }
    return progress.column != nullptr && readColumnLine(*progress.column, keyword, line);
}

} // namespace relvane::samples
