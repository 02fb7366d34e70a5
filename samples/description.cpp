#include "sample_builder/description.h"

#include <fstream>
#include <iterator>

#include "sample_builder/description_design.h"
#include "sample_builder/description_line.h"
#include "sample_builder/description_macro.h"
#include "sample_builder/description_module.h"
#include "sample_builder/description_query.h"
#include "sample_builder/description_table.h"
#include "sample_builder/description_value.h"
#include "sample_builder/system_tables.h"

namespace relvane::samples {

namespace {

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
    bool canHaveModule = true;
    std::optional<DesignType> root{}; // of its design
};

constexpr DocumentKeyword documentKeywords[] = {{u"form", &DatabaseSpec::forms, true, DesignType::Form},
                                                {u"report", &DatabaseSpec::reports, true, DesignType::Report},
                                                {u"macro", &DatabaseSpec::macros, false},
                                                {u"module", &DatabaseSpec::modules}};

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

    // A line behind a bar, which stands as it is, whatever it looks like.
    void readSource(std::string_view utf8, int number) {
        if (kind_ != Kind::Document || !moduleInProgress_.readSource(fromUtf8(utf8))) {
            throw DescriptionError(number, "a line of source belongs to a form, report or module");
        }
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
                    startContent(document);
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

    void startContent(const DocumentKeyword& keyword) {
        DocumentSpec& document = (spec_.*keyword.list).back();
        designInProgress_ = keyword.root ? DesignInProgress(document, *keyword.root) : DesignInProgress();
        moduleInProgress_ = keyword.canHaveModule ? ModuleInProgress(document) : ModuleInProgress();
        macro_ = keyword.canHaveModule ? nullptr : &document.macro.emplace();
    }

    void startTable(TableSpec table) {
        start(Kind::Table, spec_.tables, std::move(table));
        tableInProgress_ = {&spec_.tables.back()};
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
        } else if (keyword == u"description" && properties_ != nullptr && !startedColumn()) {
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

    // From here on a description is the column's.
    bool startedColumn() const { return kind_ == Kind::Table && tableInProgress_.column != nullptr; }

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
            return readTableLine(tableInProgress_, keyword, line);
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
        case Kind::Document:
            return macro_ != nullptr ? readMacroLine(*macro_, keyword, line)
                                     : moduleInProgress_.read(keyword, line) ||
                                           designInProgress_.read(keyword, line, spec_.codePage);
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
    TableInProgress tableInProgress_;
    DesignInProgress designInProgress_;
    ModuleInProgress moduleInProgress_;
    MacroSpec* macro_ = nullptr;
};

// What stands behind the bar of a line of source; nothing for any other line.
std::optional<std::string_view> sourceOf(std::string_view line) {
    const auto bar = line.find_first_not_of(" \t");
    if (bar == std::string_view::npos || line[bar] != '|') {
        return std::nullopt;
    }
    return line.substr(bar + 1);
}

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
        ++number;
        if (const auto source = sourceOf(text)) {
            reader.readSource(*source, number);
        } else {
            DescriptionLine line(text, number);
            reader.read(line);
        }
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
