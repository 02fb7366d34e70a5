#include "jet/query_types.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

#include "jet/query_lexer.h"

namespace relvane::jet {
namespace {

constexpr int unknown = 0;
constexpr int maximumNesting = 100;

struct TypeSize {
    int type;
    std::int32_t size;
};
constexpr TypeSize typeSizes[] = {
    {fieldType::Boolean, 1},  {fieldType::Byte, 1},   {fieldType::Integer, 2}, {fieldType::Long, 4},
    {fieldType::Currency, 8}, {fieldType::Single, 4}, {fieldType::Double, 8},  {fieldType::Date, 8},
    {fieldType::Binary, 255}, {fieldType::Text, 255}, {fieldType::Guid, 16},   {fieldType::Decimal, 16},
};

// ---- Operators

enum class Operation {
    Logic,
    Compare,
    Between,
    In,
    Is,
    Concatenate,
    Add,
    Subtract,
    Multiply,
    Divide,
    IntegerDivide
};

struct Operator {
    TextView text;
    int level; // the higher, the tighter it binds
    Operation operation;
};
constexpr int lowest = 0, comparison = 6, negation = 12;
constexpr Operator operators[] = {
    {u"Imp", 0, Operation::Logic},
    {u"Eqv", 1, Operation::Logic},
    {u"Xor", 2, Operation::Logic},
    {u"Or", 3, Operation::Logic},
    {u"And", 4, Operation::Logic},
    {u"=", 6, Operation::Compare},
    {u"<>", 6, Operation::Compare},
    {u"<", 6, Operation::Compare},
    {u">", 6, Operation::Compare},
    {u"<=", 6, Operation::Compare},
    {u">=", 6, Operation::Compare},
    {u"Like", 6, Operation::Compare},
    {u"Between", 6, Operation::Between},
    {u"In", 6, Operation::In},
    {u"Is", 6, Operation::Is},
    {u"&", 7, Operation::Concatenate},
    {u"+", 8, Operation::Add},
    {u"-", 8, Operation::Subtract},
    {u"Mod", 9, Operation::IntegerDivide},
    {u"\\", 10, Operation::IntegerDivide},
    {u"*", 11, Operation::Multiply},
    {u"/", 11, Operation::Divide},
    {u"^", 13, Operation::Divide},
};

// Numbers in the order in which one gives way to the other, for sums and for products.
constexpr int sumOrder[] = {fieldType::Byte,   fieldType::Integer,  fieldType::Long,   fieldType::Single,
                            fieldType::Double, fieldType::Currency, fieldType::Decimal};
constexpr int productOrder[] = {fieldType::Byte,     fieldType::Integer, fieldType::Long,   fieldType::Single,
                                fieldType::Currency, fieldType::Double,  fieldType::Decimal};

int asNumber(int type) {
    return type == fieldType::Boolean ? fieldType::Integer : type;
}

bool isNumber(int type) {
    return std::ranges::find(sumOrder, asNumber(type)) != std::end(sumOrder);
}

int wider(int left, int right, const int (&order)[std::size(sumOrder)]) {
    left = asNumber(left);
    right = asNumber(right);
    if ((left == fieldType::Long && right == fieldType::Single) ||
        (left == fieldType::Single && right == fieldType::Long)) {
        return fieldType::Double; // a Single does not hold every Long
    }
    return std::max(std::ranges::find(order, left), std::ranges::find(order, right))[0];
}

int sum(int left, int right, bool difference) {
    if (isNumber(left) && isNumber(right)) {
        return wider(left, right, sumOrder);
    }
    if (left == fieldType::Date || right == fieldType::Date) {
        return difference && left == right ? fieldType::Double : fieldType::Date;
    }
    const auto mayBeText = [](int type) { return type == fieldType::Text || type == fieldType::Memo; };
    if (!difference && (mayBeText(left) || mayBeText(right)) && !isNumber(left) && !isNumber(right)) {
        return fieldType::Text;
    }
    return left == unknown && right == unknown && !difference ? unknown : fieldType::Double;
}

int combined(Operation operation, int left, int right) {
    switch (operation) {
    case Operation::Concatenate:
        return fieldType::Text;
    case Operation::Add:
    case Operation::Subtract:
        return sum(left, right, operation == Operation::Subtract);
    case Operation::Multiply:
        return isNumber(left) && isNumber(right) ? wider(left, right, productOrder) : fieldType::Double;
    case Operation::Divide:
        return fieldType::Double;
    case Operation::IntegerDivide:
        return fieldType::Long;
    default:
        return fieldType::Integer; // Jet's truth values are the Integers 0 and -1
    }
}

// The type that holds either of two values.
int common(int left, int right) {
    if (left == unknown || right == unknown || left == right) {
        return left == unknown ? right : left;
    }
    return isNumber(left) && isNumber(right) ? wider(left, right, sumOrder) : fieldType::Text;
}

// ---- Functions

// How the type follows from the arguments.
enum class Rule { Fixed, First, Average, Sum, Branches, Choices, Pairs, Either };

struct Function {
    TextView name;
    Rule rule;
    int type = unknown; // of Rule::Fixed
};
constexpr Function functions[] = {
    // Over groups of rows
    {u"Count", Rule::Fixed, fieldType::Long},
    {u"Sum", Rule::Sum},
    {u"Avg", Rule::Average},
    {u"Min", Rule::First},
    {u"Max", Rule::First},
    {u"First", Rule::First},
    {u"Last", Rule::First},
    {u"StDev", Rule::Fixed, fieldType::Double},
    {u"StDevP", Rule::Fixed, fieldType::Double},
    {u"Var", Rule::Fixed, fieldType::Double},
    {u"VarP", Rule::Fixed, fieldType::Double},
    {u"DCount", Rule::Fixed, fieldType::Long},
    {u"DSum", Rule::Fixed, fieldType::Double},
    {u"DAvg", Rule::Fixed, fieldType::Double},
    {u"DStDev", Rule::Fixed, fieldType::Double},
    {u"DStDevP", Rule::Fixed, fieldType::Double},
    {u"DVar", Rule::Fixed, fieldType::Double},
    {u"DVarP", Rule::Fixed, fieldType::Double},
    // Choices
    {u"IIf", Rule::Branches},
    {u"Nz", Rule::Either},
    {u"Choose", Rule::Choices},
    {u"Switch", Rule::Pairs},
    // Conversions
    {u"CBool", Rule::Fixed, fieldType::Boolean},
    {u"CByte", Rule::Fixed, fieldType::Byte},
    {u"CInt", Rule::Fixed, fieldType::Integer},
    {u"CLng", Rule::Fixed, fieldType::Long},
    {u"CCur", Rule::Fixed, fieldType::Currency},
    {u"CSng", Rule::Fixed, fieldType::Single},
    {u"CDbl", Rule::Fixed, fieldType::Double},
    {u"CDec", Rule::Fixed, fieldType::Decimal},
    {u"CDate", Rule::Fixed, fieldType::Date},
    {u"CVDate", Rule::Fixed, fieldType::Date},
    {u"CStr", Rule::Fixed, fieldType::Text},
    {u"Val", Rule::Fixed, fieldType::Double},
    // Dates
    {u"Date", Rule::Fixed, fieldType::Date},
    {u"Time", Rule::Fixed, fieldType::Date},
    {u"Now", Rule::Fixed, fieldType::Date},
    {u"DateAdd", Rule::Fixed, fieldType::Date},
    {u"DateSerial", Rule::Fixed, fieldType::Date},
    {u"DateValue", Rule::Fixed, fieldType::Date},
    {u"TimeSerial", Rule::Fixed, fieldType::Date},
    {u"TimeValue", Rule::Fixed, fieldType::Date},
    {u"DateDiff", Rule::Fixed, fieldType::Long},
    {u"DatePart", Rule::Fixed, fieldType::Integer},
    {u"Year", Rule::Fixed, fieldType::Integer},
    {u"Month", Rule::Fixed, fieldType::Integer},
    {u"Day", Rule::Fixed, fieldType::Integer},
    {u"Weekday", Rule::Fixed, fieldType::Integer},
    {u"Hour", Rule::Fixed, fieldType::Integer},
    {u"Minute", Rule::Fixed, fieldType::Integer},
    {u"Second", Rule::Fixed, fieldType::Integer},
    {u"Timer", Rule::Fixed, fieldType::Single},
    // Texts: functions that give a text need no row, Text being what an unknown function gives
    {u"Len", Rule::Fixed, fieldType::Long},
    {u"LenB", Rule::Fixed, fieldType::Long},
    {u"InStr", Rule::Fixed, fieldType::Long},
    {u"InStrB", Rule::Fixed, fieldType::Long},
    {u"InStrRev", Rule::Fixed, fieldType::Long},
    {u"Asc", Rule::Fixed, fieldType::Integer},
    {u"AscB", Rule::Fixed, fieldType::Integer},
    {u"AscW", Rule::Fixed, fieldType::Integer},
    {u"StrComp", Rule::Fixed, fieldType::Integer},
    // Numbers
    {u"Abs", Rule::First},
    {u"Int", Rule::First},
    {u"Fix", Rule::First},
    {u"Round", Rule::First},
    {u"Sgn", Rule::Fixed, fieldType::Integer},
    {u"Rnd", Rule::Fixed, fieldType::Single},
    {u"Sqr", Rule::Fixed, fieldType::Double},
    {u"Exp", Rule::Fixed, fieldType::Double},
    {u"Log", Rule::Fixed, fieldType::Double},
    {u"Sin", Rule::Fixed, fieldType::Double},
    {u"Cos", Rule::Fixed, fieldType::Double},
    {u"Tan", Rule::Fixed, fieldType::Double},
    {u"Atn", Rule::Fixed, fieldType::Double},
    {u"DDB", Rule::Fixed, fieldType::Double},
    {u"FV", Rule::Fixed, fieldType::Double},
    {u"IPmt", Rule::Fixed, fieldType::Double},
    {u"NPer", Rule::Fixed, fieldType::Double},
    {u"Pmt", Rule::Fixed, fieldType::Double},
    {u"PPmt", Rule::Fixed, fieldType::Double},
    {u"PV", Rule::Fixed, fieldType::Double},
    {u"Rate", Rule::Fixed, fieldType::Double},
    {u"SLN", Rule::Fixed, fieldType::Double},
    {u"SYD", Rule::Fixed, fieldType::Double},
    {u"QBColor", Rule::Fixed, fieldType::Long},
    {u"RGB", Rule::Fixed, fieldType::Long},
    // Questions
    {u"Exists", Rule::Fixed, fieldType::Integer},
    {u"IsDate", Rule::Fixed, fieldType::Integer},
    {u"IsEmpty", Rule::Fixed, fieldType::Integer},
    {u"IsError", Rule::Fixed, fieldType::Integer},
    {u"IsNull", Rule::Fixed, fieldType::Integer},
    {u"IsNumeric", Rule::Fixed, fieldType::Integer},
    {u"IsObject", Rule::Fixed, fieldType::Integer},
    {u"VarType", Rule::Fixed, fieldType::Integer},
};

constexpr TextView truthValues[] = {u"True", u"False", u"Yes", u"No", u"On", u"Off"};

int typeOfCall(TextView name, const std::vector<int>& arguments) {
    const auto named = [name](const Function& function) { return equalsIgnoringCase(function.name, name); };
    const auto* function = std::ranges::find_if(functions, named);
    if (function == std::end(functions)) {
        return unknown;
    }
    const auto argument = [&arguments](std::size_t place) {
        return place < arguments.size() ? arguments[place] : unknown;
    };
    // The type that holds the arguments from `first` on, each `step`th.
    const auto any = [&arguments](std::size_t first, std::size_t step) {
        int type = unknown;
        for (std::size_t place = first; place < arguments.size(); place += step) {
            type = common(type, arguments[place]);
        }
        return type;
    };
    const int first = argument(0);
    const bool exact = first == fieldType::Currency || first == fieldType::Decimal;
    switch (function->rule) {
    case Rule::Fixed:
        return function->type;
    case Rule::First:
        return first;
    case Rule::Average:
    case Rule::Sum:
        return exact ? first : fieldType::Double;
    case Rule::Branches:
        return common(argument(1), argument(2));
    case Rule::Choices:
        return any(1, 1);
    case Rule::Pairs:
        return any(1, 2);
    case Rule::Either:
        return any(0, 1);
    }
    return unknown;
}

int typeOfNumber(TextView digits) {
    constexpr std::int64_t largestInteger = 32767, largestLong = 2147483647;
    std::int64_t number = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9' || number > largestLong) {
            return fieldType::Double;
        }
        number = number * 10 + (digit - u'0');
    }
    return number <= largestInteger ? fieldType::Integer
           : number <= largestLong  ? fieldType::Long
                                    : fieldType::Double;
}

// Walks an expression once, by precedence. It never fails: what it cannot make out is unknown.
class ExpressionReader {
public:
    ExpressionReader(TextView text, ExpressionScope& scope)
        : text_(text), tokens_(sqlTokens(text)), reader_(tokens_), scope_(scope) {}

    int run() { return expression(lowest); }

private:
    const Operator* operatorAhead() const {
        const Token& token = reader_.peek();
        const auto matches = [&token](const Operator& candidate) {
            return token.isSign(candidate.text) || token.isWord(candidate.text);
        };
        const auto* found = std::ranges::find_if(operators, matches);
        return found == std::end(operators) ? nullptr : found;
    }

    int expression(int level) {
        if (++nesting_ > maximumNesting) {
            --nesting_;
            return unknown;
        }
        int type = operand();
        for (;;) {
            if (reader_.peek().isWord(u"Not")) { // x Not Like y, x Not Between y And z
                reader_.take();
            }
            const Operator* next = operatorAhead();
            if (next == nullptr || next->level < level) {
                break;
            }
            reader_.take();
            type = combined(next->operation, type, rightSide(*next));
        }
        --nesting_;
        return type;
    }

    int rightSide(const Operator& left) {
        if (left.operation == Operation::In) {
            if (reader_.takeSign(u"(")) {
                reader_.skipParentheses();
            }
            return unknown;
        }
        if (left.operation == Operation::Is) {
            reader_.takeWord(u"Not");
            reader_.takeWord(u"Null");
            return unknown;
        }
        const int right = expression(left.level + 1);
        if (left.operation == Operation::Between && reader_.takeWord(u"And")) {
            expression(left.level + 1);
        }
        return right;
    }

    int operand() {
        const Token& token = reader_.peek();
        switch (token.kind) {
        case TokenKind::String:
            reader_.take();
            return fieldType::Text;
        case TokenKind::Date:
            reader_.take();
            return fieldType::Date;
        case TokenKind::Number:
            return typeOfNumber(reader_.take().text);
        case TokenKind::Word:
            if (reader_.takeWord(u"Not")) {
                expression(comparison);
                return fieldType::Integer;
            }
            return reader_.peek(1).isSign(u"(") ? call() : path();
        case TokenKind::Name:
            return reader_.peek(1).isSign(u"(") ? call() : path();
        case TokenKind::Sign:
            return signedOperand();
        case TokenKind::End:
            break;
        }
        return unknown;
    }

    int signedOperand() {
        if (reader_.takeSign(u"-") || reader_.takeSign(u"+")) {
            return asNumber(expression(negation));
        }
        if (reader_.takeSign(u"&")) { // &HFF, &O17
            reader_.take();
            return fieldType::Long;
        }
        if (!reader_.takeSign(u"(")) {
            return unknown;
        }
        if (reader_.peek().isWord(u"SELECT")) {
            return subquery();
        }
        const int type = expression(lowest);
        reader_.skipParentheses();
        return type;
    }

    int subquery() {
        const std::size_t begin = reader_.peek().begin;
        reader_.skipParentheses();
        const std::size_t end = reader_.position()[-1].begin;
        return scope_.typeOfSubquery(text_.substr(begin, end - begin)).value_or(unknown);
    }

    int call() {
        TextView name = reader_.take().text;
        if (name.ends_with(u'$')) {
            name.remove_suffix(1);
        }
        reader_.take();
        std::vector<int> arguments;
        if (!reader_.peek().isSign(u")") && !reader_.peek().isWord(u"SELECT")) {
            do {
                arguments.push_back(expression(lowest));
            } while (reader_.takeSign(u","));
        }
        reader_.skipParentheses();
        return typeOfCall(name, arguments);
    }

    int path() {
        const Token& first = reader_.take();
        const auto isTruthValue = [&first](TextView word) { return first.isWord(word); };
        if (std::ranges::any_of(truthValues, isTruthValue)) {
            return fieldType::Integer;
        }
        Text table, field(first.text), whole(first.text);
        int parts = 1;
        while ((reader_.peek().isSign(u".") || reader_.peek().isSign(u"!")) && reader_.peek(1).isName()) {
            reader_.take();
            table = std::move(field);
            field = Text(reader_.take().text);
            whole += u"!" + field;
            ++parts;
        }
        if (reader_.takeSign(u"(")) { // a method of an object
            reader_.skipParentheses();
            return unknown;
        }
        const auto type = parts <= 2 ? scope_.typeOfField(table, field) : std::nullopt;
        return type ? *type : scope_.typeOfParameter(whole).value_or(unknown);
    }

    TextView text_;
    std::vector<Token> tokens_;
    TokenReader reader_;
    ExpressionScope& scope_;
    int nesting_ = 0;
};

} // namespace

std::int32_t sizeOfType(int type) {
    const auto* found = std::ranges::find(typeSizes, type, &TypeSize::type);
    return found == std::end(typeSizes) ? 0 : found->size;
}

int typeOfExpression(TextView expression, ExpressionScope& scope) {
    const int type = ExpressionReader(expression, scope).run();
    return type == unknown ? fieldType::Text : type;
}

} // namespace relvane::jet
