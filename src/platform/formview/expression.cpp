#include "formview/expression.h"

#include <algorithm>
#include <charconv>
#include <numeric>

#include "platform/runtime_error.h"

namespace relvane::formview {
namespace {

using jet::Token;
using jet::TokenKind;
using jet::TokenReader;

constexpr int deepestNesting = 64; // of parentheses and calls
constexpr int mostOperators = 1000;

constexpr TextView statementWords[] = {u"FROM", u"WHERE", u"ORDER", u"GROUP",  u"HAVING", u"UNION",
                                       u"WITH", u"PIVOT", u"INNER", u"LEFT",   u"RIGHT",  u"JOIN",
                                       u"ON",   u"AS",    u"OUTER", u"SELECT", u"ASC",    u"DESC"};
constexpr TextView wordedComparisons[] = {u"IS", u"LIKE", u"BETWEEN", u"IN", u"NOT"};
constexpr TextView operatorWords[] = {u"AND", u"OR", u"NOT", u"LIKE", u"BETWEEN", u"IN", u"IS", u"MOD"};

template <class Words>
bool isOneOf(const Token& token, const Words& words) {
    return std::ranges::any_of(words, [&](TextView word) { return token.isWord(word); });
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

std::optional<Value> constantOf(const Token& token) {
    switch (token.kind) {
    case TokenKind::Number: {
        const bool isWhole =
            token.text.size() < 10 && token.text.find_first_not_of(u"0123456789") == TextView::npos;
        std::optional<Value> number;
        skipErrors([&] {
            number =
                isWhole ? Value(std::int64_t{toLong(Text(token.text))}) : Value(toDouble(Text(token.text)));
        });
        return number;
    }
    case TokenKind::String:
        return token.value();
    case TokenKind::Date:
        return dateIn(token.text);
    case TokenKind::Word:
        if (token.isWord(u"True") || token.isWord(u"Yes") || token.isWord(u"On")) {
            return true;
        }
        if (token.isWord(u"False") || token.isWord(u"No") || token.isWord(u"Off")) {
            return false;
        }
        return token.isWord(u"Null") ? std::optional(Value(Null{})) : std::nullopt;
    default:
        return std::nullopt;
    }
}

// By rising strength: what binds as loosely as `level` or more strongly. Each step gives nothing when it meets what it
// does not know.
class Parser {
public:
    explicit Parser(TokenReader& tokens) : tokens_(tokens) {}

    std::optional<Expression> disjunction() { return chain(&Parser::conjunction, {u"OR"}); }

private:
    using Step = std::optional<Expression> (Parser::*)();

    // A long chain is a deep tree.
    std::optional<Expression> made(const Function* function, std::vector<Expression> operands) {
        const bool isKnown = function != nullptr && ++made_ <= mostOperators;
        return isKnown ? std::optional(Expression{.function = function, .operands = std::move(operands)})
                       : std::nullopt;
    }

    bool takes(TextView sign) { return tokens_.takeSign(sign) || tokens_.takeWord(sign); }

    // Operands with any of the signs between them, from the left.
    std::optional<Expression> chain(Step operand, std::initializer_list<TextView> signs) {
        auto left = (this->*operand)();
        while (left) {
            const auto* sign = std::ranges::find_if(signs, [&](TextView each) { return takes(each); });
            if (sign == signs.end()) {
                break;
            }
            auto right = (this->*operand)();
            left = right ? made(findOperator(*sign, 2), {std::move(*left), std::move(*right)}) : std::nullopt;
        }
        return left;
    }

    std::optional<Expression> conjunction() { return chain(&Parser::negation, {u"AND"}); }

    std::optional<Expression> negation() {
        if (!takes(u"NOT")) {
            return comparison();
        }
        auto operand = nested(&Parser::negation);
        return operand ? made(findOperator(u"NOT", 1), {std::move(*operand)}) : std::nullopt;
    }

    std::optional<Expression> comparison() {
        auto left = chain(&Parser::added, {u"&"});
        while (left) {
            constexpr TextView signs[] = {u"=", u"<>", u"<=", u">=", u"<", u">"};
            const auto* sign = std::ranges::find_if(signs, [&](TextView each) { return takes(each); });
            if (sign != std::end(signs)) {
                auto right = chain(&Parser::added, {u"&"});
                left = right ? made(findOperator(*sign, 2), {std::move(*left), std::move(*right)})
                             : std::nullopt;
            } else if (isOneOf(tokens_.peek(), wordedComparisons)) {
                left = worded(std::move(*left));
            } else {
                break;
            }
        }
        return left;
    }

    // IS [NOT] NULL, [NOT] LIKE, BETWEEN .. AND .., IN (..)
    std::optional<Expression> worded(Expression left) {
        std::vector<Expression> operands;
        operands.push_back(std::move(left));
        TextView name;
        bool isNegated = false;
        if (takes(u"IS")) {
            isNegated = takes(u"NOT");
            name = takes(u"NULL") ? u"IS NULL" : u"";
        } else {
            isNegated = takes(u"NOT");
            if (takes(u"LIKE")) {
                name = u"LIKE";
                addOperand(operands, chain(&Parser::added, {u"&"}));
            } else if (takes(u"BETWEEN")) {
                name = u"BETWEEN";
                addOperand(operands, chain(&Parser::added, {u"&"}));
                if (takes(u"AND")) {
                    addOperand(operands, chain(&Parser::added, {u"&"}));
                }
            } else if (takes(u"IN") && tokens_.takeSign(u"(")) {
                name = u"IN";
                if (!list(operands)) {
                    return std::nullopt;
                }
            }
        }
        const std::size_t count = operands.size();
        auto found = made(findOperator(name, count), std::move(operands));
        return found && isNegated ? made(findOperator(u"NOT", 1), {std::move(*found)}) : found;
    }

    static void addOperand(std::vector<Expression>& operands, std::optional<Expression> operand) {
        if (operand) {
            operands.push_back(std::move(*operand));
        }
    }

    std::optional<Expression> added() { return chain(&Parser::remainder, {u"+", u"-"}); }
    std::optional<Expression> remainder() { return chain(&Parser::wholeQuotient, {u"MOD"}); }
    std::optional<Expression> wholeQuotient() { return chain(&Parser::multiplied, {u"\\"}); }
    std::optional<Expression> multiplied() { return chain(&Parser::signedOne, {u"*", u"/"}); }

    std::optional<Expression> signedOne() {
        if (tokens_.takeSign(u"+")) {
            return nested(&Parser::signedOne);
        }
        if (!tokens_.takeSign(u"-")) {
            return chain(&Parser::single, {u"^"});
        }
        auto operand = nested(&Parser::signedOne);
        return operand ? made(findOperator(u"-", 1), {std::move(*operand)}) : std::nullopt;
    }

    std::optional<Expression> nested(Step step) {
        if (depth_ >= deepestNesting) {
            return std::nullopt;
        }
        ++depth_;
        auto expression = (this->*step)();
        --depth_;
        return expression;
    }

    // Behind the opening parenthesis, up to and with the closing one.
    bool list(std::vector<Expression>& operands) {
        if (tokens_.takeSign(u")")) {
            return true;
        }
        do {
            auto operand = nested(&Parser::disjunction);
            if (!operand) {
                return false;
            }
            operands.push_back(std::move(*operand));
        } while (tokens_.takeSign(u","));
        return tokens_.takeSign(u")");
    }

    std::optional<Expression> single() {
        if (tokens_.takeSign(u"(")) {
            auto inner = nested(&Parser::disjunction);
            return inner && tokens_.takeSign(u")") ? inner : std::nullopt;
        }
        const Token& token = tokens_.peek();
        if (token.kind == TokenKind::Word && tokens_.peek(1).isSign(u"(")) {
            return call();
        }
        if (auto constant = constantOf(token)) {
            tokens_.take();
            return Expression{.constant = std::move(*constant)};
        }
        auto field = fieldIn(tokens_);
        return field ? std::optional(Expression{.field = std::move(field)}) : std::nullopt;
    }

    std::optional<Expression> call() {
        const TextView name = tokens_.take().text;
        tokens_.take();
        std::vector<Expression> operands;
        if (tokens_.peek().isSign(u"*") && tokens_.peek(1).isSign(u")")) { // Count(*)
            tokens_.take();
            tokens_.take();
            operands.push_back({.constant = true});
        } else if (!list(operands)) {
            return std::nullopt;
        }
        const std::size_t count = operands.size();
        return made(findFunction(name, count), std::move(operands));
    }

    TokenReader& tokens_;
    int depth_ = 0, made_ = 0;
};

} // namespace

bool isPlainName(const Token& token) {
    return token.kind == TokenKind::Name ||
           (token.kind == TokenKind::Word && !isOneOf(token, statementWords) &&
            !isOneOf(token, operatorWords));
}

std::optional<FieldName> fieldIn(TokenReader& tokens) {
    constexpr std::size_t longest = 3;
    const TokenReader start = tokens;
    std::vector<Text> path;
    do {
        if (path.empty() ? !isPlainName(tokens.peek()) : !tokens.peek().isName()) {
            tokens = start;
            return std::nullopt;
        }
        path.emplace_back(tokens.take().text);
    } while (path.size() <= longest && (tokens.takeSign(u".") || tokens.takeSign(u"!")));
    if (path.size() == 1) {
        return FieldName{{}, path[0]};
    }
    if (path.size() == 2) {
        return FieldName{path[0], path[1]};
    }
    if (path.size() == longest && equalsIgnoringCase(path[1], u"Form")) {
        return FieldName{path[0], path[2], true};
    }
    tokens = start;
    return std::nullopt;
}

std::optional<Expression> expressionIn(TokenReader& tokens) {
    return Parser(tokens).disjunction();
}

std::optional<Expression> parseExpression(TextView text) {
    const auto all = jet::sqlTokens(text);
    TokenReader tokens(all);
    auto expression = expressionIn(tokens);
    return tokens.atEnd() ? expression : std::nullopt;
}

bool Expression::hasTotal() const {
    return (function != nullptr && function->isTotal()) ||
           std::ranges::any_of(operands, &Expression::hasTotal);
}

std::vector<FieldName> Expression::fields() const {
    std::vector<FieldName> all;
    if (field) {
        all.push_back(*field);
    }
    for (const Expression& operand : operands) {
        const auto more = operand.fields();
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

std::size_t Expression::size() const {
    return std::accumulate(operands.begin(), operands.end(), std::size_t{1},
                           [](std::size_t sum, const Expression& operand) { return sum + operand.size(); });
}

Value valueOf(const Expression& expression, const Scope& scope) {
    if (expression.field) {
        return scope.field(*expression.field);
    }
    if (expression.function == nullptr) {
        return expression.constant;
    }
    const Function& function = *expression.function;
    std::vector<Value> operands;
    if (function.isTotal()) {
        if (!scope.inAllRecords) {
            return Null{};
        }
        operands = scope.inAllRecords(expression.operands.front());
        std::erase_if(operands, isNull);
    } else {
        for (const Expression& operand : expression.operands) {
            operands.push_back(valueOf(operand, scope));
        }
        if (function.nulls == Function::Nulls::Spread && std::ranges::any_of(operands, isNull)) {
            return Null{};
        }
    }
    try {
        return function.compute(operands);
    } catch (const RunTimeError&) {
        return Null{};
    }
}

bool holds(const Expression& condition, const Scope& scope) {
    const Value value = valueOf(condition, scope);
    bool isTrue = false;
    skipErrors([&] { isTrue = !isNull(value) && toBoolean(value); });
    return isTrue;
}

} // namespace relvane::formview
