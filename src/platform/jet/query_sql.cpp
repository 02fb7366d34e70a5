#include "jet/query_sql.h"

#include <algorithm>

#include "jet/query_names.h"

namespace relvane::jet {
namespace {

constexpr TextView lineEnd = u"\r\n";

struct Query {
    const QueryParts& parts;
    SqlDialect dialect;
};

// ---- Words of parameter types, by the type code of a field.

struct TypeWord {
    int type;
    TextView word;
};
constexpr TypeWord typeWords[] = {
    {0, u"Value"},    {1, u"Bit"},         {2, u"Byte"},       {3, u"Short"},    {4, u"Long"},
    {5, u"Currency"}, {6, u"IEEESingle"},  {7, u"IEEEDouble"}, {8, u"DateTime"}, {9, u"Binary"},
    {10, u"Text"},    {11, u"LongBinary"}, {12, u"LongText"},  {15, u"Guid"},
};
constexpr int textType = 10;
constexpr std::int32_t usualTextSize = 255; // of a text parameter without a stored size

Text parameterType(const QueryRow& row, SqlDialect dialect) {
    const auto* found = std::ranges::find(typeWords, flagOf(row), &TypeWord::type);
    Text word(found == std::end(typeWords) ? typeWords[0].word : found->word);
    if (dialect == SqlDialect::Jet4 && flagOf(row) == textType) {
        const std::int32_t size = row.size.value_or(0);
        word += u" ( " + toText(size > 0 ? size : usualTextSize) + u" )";
    }
    return word;
}

// ---- Lists and clauses that several kinds share.

// Joins the texts of some rows; `print` gives an empty text for a row that is to be left out.
template <class Print>
Text printedList(std::span<const QueryRow* const> rows, Print print) {
    Text list;
    for (const QueryRow* row : rows) {
        const Text item = print(*row);
        if (!item.empty()) {
            list += (list.empty() ? u"" : u", ") + item;
        }
    }
    return list;
}

// A line of its own, or nothing when there is nothing behind the word.
Text clause(TextView word, const Text& list) {
    return list.empty() ? Text() : Text(lineEnd) + Text(word) + list;
}

// The word alone when nothing follows it, without the blank between.
Text followedBy(TextView word, const Text& rest) {
    return rest.empty() ? Text(word) : Text(word) + u" " + rest;
}

Text expressionOf(const QueryRow& row) {
    return Text(textOf(row.expression));
}

Text columnOf(const QueryRow& row) {
    const TextView alias = textOf(row.name1);
    return alias.empty() ? expressionOf(row) : expressionOf(row) + u" AS " + printedName(alias);
}

Text predicates(const Query& query) {
    const int options = query.parts.options();
    Text words;
    if (options & queryOption::distinct) {
        words = u"DISTINCT ";
    } else if (options & queryOption::distinctRow) {
        words = u"DISTINCTROW ";
    }
    if (options & queryOption::top) {
        words += u"TOP " + Text(textOf(query.parts.first(QueryPart::Options)->name1)) + u" ";
    }
    if (options & queryOption::percent) {
        words += u"PERCENT ";
    }
    return words;
}

Text columns(const Query& query) {
    Text list = printedList(query.parts.of(QueryPart::Column), columnOf);
    if (query.parts.options() & queryOption::allFields) {
        list += list.empty() ? u"*" : u", *";
    }
    return list;
}

Text predicatesAndColumns(TextView word, const Query& query) {
    Text text = Text(word) + u" " + predicates(query) + columns(query);
    text.erase(text.find_last_not_of(u' ') + 1);
    return text;
}

// IN 'path'[connect]: the database in which the sources or the target table lie.
Text otherDatabase(TextView path, TextView connect) {
    if (path.empty() && connect.empty()) {
        return {};
    }
    Text text = u" IN '" + Text(path) + u"'";
    if (!connect.empty()) {
        text += u"[" + Text(connect) + u"]";
    }
    return text;
}

Text sources(const Query& query) {
    Text list = printedSources(query.parts, query.dialect);
    if (const QueryRow* row = query.parts.first(QueryPart::OtherDatabase); row != nullptr && !list.empty()) {
        list += otherDatabase(textOf(row->name1), textOf(row->expression));
    }
    return list;
}

Text targetDatabase(const Query& query) {
    const QueryRow* row = query.parts.first(QueryPart::Kind);
    return row == nullptr ? Text() : otherDatabase(textOf(row->name2), textOf(row->expression));
}

Text targetTable(const Query& query) {
    const QueryRow* row = query.parts.first(QueryPart::Kind);
    return row == nullptr ? Text() : printedName(textOf(row->name1));
}

Text whereClause(const Query& query) {
    return clause(u"WHERE ", printedList(query.parts.of(QueryPart::Where), expressionOf));
}

Text orderClause(const Query& query) {
    return clause(u"ORDER BY ", printedList(query.parts.of(QueryPart::OrderBy), [](const QueryRow& row) {
                      return expressionOf(row) +
                             (equalsIgnoringCase(textOf(row.name1), u"D") ? u" DESC" : u"");
                  }));
}

template <class Grouping>
Text tail(const Query& query, Grouping grouping) {
    return clause(u"FROM ", sources(query)) + whereClause(query) +
           clause(u"GROUP BY ", printedList(query.parts.of(QueryPart::GroupBy), grouping)) +
           clause(u"HAVING ", printedList(query.parts.of(QueryPart::Having), expressionOf)) +
           orderClause(query);
}

Text tail(const Query& query) {
    return tail(query, expressionOf);
}

// ---- One function for each kind.

Text selectText(const Query& query) {
    return predicatesAndColumns(u"SELECT", query) + tail(query);
}

Text makeTableText(const Query& query) {
    return predicatesAndColumns(u"SELECT", query) + u" INTO " + targetTable(query) + targetDatabase(query) +
           tail(query);
}

Text appendText(const Query& query) {
    const auto rows = query.parts.of(QueryPart::Column);
    const Text fields = printedList(rows, [](const QueryRow& row) { return printedName(textOf(row.name2)); });
    Text text = u"INSERT INTO " + targetTable(query);
    if (!fields.empty()) {
        text += u" ( " + fields + u" )";
    }
    text += targetDatabase(query) + Text(lineEnd);
    if (!rows.empty() && (flagOf(*rows.front()) & fromValues) != 0) {
        return text + u"VALUES (" + printedList(rows, expressionOf) + u")";
    }
    return text + selectText(query);
}

// The field to be set is stored as a finished expression when it names its table too.
Text updateTarget(TextView stored) {
    return stored.find_first_of(u".[") == TextView::npos ? printedName(stored) : Text(stored);
}

Text updateText(const Query& query) {
    const Text distinctRow = query.parts.options() & queryOption::distinctRow ? u"DISTINCTROW " : u"";
    const Text assignments = printedList(query.parts.of(QueryPart::Column), [](const QueryRow& row) {
        return updateTarget(textOf(row.name2)) + u" = " + expressionOf(row);
    });
    return followedBy(u"UPDATE", distinctRow + sources(query)) + followedBy(u" SET", assignments) +
           whereClause(query);
}

Text deleteText(const Query& query) {
    return predicatesAndColumns(u"DELETE", query) + tail(query);
}

Text crosstabText(const Query& query) {
    const auto rows = query.parts.of(QueryPart::Column);
    const auto withRole = [](int role, auto print) {
        return [role, print](const QueryRow& row) { return flagOf(row) == role ? print(row) : Text(); };
    };
    Text text = followedBy(u"TRANSFORM", printedList(rows, withRole(crosstabRole::value, columnOf)));
    text += clause(u"SELECT ",
                   predicates(query) + printedList(rows, withRole(crosstabRole::rowHeading, columnOf)));
    text += tail(query, withRole(crosstabRole::rowHeading, expressionOf));
    return text + clause(u"PIVOT ", printedList(rows, withRole(crosstabRole::columnHeading, expressionOf)));
}

// Data definition and pass-through queries: the text alone, as it was typed.
Text storedText(const Query& query) {
    const QueryRow* row = query.parts.first(QueryPart::Kind);
    Text text = row == nullptr ? Text() : expressionOf(*row);
    text.erase(text.find_last_not_of(u'\0') + 1);
    return text;
}

// The halves are named X7YZ_____1 and X7YZ_____2.
Text unionText(const Query& query) {
    const auto rows = query.parts.of(QueryPart::Source);
    std::vector<const QueryRow*> halves(rows.begin(), rows.end());
    std::ranges::stable_sort(halves, {}, [](const QueryRow* half) { return textOf(half->name2); });
    const TextView word = query.parts.options() & queryOption::distinct ? u"UNION " : u"UNION ALL ";
    Text text;
    for (const QueryRow* half : halves) {
        if (!text.empty()) {
            text += text.ends_with(lineEnd) ? TextView() : lineEnd;
            text += word;
        }
        text += textOf(half->expression);
    }
    return text + orderClause(query);
}

struct KindText {
    QueryKind kind;
    Text (*print)(const Query&);
};
constexpr KindText kindTexts[] = {
    {QueryKind::Select, selectText},         {QueryKind::MakeTable, makeTableText},
    {QueryKind::Append, appendText},         {QueryKind::Update, updateText},
    {QueryKind::Delete, deleteText},         {QueryKind::Crosstab, crosstabText},
    {QueryKind::DataDefinition, storedText}, {QueryKind::PassThrough, storedText},
    {QueryKind::Union, unionText},
};

Text parametersLine(const Query& query) {
    const Text list = printedList(query.parts.of(QueryPart::Parameter), [&query](const QueryRow& row) {
        return printedParameter(textOf(row.name1)) + u" " + parameterType(row, query.dialect);
    });
    return list.empty() ? Text() : u"PARAMETERS " + list + u";" + Text(lineEnd);
}

} // namespace

Text querySql(std::span<const QueryRow> rows, int catalogueFlags, SqlDialect dialect) {
    const QueryParts parts(rows);
    const Query query{parts, dialect};
    const QueryKind kind = parts.kind(catalogueFlags);
    const Text text = std::ranges::find(kindTexts, kind, &KindText::kind)->print(query);
    if (kind == QueryKind::DataDefinition || kind == QueryKind::PassThrough) {
        return text;
    }
    const TextView ownerAccess =
        parts.options() & queryOption::ownerAccess ? u"\r\nWITH OWNERACCESS OPTION" : TextView();
    return parametersLine(query) + text + Text(ownerAccess) + u";" + Text(lineEnd);
}

Text queryConnect(std::span<const QueryRow> rows, int catalogueFlags) {
    const QueryParts parts(rows);
    const QueryRow* row = parts.first(QueryPart::Kind);
    return row != nullptr && parts.kind(catalogueFlags) == QueryKind::PassThrough ? Text(textOf(row->name1))
                                                                                  : Text();
}

bool hasAmbiguousOuterJoins(std::span<const QueryRow> rows) {
    return !ambiguousSources(QueryParts(rows)).empty();
}

} // namespace relvane::jet
