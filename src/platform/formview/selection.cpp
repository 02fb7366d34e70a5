#include "formview/selection.h"

#include <algorithm>
#include <charconv>

#include "platform/runtime_error.h"

namespace relvane::formview {
namespace {

using jet::Token;
using jet::TokenKind;
using jet::TokenReader;

constexpr int deepestNesting = 64; // of joins in parentheses

// Words that end a list of columns or sources.
constexpr TextView clauses[] = {u"FROM",  u"WHERE", u"ORDER", u"GROUP", u"HAVING",
                                u"UNION", u"WITH",  u"IN",    u"PIVOT"};
constexpr TextView joinWords[] = {u"INNER", u"LEFT", u"RIGHT", u"JOIN", u"ON", u"AS", u"OUTER"};

template <class Words>
bool isOneOf(const Token& token, const Words& words) {
    return std::ranges::any_of(words, [&](TextView word) { return token.isWord(word); });
}

// Behind the whole of a column, a key of an order or a list of them.
bool endsItem(const Token& token) {
    return token.kind == TokenKind::End || token.isSign(u",") || token.isSign(u";") ||
           isOneOf(token, clauses);
}

void skipItem(TokenReader& tokens) {
    while (!endsItem(tokens.peek()) && !tokens.peek().isWord(u"AS")) {
        if (tokens.takeSign(u"(")) {
            tokens.skipParentheses();
        } else {
            tokens.take();
        }
    }
}

bool readAlias(TokenReader& tokens, Text& alias) {
    if (tokens.takeWord(u"AS")) {
        if (!tokens.peek().isName()) {
            return false;
        }
        alias = Text(tokens.take().text);
    }
    return true;
}

std::optional<SelectedColumn> columnIn(TokenReader& tokens) {
    SelectedColumn column;
    if (tokens.takeSign(u"*")) {
        column.all = true;
        return column;
    }
    if (tokens.peek().isName() && tokens.peek(1).isSign(u".") && tokens.peek(2).isSign(u"*")) {
        column.all = true;
        column.table = Text(tokens.take().text);
        tokens.take();
        tokens.take();
        return column;
    }
    TokenReader whole = tokens;
    column.value = expressionIn(tokens);
    if (!column.value || !(endsItem(tokens.peek()) || tokens.peek().isWord(u"AS"))) {
        tokens = whole;
        column.value.reset();
        skipItem(tokens);
    } else if (column.value->isField()) {
        column.name = column.value->field->field;
    }
    return readAlias(tokens, column.name) ? std::optional(column) : std::nullopt;
}

std::optional<Source> sourceIn(TokenReader& tokens, int depth);

std::optional<std::vector<std::pair<FieldName, FieldName>>> equalitiesIn(TokenReader& tokens) {
    std::vector<std::pair<FieldName, FieldName>> equal;
    int open = 0;
    do {
        while (tokens.takeSign(u"(")) {
            ++open;
        }
        auto left = fieldIn(tokens);
        if (!left || !tokens.takeSign(u"=")) {
            return std::nullopt;
        }
        auto right = fieldIn(tokens);
        if (!right) {
            return std::nullopt;
        }
        equal.emplace_back(std::move(*left), std::move(*right));
        while (open > 0 && tokens.takeSign(u")")) {
            --open;
        }
    } while (tokens.takeWord(u"AND"));
    return open == 0 ? std::optional(equal) : std::nullopt;
}

std::optional<Source> simpleSourceIn(TokenReader& tokens, int depth) {
    if (tokens.takeSign(u"(")) {
        auto source = depth > deepestNesting ? std::nullopt : sourceIn(tokens, depth + 1);
        return source && tokens.takeSign(u")") ? source : std::nullopt;
    }
    if (!isPlainName(tokens.peek())) {
        return std::nullopt;
    }
    Source source;
    source.name = Text(tokens.take().text);
    if (!readAlias(tokens, source.alias)) {
        return std::nullopt;
    }
    return source;
}

std::optional<Source> sourceIn(TokenReader& tokens, int depth) {
    auto left = simpleSourceIn(tokens, depth);
    while (left && isOneOf(tokens.peek(), joinWords)) {
        auto join = std::make_shared<Join>();
        join->kind = tokens.takeWord(u"LEFT")    ? Join::Kind::Left
                     : tokens.takeWord(u"RIGHT") ? Join::Kind::Right
                                                 : Join::Kind::Inner;
        tokens.takeWord(u"INNER");
        tokens.takeWord(u"OUTER");
        if (!tokens.takeWord(u"JOIN")) {
            return std::nullopt;
        }
        auto right = simpleSourceIn(tokens, depth);
        if (!right || !tokens.takeWord(u"ON")) {
            return std::nullopt;
        }
        auto equal = equalitiesIn(tokens);
        if (!equal) {
            return std::nullopt;
        }
        join->left = std::move(*left);
        join->right = std::move(*right);
        join->equal = std::move(*equal);
        left = Source{{}, {}, std::move(join)};
    }
    return left;
}

std::optional<std::vector<Expression>> expressionsIn(TokenReader& tokens) {
    std::vector<Expression> expressions;
    do {
        auto expression = expressionIn(tokens);
        if (!expression) {
            return std::nullopt;
        }
        expressions.push_back(std::move(*expression));
    } while (tokens.takeSign(u","));
    return expressions;
}

std::optional<std::vector<OrderKey>> orderIn(TokenReader& tokens) {
    std::vector<OrderKey> order;
    do {
        auto value = expressionIn(tokens);
        if (!value) {
            return std::nullopt;
        }
        const bool descending = tokens.takeWord(u"DESC");
        tokens.takeWord(u"ASC");
        order.push_back({std::move(*value), descending});
    } while (tokens.takeSign(u","));
    return order;
}

std::optional<std::size_t> numberIn(TokenReader& tokens) {
    const std::string digits = toUtf8(tokens.take().text);
    std::size_t number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return read.ec == std::errc() ? std::optional(number) : std::nullopt;
}

template <class Read>
auto readAll(TextView text, Read read) -> decltype(read(std::declval<TokenReader&>())) {
    const auto all = jet::sqlTokens(text);
    TokenReader tokens(all);
    auto result = read(tokens);
    tokens.takeSign(u";");
    return tokens.atEnd() ? result : std::nullopt;
}

// Behind SELECT.
bool readPredicates(TokenReader& tokens, Selection& selection) {
    for (;;) {
        if (tokens.takeWord(u"DISTINCT")) {
            selection.distinct = true;
        } else if (tokens.takeWord(u"DISTINCTROW")) {
            selection.distinctRow = true;
        } else if (tokens.takeWord(u"TOP")) {
            selection.top = numberIn(tokens);
            if (!selection.top || tokens.takeWord(u"PERCENT")) {
                return false;
            }
        } else if (!tokens.takeWord(u"ALL")) {
            return true;
        }
    }
}

bool readColumnsAndSource(TokenReader& tokens, Selection& selection) {
    do {
        auto column = columnIn(tokens);
        if (!column) {
            return false;
        }
        selection.columns.push_back(std::move(*column));
    } while (tokens.takeSign(u","));
    auto source = tokens.takeWord(u"FROM") ? sourceIn(tokens, 0) : std::nullopt;
    if (source) {
        selection.source = std::move(*source);
    }
    return source.has_value();
}

// "WHERE .." as `place`, where it is there.
bool readCondition(TokenReader& tokens, TextView word, std::optional<Expression>& place) {
    if (tokens.takeWord(word)) {
        place = expressionIn(tokens);
        return place.has_value();
    }
    return true;
}

template <class List, class Read>
bool readList(TokenReader& tokens, TextView word, List& place, Read read) {
    if (tokens.takeWord(word)) {
        auto list = tokens.takeWord(u"BY") ? read(tokens) : std::nullopt;
        if (!list) {
            return false;
        }
        place = std::move(*list);
    }
    return true;
}

// At the end of a crosstab: "PIVOT heading [IN (..)]".
bool readPivot(TokenReader& tokens, Crosstab& crosstab) {
    auto pivot = tokens.takeWord(u"PIVOT") ? expressionIn(tokens) : std::nullopt;
    if (!pivot) {
        return false;
    }
    // "x IN (..)" was read as a condition: its operands are the heading and the list.
    if (pivot->function != nullptr && pivot->function->name == u"IN") {
        for (std::size_t i = 1; i < pivot->operands.size(); ++i) {
            if (!pivot->operands[i].isConstant()) {
                return false;
            }
            crosstab.headings.push_back(pivot->operands[i].constant);
        }
        Expression heading = std::move(pivot->operands.front());
        pivot = std::move(heading);
    }
    crosstab.pivot = std::move(*pivot);
    return true;
}

std::optional<Selection> selectionIn(TokenReader& tokens) {
    Selection selection;
    if (tokens.takeWord(u"TRANSFORM")) {
        auto cell = expressionIn(tokens);
        Text alias;
        if (!cell || !readAlias(tokens, alias)) {
            return std::nullopt;
        }
        selection.crosstab = Crosstab{std::move(*cell), {}, {}};
    }
    const bool isRead = tokens.takeWord(u"SELECT") && readPredicates(tokens, selection) &&
                        readColumnsAndSource(tokens, selection) &&
                        readCondition(tokens, u"WHERE", selection.where) &&
                        readList(tokens, u"GROUP", selection.groups, expressionsIn) &&
                        readCondition(tokens, u"HAVING", selection.having) &&
                        readList(tokens, u"ORDER", selection.order, orderIn) &&
                        (!selection.crosstab || readPivot(tokens, *selection.crosstab));
    if (isRead && tokens.takeWord(u"WITH")) { // OWNERACCESS OPTION
        tokens.take();
        tokens.take();
    }
    return isRead ? std::optional(std::move(selection)) : std::nullopt;
}

} // namespace

bool Selection::isGrouped() const {
    return !groups.empty() || crosstab || std::ranges::any_of(columns, [](const SelectedColumn& column) {
        return column.value && column.value->hasTotal();
    });
}

std::optional<Selection> parseSelection(TextView statement) {
    return readAll(statement, selectionIn);
}

std::optional<std::vector<OrderKey>> parseOrder(TextView order) {
    return readAll(order, orderIn);
}

std::vector<Text> formsNamedIn(TextView text) {
    const auto tokens = jet::sqlTokens(text);
    std::vector<Text> forms;
    for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
        const bool starts = i == 0 || !(tokens[i - 1].isSign(u"!") || tokens[i - 1].isSign(u"."));
        if (starts && tokens[i].isName() && equalsIgnoringCase(tokens[i].text, u"Forms") &&
            tokens[i + 1].isSign(u"!") && tokens[i + 2].isName()) {
            forms.emplace_back(tokens[i + 2].text);
        }
    }
    return forms;
}

} // namespace relvane::formview
