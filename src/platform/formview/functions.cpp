#include "formview/functions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "formview/value_format.h"
#include "platform/runtime_error.h"

namespace relvane::formview {
namespace {

constexpr int mostLetters = 0x10000; // of a text that is made

// Doubles show 15 digits: what the last bits have more is dust.
Value clean(double number) {
    if (!std::isfinite(number)) {
        throw RunTimeError(ErrorNumber::Overflow);
    }
    std::array<char, 40> digits{};
    std::snprintf(digits.data(), digits.size(), "%.15g", number);
    return std::strtod(digits.data(), nullptr);
}

std::int64_t whole(double number) { // halves go to the even one
    constexpr double most = 9e15;
    if (!(std::abs(number) < most)) {
        throw RunTimeError(ErrorNumber::Overflow);
    }
    return static_cast<std::int64_t>(std::nearbyint(number));
}

Text textOf(const Value& value) {
    return isNull(value)                             ? Text()
           : std::holds_alternative<DateTime>(value) ? formattedValue(value, {})
                                                     : toText(value);
}

DateTime dateOf(const Value& value) {
    if (const auto* date = std::get_if<DateTime>(&value)) {
        return *date;
    }
    const auto date = DateTime::fromOleDate(numberOf(value));
    if (!date) {
        throw RunTimeError(ErrorNumber::TypeMismatch);
    }
    return *date;
}

bool isDate(const Value& value) {
    return std::holds_alternative<DateTime>(value);
}

std::size_t lengthOf(const Value& value) {
    const std::int64_t length = whole(numberOf(value));
    if (length < 0 || length > mostLetters) {
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    }
    return static_cast<std::size_t>(length);
}

// ---- Operators

bool isMoney(const Value& value) {
    return std::holds_alternative<Currency>(value);
}

Value money(double number) {
    return Currency{whole(numberOf(clean(number * 10000)))};
}

// Money stays money, unless with a number of double precision.
Value ofKind(double number, const Value& left, const Value& right) {
    const auto isDouble = [](const Value& value) { return std::holds_alternative<double>(value); };
    const bool staysMoney = (isMoney(left) || isMoney(right)) && !isDouble(left) && !isDouble(right);
    return staysMoney ? money(number) : clean(number);
}

// A date and a number make a date.
Value sum(const Value& left, const Value& right, double sign) {
    const double total = numberOf(left) + sign * numberOf(right);
    if (isDate(left) == isDate(right)) {
        return ofKind(total, left, right);
    }
    const auto date = DateTime::fromOleDate(total);
    return date ? Value(*date) : Value(Null{});
}

Value plus(Operands values) {
    const bool areTexts = std::holds_alternative<Text>(values[0]) && std::holds_alternative<Text>(values[1]);
    return areTexts ? Value(textOf(values[0]) + textOf(values[1])) : sum(values[0], values[1], 1);
}

Value minus(Operands values) {
    return sum(values[0], values[1], -1);
}

Value negative(Operands values) {
    return ofKind(-numberOf(values[0]), values[0], values[0]);
}

Value times(Operands values) {
    return ofKind(numberOf(values[0]) * numberOf(values[1]), values[0], values[1]);
}

Value divided(Operands values) {
    const double by = numberOf(values[1]);
    if (by == 0) {
        throw RunTimeError(ErrorNumber::DivisionByZero);
    }
    return clean(numberOf(values[0]) / by);
}

Value wholeDivided(Operands values) {
    const std::int64_t by = whole(numberOf(values[1]));
    if (by == 0) {
        throw RunTimeError(ErrorNumber::DivisionByZero);
    }
    return whole(numberOf(values[0])) / by;
}

Value modulo(Operands values) {
    const std::int64_t by = whole(numberOf(values[1]));
    if (by == 0) {
        throw RunTimeError(ErrorNumber::DivisionByZero);
    }
    return whole(numberOf(values[0])) % by;
}

Value power(Operands values) {
    return clean(std::pow(numberOf(values[0]), numberOf(values[1])));
}

Value joined(Operands values) {
    return textOf(values[0]) + textOf(values[1]);
}

Value equal(Operands values) {
    return compareValues(values[0], values[1]) == 0;
}
Value different(Operands values) {
    return compareValues(values[0], values[1]) != 0;
}
Value less(Operands values) {
    return compareValues(values[0], values[1]) < 0;
}
Value lessOrEqual(Operands values) {
    return compareValues(values[0], values[1]) <= 0;
}
Value greater(Operands values) {
    return compareValues(values[0], values[1]) > 0;
}
Value greaterOrEqual(Operands values) {
    return compareValues(values[0], values[1]) >= 0;
}

// Of "[a-c!x]" behind the bracket; `pattern` goes behind the closing one.
bool isInList(char16_t letter, TextView& pattern) {
    const std::size_t end = std::min(pattern.find(u']'), pattern.size());
    TextView list = pattern.substr(0, end);
    pattern.remove_prefix(std::min(end + 1, pattern.size()));
    const bool isNegated = list.starts_with(u'!');
    list.remove_prefix(isNegated ? 1 : 0);
    bool found = false;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const bool isRange = i + 2 < list.size() && list[i + 1] == u'-';
        found = found || (isRange ? letter >= list[i] && letter <= list[i + 2] : letter == list[i]);
        i += isRange ? 2 : 0;
    }
    return found != isNegated;
}

// One star is tried at a time: going back to the last one is enough.
bool isLike(TextView text, TextView pattern) {
    TextView textAtStar, behindStar;
    bool hasStar = false;
    while (!text.empty() || !pattern.empty()) {
        TextView rest = pattern;
        const char16_t sign = rest.empty() ? u'\0' : rest.front();
        rest.remove_prefix(rest.empty() ? 0 : 1);
        if (sign == u'*') {
            hasStar = true;
            textAtStar = text;
            behindStar = pattern = rest;
            continue;
        }
        const bool fits = !pattern.empty() && !text.empty() &&
                          (sign == u'?'   ? true
                           : sign == u'#' ? text.front() >= u'0' && text.front() <= u'9'
                           : sign == u'[' ? isInList(text.front(), rest)
                                          : sign == text.front());
        if (fits) {
            text.remove_prefix(1);
            pattern = rest;
        } else if (hasStar && !textAtStar.empty()) {
            textAtStar.remove_prefix(1);
            text = textAtStar;
            pattern = behindStar;
        } else {
            return false;
        }
    }
    return true;
}

Value like(Operands values) {
    return isLike(upperCase(textOf(values[0])), upperCase(textOf(values[1])));
}

Value between(Operands values) {
    return compareValues(values[0], values[1]) >= 0 && compareValues(values[0], values[2]) <= 0;
}

Value oneOf(Operands values) {
    return std::ranges::any_of(values.subspan(1),
                               [&](const Value& each) { return compareValues(values[0], each) == 0; });
}

// False whatever the other is, or else Null when one is.
Value both(Operands values) {
    bool knowsBoth = true;
    for (const Value& value : values) {
        if (isNull(value)) {
            knowsBoth = false;
        } else if (!toBoolean(value)) {
            return false;
        }
    }
    return knowsBoth ? Value(true) : Value(Null{});
}

Value either(Operands values) {
    bool knowsBoth = true;
    for (const Value& value : values) {
        if (isNull(value)) {
            knowsBoth = false;
        } else if (toBoolean(value)) {
            return true;
        }
    }
    return knowsBoth ? Value(false) : Value(Null{});
}

Value negated(Operands values) {
    return !toBoolean(values[0]);
}

// ---- Functions

Value isNullOf(Operands values) {
    return isNull(values[0]);
}

Value immediateIf(Operands values) {
    return !isNull(values[0]) && toBoolean(values[0]) ? values[1] : values[2];
}

Value orZero(Operands values) {
    return !isNull(values[0]) ? values[0] : values.size() > 1 ? values[1] : Value(std::int64_t{0});
}

Value currencyOf(Operands values) {
    return money(numberOf(values[0]));
}

Value wholeOf(Operands values) {
    return whole(numberOf(values[0]));
}

Value doubleOf(Operands values) {
    return clean(numberOf(values[0]));
}

Value textOfAny(Operands values) {
    return textOf(values[0]);
}

Value floorOf(Operands values) {
    return clean(std::floor(numberOf(values[0])));
}

Value truncated(Operands values) {
    return clean(std::trunc(numberOf(values[0])));
}

Value absolute(Operands values) {
    return clean(std::abs(numberOf(values[0])));
}

Value rounded(Operands values) {
    const double scale = std::pow(10, values.size() > 1 ? numberOf(values[1]) : 0);
    return clean(std::nearbyint(numberOf(clean(numberOf(values[0]) * scale))) / scale);
}

Value formatted(Operands values) {
    return formattedValue(values[0], values.size() > 1 ? textOf(values[1]) : Text());
}

Value left(Operands values) {
    return textOf(values[0]).substr(0, lengthOf(values[1]));
}

Value right(Operands values) {
    const Text text = textOf(values[0]);
    return text.substr(text.size() - std::min(text.size(), lengthOf(values[1])));
}

Value middle(Operands values) {
    const Text text = textOf(values[0]);
    const std::size_t from = lengthOf(values[1]);
    if (from == 0) {
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    }
    return text.substr(std::min(from - 1, text.size()), values.size() > 2 ? lengthOf(values[2]) : Text::npos);
}

Value length(Operands values) {
    return static_cast<std::int64_t>(textOf(values[0]).size());
}

Text trimmed(Text text, bool atBegin, bool atEnd) {
    while (atEnd && text.ends_with(u' ')) {
        text.pop_back();
    }
    return atBegin ? text.substr(std::min(text.find_first_not_of(u' '), text.size())) : text;
}

Value trim(Operands values) {
    return trimmed(textOf(values[0]), true, true);
}
Value trimLeft(Operands values) {
    return trimmed(textOf(values[0]), true, false);
}
Value trimRight(Operands values) {
    return trimmed(textOf(values[0]), false, true);
}

Value capitals(Operands values) {
    return upperCase(textOf(values[0]));
}

Value place(Operands values) {
    const std::size_t found = upperCase(textOf(values[0])).find(upperCase(textOf(values[1])));
    return found == Text::npos ? std::int64_t{0} : static_cast<std::int64_t>(found + 1);
}

// Year, Month, DatePart with its letters.
Value partOf(const DateTime& date, TextView part) {
    constexpr int monthsOfQuarter = 3;
    const struct {
        TextView name;
        int value;
    } parts[] = {{u"yyyy", date.year}, {u"q", (date.month - 1) / monthsOfQuarter + 1},
                 {u"m", date.month},   {u"d", date.day},
                 {u"h", date.hour},    {u"n", date.minute},
                 {u"s", date.second}};
    const auto* found =
        std::ranges::find_if(parts, [&](const auto& each) { return equalsIgnoringCase(each.name, part); });
    if (found == std::end(parts)) {
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    }
    return std::int64_t{found->value};
}

Value datePart(Operands values) {
    return partOf(dateOf(values[1]), textOf(values[0]));
}
Value year(Operands values) {
    return partOf(dateOf(values[0]), u"yyyy");
}
Value month(Operands values) {
    return partOf(dateOf(values[0]), u"m");
}
Value day(Operands values) {
    return partOf(dateOf(values[0]), u"d");
}
Value hour(Operands values) {
    return partOf(dateOf(values[0]), u"h");
}
Value minute(Operands values) {
    return partOf(dateOf(values[0]), u"n");
}

// ---- Totals: of no value at all they are Null, but for Count

Value total(Operands values) {
    double sum = 0;
    bool areMoney = !values.empty();
    for (const Value& value : values) {
        sum += numberOf(value);
        areMoney = areMoney && isMoney(value);
    }
    return values.empty() ? Value(Null{}) : areMoney ? money(sum) : clean(sum);
}

Value average(Operands values) {
    if (values.empty()) {
        return Null{};
    }
    const Value sum = total(values);
    return ofKind(numberOf(sum) / static_cast<double>(values.size()), sum, sum);
}

Value count(Operands values) {
    return static_cast<std::int64_t>(values.size());
}

bool goesBefore(const Value& one, const Value& other) {
    return compareValues(one, other) < 0;
}

Value least(Operands values) {
    return values.empty() ? Value(Null{}) : *std::ranges::min_element(values, goesBefore);
}

Value greatest(Operands values) {
    return values.empty() ? Value(Null{}) : *std::ranges::max_element(values, goesBefore);
}

Value first(Operands values) {
    return values.empty() ? Value(Null{}) : values.front();
}

Value last(Operands values) {
    return values.empty() ? Value(Null{}) : values.back();
}

using enum Function::Nulls;
constexpr std::size_t any = 1000;

constexpr Function operators[] = {
    {u"+", 2, 2, plus},
    {u"-", 2, 2, minus},
    {u"-", 1, 1, negative},
    {u"*", 2, 2, times},
    {u"/", 2, 2, divided},
    {u"\\", 2, 2, wholeDivided},
    {u"MOD", 2, 2, modulo},
    {u"^", 2, 2, power},
    {u"&", 2, 2, joined, Taken},
    {u"=", 2, 2, equal},
    {u"<>", 2, 2, different},
    {u"<", 2, 2, less},
    {u"<=", 2, 2, lessOrEqual},
    {u">", 2, 2, greater},
    {u">=", 2, 2, greaterOrEqual},
    {u"LIKE", 2, 2, like},
    {u"BETWEEN", 3, 3, between},
    {u"IN", 2, any, oneOf},
    {u"AND", 2, 2, both, Taken},
    {u"OR", 2, 2, either, Taken},
    {u"NOT", 1, 1, negated},
    {u"IS NULL", 1, 1, isNullOf, Taken},
};

constexpr Function functions[] = {
    {u"ISNULL", 1, 1, isNullOf, Taken},
    {u"IIF", 3, 3, immediateIf, Taken},
    {u"NZ", 1, 2, orZero, Taken},
    {u"CCUR", 1, 1, currencyOf},
    {u"CINT", 1, 1, wholeOf},
    {u"CLNG", 1, 1, wholeOf},
    {u"CSNG", 1, 1, doubleOf},
    {u"CDBL", 1, 1, doubleOf},
    {u"CSTR", 1, 1, textOfAny},
    {u"STR", 1, 1, textOfAny},
    {u"INT", 1, 1, floorOf},
    {u"FIX", 1, 1, truncated},
    {u"ABS", 1, 1, absolute},
    {u"ROUND", 1, 2, rounded},
    {u"FORMAT", 1, 2, formatted, Taken},
    {u"FORMAT$", 1, 2, formatted, Taken},
    {u"LEFT", 2, 2, left},
    {u"LEFT$", 2, 2, left},
    {u"RIGHT", 2, 2, right},
    {u"RIGHT$", 2, 2, right},
    {u"MID", 2, 3, middle},
    {u"MID$", 2, 3, middle},
    {u"LEN", 1, 1, length},
    {u"TRIM", 1, 1, trim},
    {u"TRIM$", 1, 1, trim},
    {u"LTRIM", 1, 1, trimLeft},
    {u"RTRIM", 1, 1, trimRight},
    {u"UCASE", 1, 1, capitals},
    {u"INSTR", 2, 2, place},
    {u"DATEPART", 2, 4, datePart},
    {u"YEAR", 1, 1, year},
    {u"MONTH", 1, 1, month},
    {u"DAY", 1, 1, day},
    {u"HOUR", 1, 1, hour},
    {u"MINUTE", 1, 1, minute},
    {u"SUM", 1, 1, total, Skipped},
    {u"AVG", 1, 1, average, Skipped},
    {u"COUNT", 1, 1, count, Skipped},
    {u"MIN", 1, 1, least, Skipped},
    {u"MAX", 1, 1, greatest, Skipped},
    {u"FIRST", 1, 1, first, Skipped},
    {u"LAST", 1, 1, last, Skipped},
};

const Function* find(std::span<const Function> table, TextView name, std::size_t operands) {
    const auto found = std::ranges::find_if(table, [&](const Function& each) {
        return equalsIgnoringCase(each.name, name) && operands >= each.fewest && operands <= each.most;
    });
    return found == table.end() ? nullptr : &*found;
}

} // namespace

const Function* findFunction(TextView name, std::size_t operands) {
    return find(functions, name, operands);
}

const Function* findOperator(TextView sign, std::size_t operands) {
    return find(operators, sign, operands);
}

bool isNull(const Value& value) {
    return std::holds_alternative<Null>(value);
}

bool isNumber(const Value& value) {
    return std::holds_alternative<bool>(value) || std::holds_alternative<std::int64_t>(value) ||
           std::holds_alternative<float>(value) || std::holds_alternative<double>(value) ||
           std::holds_alternative<Currency>(value) || std::holds_alternative<Decimal>(value);
}

double numberOf(const Value& value) {
    if (const auto* truth = std::get_if<bool>(&value)) {
        return *truth ? -1 : 0;
    }
    if (const auto* date = std::get_if<DateTime>(&value)) {
        return date->toOleDate();
    }
    if (std::holds_alternative<float>(value)) { // as it is written, not as it is kept
        return toDouble(toText(value));
    }
    return toDouble(value);
}

int compareValues(const Value& left, const Value& right) {
    if (isNull(left) || isNull(right)) {
        return static_cast<int>(isNull(right)) - static_cast<int>(isNull(left));
    }
    if (isNumber(left) && isNumber(right)) {
        const double first = numberOf(left), second = numberOf(right);
        return first < second ? -1 : first > second ? 1 : 0;
    }
    if (isNumber(left) != isNumber(right) && !std::holds_alternative<Bytes>(left) &&
        !std::holds_alternative<Bytes>(right)) { // the number of a field and that of a list of texts
        const Text first = toText(left), second = toText(right);
        return first < second ? -1 : first > second ? 1 : 0;
    }
    const auto* firstText = std::get_if<Text>(&left);
    const auto* secondText = std::get_if<Text>(&right);
    if (firstText != nullptr && secondText != nullptr) {
        const Text first = upperCase(*firstText), second = upperCase(*secondText);
        return first < second ? -1 : first > second ? 1 : 0;
    }
    return left < right ? -1 : right < left ? 1 : 0;
}

} // namespace relvane::formview
