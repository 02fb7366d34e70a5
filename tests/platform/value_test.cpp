#include "platform/value.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"

namespace relvane {
namespace {

TEST(Value, NullIsNeitherEmptyNorNotEmpty) {
    EXPECT_FALSE(isEmptyText(Null{}));
    EXPECT_FALSE(isNotEmptyText(Null{}));
}

TEST(Value, ZeroAndFalseAreNotEmpty) {
    EXPECT_TRUE(isNotEmptyText(std::int64_t{0}));
    EXPECT_TRUE(isNotEmptyText(false));
    EXPECT_TRUE(isEmptyText(Text()));
    EXPECT_TRUE(isNotEmptyText(Text(u" ")));
}

TEST(Value, NumbersAsTextHaveTheirShortestForm) {
    EXPECT_EQ(toText(Value(1.764)), u"1.764");
    EXPECT_EQ(toText(Value(0.5)), u"0.5");
    EXPECT_EQ(toText(Value(10.0)), u"10");
    EXPECT_EQ(toText(Value(-0.0)), u"0");
    EXPECT_EQ(toText(Value(0.1f)), u"0.1");
    EXPECT_EQ(toText(Value(Currency{17640})), u"1.764");
    EXPECT_EQ(toText(Value(Currency{-5000})), u"-0.5");
    EXPECT_EQ(toText(Value(true)), u"True");
}

TEST(Value, OleDatesAreRoundedToTheSecond) {
    EXPECT_EQ(DateTime::fromOleDate(0)->text(), u"1899-12-30 00:00:00");
    EXPECT_EQ(DateTime::fromOleDate(35685.75)->text(), u"1997-09-12 18:00:00");
    EXPECT_EQ(DateTime::fromOleDate(1.999999999)->text(), u"1900-01-01 00:00:00");
    EXPECT_EQ(DateTime::fromOleDate(-1.25)->text(), u"1899-12-29 06:00:00");
    EXPECT_FALSE(DateTime::fromOleDate(1e300));
    EXPECT_FALSE(DateTime::fromOleDate(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(DateTime::fromOleDate(2958466.0));
}

TEST(Value, DateTextReadsBack) {
    const DateTime date{2000, 2, 29, 23, 59, 58};
    EXPECT_EQ(DateTime::fromText(date.text()), date);
    EXPECT_EQ(DateTime::fromOleDate(date.toOleDate()), date);
    EXPECT_FALSE(DateTime::fromText(u"1900-02-29 00:00:00"));
}

TEST(Value, ConversionErrorsHaveTheirNumbers) {
    const auto numberOf = [](const auto& action) { return skipErrors([&] { action(); }); };
    EXPECT_EQ(numberOf([] { toLong(Text(u"abc")); }), 13);
    EXPECT_EQ(numberOf([] { toInteger(std::int64_t{40000}); }), 6);
    EXPECT_EQ(numberOf([] { toBoolean(Text(u"Northwind")); }), 13);
    EXPECT_TRUE(toBoolean(Text(u"tRUE")));
    EXPECT_TRUE(toBoolean(Text(u"2")));
    EXPECT_EQ(toInteger(2.5), 2);
    EXPECT_EQ(toInteger(3.5), 4);
}

TEST(RunTimeError, CounterOverflowIsErrorSixAndKeepsTheCounter) {
    std::int16_t counter = 32767;
    EXPECT_EQ(skipErrors([&] { increment(counter); }), 6);
    EXPECT_EQ(counter, 32767);
}

TEST(Text, MalformedUtf8BecomesReplacementCharacters) {
    EXPECT_EQ(fromUtf8("a\xFF\xE3\x81z"), u"a\xFFFD\xFFFD\xFFFDz");
    EXPECT_EQ(toUtf8(fromUtf8("テスト\U00020BB7")), "テスト\U00020BB7");
}

TEST(Text, CapitalsAreOneCharacterForOne) {
    EXPECT_EQ(upperCase(u"autoExec"), u"AUTOEXEC");
    EXPECT_EQ(upperCase(u"ａｚжλ"), u"ＡＺЖΛ");
    EXPECT_EQ(upperCase(u"ß"), u"ß");
}

} // namespace
} // namespace relvane
