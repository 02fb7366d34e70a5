#include "jet/query_select.h"

#include <algorithm>

#include "jet/query_names.h"

namespace relvane::jet {
namespace {

constexpr TextView clauseWords[] = {u"WHERE", u"GROUP", u"HAVING", u"ORDER", u"UNION", u"WITH", u"PIVOT"};

bool startsClause(const Token& token) {
    return token.kind == TokenKind::End || token.isSign(u";") ||
           std::ranges::any_of(clauseWords, [&token](TextView word) { return token.isWord(word); });
}

bool isJoinWord(const Token& token) {
    static constexpr TextView words[] = {u"INNER", u"LEFT", u"RIGHT", u"JOIN", u"ON", u"IN"};
    return std::ranges::any_of(words, [&token](TextView word) { return token.isWord(word); });
}

// Reads the text of a statement. A word behind a dot or "!" is a name and never a keyword, which the loops
// below see to by taking both at once.
class StatementReader {
public:
    explicit StatementReader(TextView statement)
        : text_(statement), tokens_(sqlTokens(statement)), reader_(tokens_) {}

    Selection run() {
        while (reader_.takeSign(u"(")) {
        }
        if (reader_.takeWord(u"SELECT")) {
            skipPredicates();
            readColumns();
            if (reader_.takeWord(u"INTO")) {
                skipTo(u"FROM");
            }
            if (reader_.takeWord(u"FROM")) {
                readSources();
            }
        } else {
            reader_.takeWord(u"TABLE");
            if (reader_.peek().isName()) {
                selection_.allFields = true;
                readSource();
            }
        }
        return std::move(selection_);
    }

private:
    void skipPredicates() {
        while (reader_.takeWord(u"ALL") || reader_.takeWord(u"DISTINCT") ||
               reader_.takeWord(u"DISTINCTROW")) {
        }
        if (reader_.peek().isWord(u"TOP") && reader_.peek(1).kind == TokenKind::Number) {
            reader_.take();
            reader_.take();
            reader_.takeWord(u"PERCENT");
        }
    }

    void skipTo(TextView word) {
        while (!startsClause(reader_.peek()) && !reader_.peek().isWord(word)) {
            takeItem();
        }
    }

    // One token, or all of a pair of parentheses; a name behind a dot together with the dot.
    void takeItem() {
        const Token& token = reader_.take();
        if (token.isSign(u"(")) {
            reader_.skipParentheses();
        } else if ((token.isSign(u".") || token.isSign(u"!")) && reader_.peek().isName()) {
            reader_.take();
        }
    }

    bool atColumnEnd() const {
        const Token& token = reader_.peek();
        return startsClause(token) || token.isSign(u",") || token.isSign(u")") || token.isWord(u"FROM") ||
               token.isWord(u"INTO");
    }

    void readColumns() {
        do {
            SelectColumn column;
            const std::size_t begin = reader_.peek().begin;
            std::size_t end = begin;
            while (!atColumnEnd() && !reader_.peek().isWord(u"AS")) {
                takeItem();
                end = reader_.position()[-1].end;
            }
            column.expression = Text(text_.substr(begin, end - begin));
            if (reader_.takeWord(u"AS") && reader_.peek().isName()) {
                column.alias = Text(reader_.take().text);
            }
            while (!atColumnEnd()) {
                takeItem();
            }
            if (!column.expression.empty()) {
                selection_.columns.push_back(std::move(column));
            }
        } while (reader_.takeSign(u","));
    }

    // The names behind FROM, ",", JOIN and the parentheses around joins; conditions are skipped.
    void readSources() {
        bool expected = true;
        while (!startsClause(reader_.peek())) {
            const Token& token = reader_.peek();
            if (expected && token.isSign(u"(") && !reader_.peek(1).isWord(u"SELECT")) {
                reader_.take();
            } else if (expected && (token.isName() || token.isSign(u"("))) {
                readSource();
                expected = false;
            } else if (token.isSign(u")")) {
                reader_.take();
            } else if (token.isWord(u"IN")) {
                selection_.otherDatabase = true;
                takeItem();
            } else if (token.isWord(u"ON")) {
                reader_.take();
                skipCondition();
            } else {
                expected = token.isSign(u",") || token.isWord(u"JOIN");
                takeItem();
            }
        }
    }

    void skipCondition() {
        while (!startsClause(reader_.peek())) {
            const Token& token = reader_.peek();
            const bool joinGoesOn =
                isJoinWord(token) && !reader_.peek(1).isSign(u"("); // Left(...) is no join
            if (token.isSign(u")") || token.isSign(u",") || joinGoesOn) {
                return;
            }
            takeItem();
        }
    }

    void readSource() {
        SelectSource source;
        const Token& first = reader_.take();
        if (first.isSign(u"(")) {
            const std::size_t begin = first.end;
            reader_.skipParentheses();
            const Token& close = reader_.position()[-1];
            source.subquery = Text(text_.substr(begin, std::max(close.begin, begin) - begin));
        } else if (first.kind == TokenKind::Name && reader_.peek().isSign(u".") &&
                   (reader_.peek(1).isWord(u"AS") || !reader_.peek(1).isName())) {
            source.subquery = Text(first.text); // Jet 3: [SELECT ...]. AS alias
            reader_.take();
        } else {
            source.name = Text(first.text);
            while (reader_.peek().isSign(u".") && reader_.peek(1).isName()) {
                reader_.take();
                source.name = Text(reader_.take().text);
                selection_.otherDatabase = true; // path.table
            }
        }
        reader_.takeWord(u"AS");
        if (reader_.peek().isName() && !startsClause(reader_.peek()) && !isJoinWord(reader_.peek())) {
            source.alias = Text(reader_.take().text);
        }
        if (selection_.sources.size() == maximumSources) {
            throwDamagedQuery(u"query with too many sources");
        }
        selection_.sources.push_back(std::move(source));
    }

    TextView text_;
    std::vector<Token> tokens_;
    TokenReader reader_;
    Selection selection_;
};

std::vector<SelectParameter> parametersOf(const QueryParts& parts) {
    std::vector<SelectParameter> parameters;
    for (const QueryRow* row : parts.of(QueryPart::Parameter)) {
        parameters.push_back({withoutBrackets(textOf(row->name1)), flagOf(*row)});
    }
    return parameters;
}

} // namespace

Selection selectionOfRows(const QueryParts& parts) {
    Selection selection;
    for (const QueryRow* row : parts.of(QueryPart::Column)) {
        selection.columns.push_back({Text(textOf(row->expression)), withoutBrackets(textOf(row->name1))});
    }
    for (const QueryRow* row : parts.of(QueryPart::Source)) {
        SelectSource source{withoutBrackets(textOf(row->name1)), withoutBrackets(textOf(row->name2)), {}};
        if (source.name.empty()) {
            source.subquery = textOf(row->expression);
        }
        selection.sources.push_back(std::move(source));
    }
    if (selection.sources.size() > maximumSources) {
        throwDamagedQuery(u"query with too many sources");
    }
    selection.parameters = parametersOf(parts);
    selection.allFields = (parts.options() & queryOption::allFields) != 0;
    selection.otherDatabase = parts.first(QueryPart::OtherDatabase) != nullptr;
    return selection;
}

Selection selectionOfUnion(const QueryParts& parts) {
    const auto halves = parts.of(QueryPart::Source);
    const auto first =
        std::ranges::min_element(halves, {}, [](const QueryRow* half) { return textOf(half->name2); });
    Selection selection;
    if (first != halves.end()) {
        selection = selectionOfText(textOf((*first)->expression));
    }
    const auto namesField = [](const SelectColumn& column) {
        return fieldPath(sqlTokens(column.expression)).has_value();
    };
    if (selection.sources.empty() && std::ranges::any_of(selection.columns, namesField)) {
        selection.columns.clear();
    }
    selection.parameters = parametersOf(parts);
    return selection;
}

Selection selectionOfText(TextView statement) {
    return StatementReader(statement).run();
}

std::optional<FieldPath> fieldPath(const std::vector<Token>& tokens) {
    TokenReader reader(tokens);
    FieldPath path;
    if (reader.peek(1).isSign(u".") || reader.peek(1).isSign(u"!")) {
        if (!reader.peek().isName()) {
            return std::nullopt;
        }
        path.table = Text(reader.take().text);
        reader.take();
    }
    if (!reader.peek().isName() && !reader.peek().isSign(u"*")) {
        return std::nullopt;
    }
    path.field = Text(reader.take().text);
    return reader.atEnd() ? std::optional(path) : std::nullopt;
}

} // namespace relvane::jet
