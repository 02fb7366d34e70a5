#include "sample_builder/description.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "sample_builder/description_line.h"
#include "sample_builder/description_query.h"
#include "sample_builder/description_value.h"
#include "sample_builder/system_tables.h"

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

// Lines of a column that are a property with a fixed name.
struct ColumnProperty {
    const char16_t* keyword;
    const char16_t* property;
};

constexpr ColumnProperty columnTexts[] = {{u"caption", u"Caption"},
                                          {u"default", u"DefaultValue"},
                                          {u"format", u"Format"},
                                          {u"input-mask", u"InputMask"}};
constexpr ColumnProperty columnSwitches[] = {{u"required", u"Required"},
                                             {u"zero-length", u"AllowZeroLength"}};

struct RelationWord {
    const char16_t* name;
    std::uint32_t flag;
};

constexpr RelationWord relationWords[] = {
    {u"one-to-one", relationUnique},
    {u"not-enforced", relationNotEnforced},
    {u"inherited", relationInherited},
    {u"cascade-updates", relationCascadeUpdates},
    {u"cascade-deletes", relationCascadeDeletes},
    {u"left-join", relationLeftJoin},
    {u"right-join", relationRightJoin},
};

struct DocumentKeyword {
    const char16_t* name;
    std::vector<DocumentSpec> DatabaseSpec::*list;
};

constexpr DocumentKeyword documentKeywords[] = {{u"form", &DatabaseSpec::forms},
                                                {u"report", &DatabaseSpec::reports},
                                                {u"macro", &DatabaseSpec::macros},
                                                {u"module", &DatabaseSpec::modules}};

PropertySpec takeProperty(DescriptionLine& line) {
    PropertySpec property;
    property.name = line.takeText("a name");
    const ColumnType type = takeType(line);
    property.type = static_cast<int>(type);
    property.value = takeValue(line, type);
    return property;
}

// Reads line by line; remembers the object and the column that the line before belonged to.
class Reader {
public:
    void read(DescriptionLine& line) {
        if (line.atEnd()) {
            return;
        }
        const Text keyword = line.takeText("a keyword");
        const bool known =
            startObject(keyword, line) || ofEveryObject(keyword, line) || ofKind(keyword, line);
        if (!known) {
            line.fail("not understood here: " + toUtf8(keyword));
        }
        line.finish();
    }

    DatabaseSpec finish() { return std::move(spec_); }

private:
    enum class Kind { None, Database, Table, Link, Relation, Query, Document };

    bool startObject(TextView keyword, DescriptionLine& line) {
        if (keyword == u"database") {
            kind_ = Kind::Database;
            properties_ = &spec_.properties;
            created_ = updated_ = nullptr;
        } else if (keyword == u"table") {
            startTable(TableSpec{.name = line.takeText("a name")});
        } else if (keyword == u"import-specs") {
            startTable(importSpecsTable());
        } else if (keyword == u"import-columns") {
            startTable(importColumnsTable());
        } else if (keyword == u"link") {
            startLink(line);
        } else if (keyword == u"relation") {
            startRelation(line);
        } else if (keyword == u"query") {
            start(Kind::Query, spec_.queries, startQuery(line));
        } else {
            for (const DocumentKeyword& document : documentKeywords) {
                if (keyword == document.name) {
                    start(Kind::Document, spec_.*document.list,
                          DocumentSpec{.name = line.takeText("a name")});
                    return true;
                }
            }
            return false;
        }
        return true;
    }

    template <class Spec>
    void start(Kind kind, std::vector<Spec>& list, Spec spec) {
        kind_ = kind;
        list.push_back(std::move(spec));
        properties_ = &list.back().properties;
        created_ = &list.back().created;
        updated_ = &list.back().updated;
        if constexpr (std::is_same_v<Spec, DocumentSpec>) {
            hidden_ = &list.back().hidden;
        }
    }

    void startTable(TableSpec table) {
        start(Kind::Table, spec_.tables, std::move(table));
        column_ = nullptr;
    }

    void startLink(DescriptionLine& line) {
        LinkSpec link;
        link.name = line.takeText("a name");
        const Text kind = line.takeText("a kind of link");
        if (kind != u"access" && kind != u"odbc" && kind != u"isam") {
            line.fail("a link is access, odbc or isam");
        }
        link.kind = kind == u"odbc" ? LinkKind::Odbc : kind == u"isam" ? LinkKind::Isam : LinkKind::Access;
        for (Text* part : {&link.database, &link.connect, &link.sourceTable}) {
            if (!line.takeIf(u"-")) {
                *part = line.takeText("database, connection and source table, or -");
            }
        }
        start(Kind::Link, spec_.links, std::move(link));
    }

    void startRelation(DescriptionLine& line) {
        RelationSpec relation;
        relation.name = line.takeText("a name");
        relation.table = line.takeText("the primary table");
        relation.foreignTable = line.takeText("the foreign table");
        for (bool more = true; more;) {
            more = false;
            for (const RelationWord& word : relationWords) {
                if (line.takeIf(word.name)) {
                    relation.attributes |= word.flag;
                    more = true;
                }
            }
        }
        spec_.relations.push_back(std::move(relation));
        kind_ = Kind::Relation;
        properties_ = nullptr;
        created_ = updated_ = nullptr;
    }

    bool ofEveryObject(TextView keyword, DescriptionLine& line) {
        if (keyword == u"property" && properties_ != nullptr) {
            properties_->push_back(takeProperty(line));
        } else if (keyword == u"description" && properties_ != nullptr &&
                   !(kind_ == Kind::Table && column_)) {
            properties_->push_back({u"Description", line.takeText("a text")});
        } else if (keyword == u"created" && created_ != nullptr) {
            *created_ = takeDate(line);
        } else if (keyword == u"updated" && updated_ != nullptr) {
            *updated_ = takeDate(line);
        } else if (keyword == u"hidden") {
            return hide();
        } else {
            return false;
        }
        return true;
    }

    bool hide() {
        switch (kind_) {
        case Kind::Table:
            spec_.tables.back().flags |= hiddenFlag;
            return true;
        case Kind::Query:
            spec_.queries.back().flags |= queryHidden;
            return true;
        case Kind::Link:
            spec_.links.back().hidden = true;
            return true;
        case Kind::Document:
            *hidden_ = true;
            return true;
        default:
            return false;
        }
    }

    bool ofKind(TextView keyword, DescriptionLine& line) {
        switch (kind_) {
        case Kind::Database:
            return ofDatabase(keyword, line);
        case Kind::Table:
            return ofTable(keyword, line) || (column_ != nullptr && ofColumn(keyword, line));
        case Kind::Link:
            return ofLink(keyword);
        case Kind::Query:
            return readQueryLine(spec_.queries.back(), keyword, line);
        case Kind::Relation:
            if (keyword == u"fields") {
                const Text ofPrimary = line.takeText("a column of the primary table");
                spec_.relations.back().columns.emplace_back(ofPrimary,
                                                            line.takeText("one of the foreign table"));
                return true;
            }
            return false;
        default:
            return false;
        }
    }

    bool ofDatabase(TextView keyword, DescriptionLine& line) {
        if (keyword == u"code-page") {
            spec_.codePage = takeNumber(line, "a code page");
        } else if (keyword == u"sort-order") {
            spec_.sortOrder = takeNumber(line, "a locale");
        } else if (keyword == u"created") {
            spec_.created = takeDate(line);
        } else if (keyword == u"access-version") {
            spec_.accessVersion.reset();
            if (!line.takeIf(u"none")) {
                spec_.accessVersion = line.takeText("a version");
            }
        } else if (keyword == u"password") {
            spec_.password = line.takeText("a password");
        } else if (keyword == u"encoding-key") {
            spec_.encodingKey = static_cast<std::uint32_t>(takeNumber(line, "a key"));
        } else if (keyword == u"summary") {
            const Text name = line.takeText("a name");
            spec_.summary.push_back({name, line.takeText("a text")});
        } else if (keyword == u"user-defined") {
            spec_.userDefined.push_back(takeProperty(line));
        } else {
            return false;
        }
        return true;
    }

    bool ofTable(TextView keyword, DescriptionLine& line) {
        TableSpec& table = spec_.tables.back();
        if (keyword == u"column") {
            takeColumn(table, line);
        } else if (keyword == u"index") {
            takeIndex(table, line);
        } else if (keyword == u"row") {
            table.rows.push_back(takeRow(table, line));
        } else if (keyword == u"moved-row") {
            table.rows.push_back(takeRow(table, line).asMoved());
        } else if (keyword == u"deleted-row") {
            table.rows.push_back(RowSpec{}.asDeleted());
        } else if (keyword == u"flags") {
            table.flags = static_cast<std::uint32_t>(takeNumber(line, "flags"));
        } else if (keyword == u"row-count") {
            table.storedRowCount = static_cast<std::uint32_t>(takeNumber(line, "a number of rows"));
        } else if (keyword == u"page-map") {
            table.pageMap = line.takeIf(u"pages") ? PageMapKind::Pages : PageMapKind::Bitmap;
            if (table.pageMap == PageMapKind::Bitmap && !line.takeIf(u"bitmap")) {
                line.fail("a page map is bitmap or pages");
            }
        } else {
            return false;
        }
        return true;
    }

    void takeColumn(TableSpec& table, DescriptionLine& line) {
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
            const auto known = std::find_if(std::begin(columnWords), std::end(columnWords),
                                            [&](const ColumnWord& word) { return option == word.name; });
            if (known == std::end(columnWords)) {
                line.fail("no option of a column: " + toUtf8(option));
            }
            known->apply(column);
        }
        table.columns.push_back(std::move(column));
        column_ = &table.columns.back();
    }

    bool ofColumn(TextView keyword, DescriptionLine& line) {
        auto& properties = column_->properties;
        if (keyword == u"description") {
            properties.push_back({u"Description", line.takeText("a text")});
            return true;
        }
        if (keyword == u"rule") {
            properties.push_back({u"ValidationRule", line.takeText("a condition")});
            properties.push_back({u"ValidationText", line.takeText("a message")});
            return true;
        }
        if (keyword == u"column-property") {
            properties.push_back(takeProperty(line));
            return true;
        }
        for (const ColumnProperty& text : columnTexts) {
            if (keyword == text.keyword) {
                properties.push_back({text.property, line.takeText("a text")});
                return true;
            }
        }
        for (const ColumnProperty& on : columnSwitches) {
            if (keyword == on.keyword) {
                properties.push_back({on.property, true});
                return true;
            }
        }
        return false;
    }

    static void takeIndex(TableSpec& table, DescriptionLine& line) {
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
        table.indexes.push_back(std::move(index));
    }

    static RowSpec takeRow(const TableSpec& table, DescriptionLine& line) {
        RowSpec row{};
        for (const ColumnSpec& column : table.columns) {
            if (!column.deleted && !line.atEnd()) {
                row.values.push_back(takeValue(line, column.type));
            }
        }
        return row;
    }

    bool ofLink(TextView keyword) {
        if (keyword == u"password-saved") {
            spec_.links.back().passwordSaved = true;
        } else if (keyword == u"exclusive") {
            spec_.links.back().exclusive = true;
        } else {
            return false;
        }
        return true;
    }

    DatabaseSpec spec_;
    Kind kind_ = Kind::None;
    // Of the object that was begun last, as far as it has them.
    std::vector<PropertySpec>* properties_ = nullptr;
    std::optional<DateTime>*created_ = nullptr, *updated_ = nullptr;
    bool* hidden_ = nullptr;
    ColumnSpec* column_ = nullptr;
};

} // namespace

DatabaseSpec parseDescription(std::string_view utf8) {
    Reader reader;
    int number = 0;
    while (!utf8.empty()) {
        const auto end = utf8.find('\n');
        std::string_view text = utf8.substr(0, end);
        utf8 = end == std::string_view::npos ? std::string_view() : utf8.substr(end + 1);
        if (text.ends_with('\r')) {
            text.remove_suffix(1);
        }
        DescriptionLine line(text, ++number);
        reader.read(line);
    }
    return reader.finish();
}

DatabaseSpec readDescription(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(in), {});
    if (!in) {
        throw std::invalid_argument("cannot read " + path.string());
    }
    return parseDescription(text);
}

} // namespace relvane::samples
