#include <gtest/gtest.h>

#include "formview/expression.h"

namespace relvane::formview {
namespace {

// "?" for what is not understood, "-" for Null. The record has a = 7, price = 12.50, name "Tofu", day 1998-04-15, and
// nothing that is Null but "none".
std::string computed(TextView text) {
    const auto expression = parseExpression(text);
    if (!expression) {
        return "?";
    }
    Scope scope;
    scope.field = [](const FieldName& name) -> Value {
        const Text& field = name.field;
        return field == u"a"       ? Value(std::int64_t{7})
               : field == u"price" ? Value(Currency{125000})
               : field == u"name"  ? Value(Text(u"Tofu"))
               : field == u"day"   ? Value(DateTime{1998, 4, 15, 0, 0, 0})
                                   : Value(Null{});
    };
    scope.inAllRecords = [](const Expression&) {
        return std::vector<Value>{std::int64_t{3}, Null{}, std::int64_t{1}, std::int64_t{2}};
    };
    const Value value = valueOf(*expression, scope);
    return std::holds_alternative<Null>(value) ? "-" : toUtf8(toText(value));
}

struct Case {
    TextView text;
    const char* expected;
};

class Computed : public testing::TestWithParam<Case> {};

TEST_P(Computed, AsInAccess) {
    EXPECT_EQ(computed(GetParam().text), GetParam().expected) << toUtf8(GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Operators, Computed,
                         testing::Values(Case{u"1+2*3", "7"}, Case{u"(1+2)*3", "9"}, Case{u"-2^2", "-4"},
                                         Case{u"2^-1", "?"}, Case{u"7\\2", "3"}, Case{u"7 Mod 4", "3"},
                                         Case{u"10-3-2", "5"}, Case{u"12/4/3", "1"}, Case{u"0.1+0.2", "0.3"},
                                         Case{u"[price]*[a]", "87.5"}, Case{u"1/0", "-"},
                                         Case{u"5 Mod 0", "-"}, Case{u"9e300*9e300", "-"},
                                         Case{u"name+\"!\"", "Tofu!"}, Case{u"name & a", "Tofu7"},
                                         Case{u"none & a", "7"}, Case{u"none+a", "-"}, Case{u"name*2", "-"},
                                         Case{u"day+1", "1998-04-16 00:00:00"},
                                         Case{u"day-#4/1/1998#", "14"}));
INSTANTIATE_TEST_SUITE_P(
    Conditions, Computed,
    testing::Values(Case{u"1<2", "True"}, Case{u"a=7 And name=\"TOFU\"", "True"}, Case{u"Not a>7", "True"},
                    Case{u"none=1", "-"}, Case{u"none=1 Or a=7", "True"}, Case{u"none=1 And a=8", "False"},
                    Case{u"none Is Null", "True"}, Case{u"a Is Not Null", "True"},
                    Case{u"a Between 7 And 9", "True"}, Case{u"a Not Between 8 And 9", "True"},
                    Case{u"a In (1,7)", "True"}, Case{u"a Not In (1,7)", "False"},
                    Case{u"name Like \"t*u\"", "True"}, Case{u"name Like \"?of[a-u]\"", "True"},
                    Case{u"name Like \"[!t]*\"", "False"}, Case{u"\"a1\" Like \"a#\"", "True"},
                    Case{u"name Like \"*x*\"", "False"}, Case{u"name Like \"[\"", "False"}));
INSTANTIATE_TEST_SUITE_P(Functions, Computed,
                         testing::Values(Case{u"IIf(IsNull(none),\"no\",none)", "no"}, Case{u"Nz(none)", "0"},
                                         Case{u"Nz(none,\"x\")", "x"}, Case{u"CCur(1.00005)", "1"},
                                         Case{u"CCur(1.00015)", "1.0002"}, Case{u"CLng(2.5)", "2"},
                                         Case{u"Int(-1.5)", "-2"}, Case{u"Fix(-1.5)", "-1"},
                                         Case{u"Round(2.345,2)", "2.34"}, Case{u"Left(name,2)", "To"},
                                         Case{u"Right(name,9)", "Tofu"}, Case{u"Mid(name,2,2)", "of"},
                                         Case{u"Mid(name,0)", "-"}, Case{u"Left(name,-1)", "-"},
                                         Case{u"Len(Trim(\" a \"))", "1"}, Case{u"InStr(name,\"f\")", "3"},
                                         Case{u"Year(day)", "1998"}, Case{u"DatePart(\"q\",day)", "2"},
                                         Case{u"Format(day,\"yyyy/mm\")", "1998/04"},
                                         Case{u"Format(price,\"0.0\")", "12.5"}, Case{u"Sum(a)", "6"},
                                         Case{u"Avg(a)", "2"}, Case{u"Count(*)", "3"}, Case{u"Min(a)", "1"},
                                         Case{u"Max(a)+First(a)+Last(a)", "8"}, Case{u"1+Sum(a)*2", "13"}));
INSTANTIATE_TEST_SUITE_P(NotUnderstood, Computed,
                         testing::Values(Case{u"MyFunction(1)", "?"}, Case{u"Date()", "?"}, Case{u"1+", "?"},
                                         Case{u"(1", "?"}, Case{u"Left(name)", "?"}, Case{u"Forms!f!x", "?"},
                                         Case{u"a!b!c!d", "?"}, Case{u"1 2", "?"}, Case{u"", "?"},
                                         Case{u"a Between 1", "?"}, Case{u"a Is 1", "?"},
                                         Case{u"a In 1", "?"}));

TEST(Expressions, MoneyStaysMoneyUnlessWithADouble) {
    Scope scope;
    scope.field = [](const FieldName&) { return Value(Currency{125000}); };
    const auto isMoney = [&](TextView text) {
        return std::holds_alternative<Currency>(valueOf(*parseExpression(text), scope));
    };
    EXPECT_TRUE(isMoney(u"price*3"));
    EXPECT_TRUE(isMoney(u"-price+price"));
    EXPECT_TRUE(isMoney(u"CCur(price*1.5)*100"));
    EXPECT_FALSE(isMoney(u"price*1.5"));
    EXPECT_FALSE(isMoney(u"price/3"));
}

TEST(Expressions, AControlOfASubformIsNamedByItsPath) {
    const auto expression = parseExpression(u"[the lines].[Form]![total]");
    ASSERT_TRUE(expression && expression->isField());
    EXPECT_TRUE(expression->field->inSubform);
    EXPECT_EQ(expression->field->table, u"the lines");
    EXPECT_EQ(expression->field->field, u"total");
}

TEST(Expressions, DeepAndLongOnesAreRefused) {
    const auto repeated = [](TextView text, std::size_t times) {
        Text all;
        for (std::size_t i = 0; i < times; ++i) {
            all += text;
        }
        return all;
    };
    for (const TextView each : {u"(", u"-", u"Not ", u"Nz(", u"1+", u"1 & ", u"2^"}) {
        EXPECT_FALSE(parseExpression(repeated(each, 100'000) + u"1")) << toUtf8(each);
    }
    EXPECT_EQ(computed(repeated(u"1+", 500) + u"1"), "501");
}

// Any tokens in any order: understood or not, computed or Null, and no harm done.
TEST(Expressions, TokensInAnyOrderDoNoHarm) {
    constexpr TextView words[] = {
        u"a",   u"[name]", u"\"x\"", u"1",    u"2.5",  u"#1/2/1998#", u"(",       u")",       u",",
        u"+",   u"-",      u"*",     u"/",    u"\\",   u"^",          u"&",       u"=",       u"<>",
        u"And", u"Or",     u"Not",   u"Is",   u"Null", u"Like",       u"In",      u"Between", u"Mod",
        u"!",   u".",      u"Form",  u"Sum(", u"IIf(", u"Mid(",       u"Format(", u"Nz(",     u"CCur("};
    std::uint32_t random = 1;
    std::size_t understood = 0;
    for (int i = 0; i < 30'000; ++i) {
        Text text;
        for (int length = 1 + i % 12; length > 0; --length) {
            random = random * 1664525 + 1013904223;
            text += Text(words[(random >> 8) % std::size(words)]) + u" ";
        }
        understood += computed(text) == "?" ? 0 : 1;
    }
    EXPECT_GT(understood, 100u);
}

} // namespace
} // namespace relvane::formview
