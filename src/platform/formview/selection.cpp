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
constexpr TextView clauses[] = {u"FROM", u"WHERE", u"ORDER", u"GROUP", u"HAVING", u"UNION", u"WITH", u"IN"};
constexpr TextView joinWords[] = {u"INNER", u"LEFT", u"RIGHT", u"JOIN", u"ON", u"AS", u"OUTER"};

template <class Words>
bool isOneOf(const Token& token, const Words& words) {
    return std::ranges::any_of(words, [&](TextView word) { return token.isWord(word); });
}

bool isPlainName(const Token& token) {
    return token.kind == TokenKind::Name ||
           (token.kind == TokenKind::Word && !isOneOf(token, clauses) && !isOneOf(token, joinWords));
}

std::optional<Value> dateIn(TextView text) { // month/day/year [hour:minute[:second]], as Jet keeps it
    std::vector<int> numbers;
    const std::string bytes = toUtf8(text);
    for (const char *at = bytes.data(), *end = at + bytes.size(); at < end && numbers.size() < 6;) {
        int number = 0;
        const auto read = std::from_chars(at, end, number);
        if (read.ec == std::errc()) {
            numbers.push_back(number);
        }
        at = read.ec == std::errc() ? read.ptr : at + 1;
    }
    if (numbers.size() != 3 && numbers.size() < 5) {
        return std::nullopt;
    }
    numbers.resize(6, 0);
    int year = numbers[2];
    year += year < 30 ? 2000 : year < 100 ? 1900 : 0;
    return DateTime{year, numbers[0], numbers[1], numbers[3], numbers[4], numbers[5]};
}

std::optional<Value> constantIn(TokenReader& tokens) {
    const bool negative = tokens.takeSign(u"-");
    const Token& token = tokens.peek();
    std::optional<Value> constant;
    if (token.kind == TokenKind::Number) {
        try {
            const double number = toDouble(Text(token.text));
            constant = negative ? -number : number;
        } catch (const RunTimeError&) {
        }
    } else if (negative) {
        return std::nullopt;
    } else if (token.kind == TokenKind::String) {
        constant = token.value();
    } else if (token.kind == TokenKind::Date) {
        constant = dateIn(token.text);
    } else if (token.isWord(u"True") || token.isWord(u"Yes") || token.isWord(u"On")) {
        constant = true;
    } else if (token.isWord(u"False") || token.isWord(u"No") || token.isWord(u"Off")) {
        constant = false;
    }
    if (constant) {
        tokens.take();
    }
    return constant;
}

// "F", "T.F", "T!F".
std::optional<FieldName> fieldIn(TokenReader& tokens) {
    if (!isPlainName(tokens.peek())) {
        return std::nullopt;
    }
    FieldName name{{}, Text(tokens.take().text)};
    if ((tokens.peek().isSign(u".") || tokens.peek().isSign(u"!")) && tokens.peek(1).isName()) {
        tokens.take();
        name = {name.field, Text(tokens.take().text)};
    }
    return name;
}

// Without the operators and calls that would need to be computed.
std::optional<Expression> expressionIn(TokenReader& tokens) {
    Expression expression;
    do {
        if (auto constant = constantIn(tokens)) {
            expression.parts.push_back({std::nullopt, std::move(*constant)});
        } else if (auto field = fieldIn(tokens)) {
            expression.parts.push_back({std::move(field), Null{}});
        } else {
            return std::nullopt;
        }
    } while (tokens.takeSign(u"&"));
    return expression;
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
    } else if (column.value->parts.size() == 1 && column.value->parts.front().field) {
        column.name = column.value->parts.front().field->field;
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

std::optional<Condition::Comparison> comparisonIn(TokenReader& tokens) {
    using enum Condition::Comparison;
    constexpr struct {
        TextView sign;
        Condition::Comparison comparison;
    } signs[] = {{u"=", Equal},           {u"<>", Different}, {u"<=", LessOrEqual},
                 {u">=", GreaterOrEqual}, {u"<", Less},       {u">", Greater}};
    for (const auto& sign : signs) {
        if (tokens.takeSign(sign.sign)) {
            return sign.comparison;
        }
    }
    if (tokens.takeWord(u"IS")) {
        const bool isNot = tokens.takeWord(u"NOT");
        return tokens.takeWord(u"NULL") ? std::optional(isNot ? IsNotNull : IsNull) : std::nullopt;
    }
    return std::nullopt;
}

// Comparisons that all hold: their parentheses then say nothing, and are left out before. A call shows itself as a
// name before a name, a choice by its OR.
std::optional<std::vector<Condition>> conditionsIn(TokenReader& tokens) {
    std::vector<Token> plain;
    while (!(tokens.atEnd() || tokens.peek().isSign(u";") || isOneOf(tokens.peek(), clauses))) {
        const Token& token = tokens.take();
        if (!token.isSign(u"(") && !token.isSign(u")")) {
            plain.push_back(token);
        }
    }
    TokenReader reader(plain);
    std::vector<Condition> conditions;
    do {
        auto field = fieldIn(reader);
        if (field && reader.takeWord(u"BETWEEN")) {
            auto least = constantIn(reader);
            auto most = least && reader.takeWord(u"AND") ? constantIn(reader) : std::nullopt;
            if (!most) {
                return std::nullopt;
            }
            conditions.push_back({*field, Condition::Comparison::GreaterOrEqual, std::move(*least)});
            conditions.push_back({*field, Condition::Comparison::LessOrEqual, std::move(*most)});
            continue;
        }
        const auto comparison = field ? comparisonIn(reader) : std::nullopt;
        if (!comparison) {
            return std::nullopt;
        }
        Condition condition{std::move(*field), *comparison, Null{}};
        if (condition.comparison < Condition::Comparison::IsNull) {
            auto constant = constantIn(reader);
            if (!constant) {
                return std::nullopt;
            }
            condition.constant = std::move(*constant);
        }
        conditions.push_back(std::move(condition));
    } while (reader.takeWord(u"AND"));
    return reader.atEnd() ? std::optional(conditions) : std::nullopt;
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

std::optional<Selection> selectionIn(TokenReader& tokens) {
    Selection selection;
    if (!tokens.takeWord(u"SELECT")) {
        return std::nullopt;
    }
    for (;;) {
        if (tokens.takeWord(u"DISTINCT")) {
            selection.distinct = true;
        } else if (tokens.takeWord(u"DISTINCTROW")) {
            selection.distinctRow = true;
        } else if (tokens.takeWord(u"TOP")) {
            selection.top = numberIn(tokens);
            if (!selection.top || tokens.takeWord(u"PERCENT")) {
                return std::nullopt;
            }
        } else if (!tokens.takeWord(u"ALL")) {
            break;
        }
    }
    do {
        auto column = columnIn(tokens);
        if (!column) {
            return std::nullopt;
        }
        selection.columns.push_back(std::move(*column));
    } while (tokens.takeSign(u","));
    auto source = tokens.takeWord(u"FROM") ? sourceIn(tokens, 0) : std::nullopt;
    if (!source) {
        return std::nullopt;
    }
    selection.source = std::move(*source);
    if (tokens.takeWord(u"WHERE")) {
        auto conditions = conditionsIn(tokens);
        if (!conditions) {
            return std::nullopt;
        }
        selection.conditions = std::move(*conditions);
    }
    if (tokens.takeWord(u"ORDER")) {
        auto order = tokens.takeWord(u"BY") ? orderIn(tokens) : std::nullopt;
        if (!order) {
            return std::nullopt;
        }
        selection.order = std::move(*order);
    }
    if (tokens.takeWord(u"WITH")) { // OWNERACCESS OPTION
        tokens.take();
        tokens.take();
    }
    return selection;
}

} // namespace

std::optional<Selection> parseSelection(TextView statement) {
    return readAll(statement, selectionIn);
}

std::optional<std::vector<OrderKey>> parseOrder(TextView order) {
    return readAll(order, orderIn);
}

std::optional<std::vector<Condition>> parseConditions(TextView conditions) {
    return readAll(conditions, conditionsIn);
}

std::optional<Expression> parseExpression(TextView expression) {
    return readAll(expression, expressionIn);
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
