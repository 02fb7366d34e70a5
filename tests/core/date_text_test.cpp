#include "core/date_text.h"

#include <random>

#include <gtest/gtest.h>

namespace relvane {
namespace {

const DateTime today{1997, 9, 12, 18, 0, 0};

Text read(TextView text) {
    const auto date = dateOf(text, today);
    return date ? date->text() : Text(u"none");
}

TEST(DateText, YearMonthAndDayWithAnySeparator) {
    EXPECT_EQ(read(u"1997/09/12"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"1997-9-12"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"1997.9.12"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u" 1997 / 9 / 12 "), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"1997年9月12日"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"１９９７／９／１２"), u"1997-09-12 00:00:00");
}

TEST(DateText, TwoDigitYearsBelongToTheCenturyAroundThem) {
    EXPECT_EQ(read(u"97/9/12"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"30/1/1"), u"1930-01-01 00:00:00");
    EXPECT_EQ(read(u"29/1/1"), u"2029-01-01 00:00:00");
    EXPECT_EQ(read(u"97年9月12日"), u"1997-09-12 00:00:00");
}

TEST(DateText, ErasByLetterAndName) {
    EXPECT_EQ(read(u"H9.9.12"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"h9/9/12"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"平成9年9月12日"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"平成元年1月8日"), u"1989-01-08 00:00:00");
    EXPECT_EQ(read(u"昭和64年1月7日"), u"1989-01-07 00:00:00");
    EXPECT_EQ(read(u"S45/3/1"), u"1970-03-01 00:00:00");
    EXPECT_EQ(read(u"令和6年5月1日"), u"2024-05-01 00:00:00");
}

TEST(DateText, PartsOfADate) {
    EXPECT_EQ(read(u"9/12"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"9月12日"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"1997/9"), u"1997-09-01 00:00:00");
    EXPECT_EQ(read(u"1997年9月"), u"1997-09-01 00:00:00");
    EXPECT_EQ(read(u"9/12/1997"), u"1997-09-12 00:00:00");
    EXPECT_EQ(read(u"30/12/1997"), u"1997-12-30 00:00:00");
}

TEST(DateText, TimeBehindTheDateOrAlone) {
    EXPECT_EQ(read(u"1997/9/12 18:30"), u"1997-09-12 18:30:00");
    EXPECT_EQ(read(u"1997/9/12 6:30:15 PM"), u"1997-09-12 18:30:15");
    EXPECT_EQ(read(u"1997年9月12日 午後6時30分"), u"1997-09-12 18:30:00");
    EXPECT_EQ(read(u"18:30"), u"1899-12-30 18:30:00");
    EXPECT_EQ(read(u"12:00 am"), u"1899-12-30 00:00:00");
}

TEST(DateText, AnyTextIsADateOrNone) {
    std::mt19937 random(1997);
    constexpr TextView pieces[] = {u"1997", u"9",    u"12",   u"/",  u"-",           u".",  u"年", u"月",
                                   u"日",   u"H",    u"平成", u"元", u":",           u"時", u"分", u"秒",
                                   u"PM",   u"午前", u" ",    u"0",  u"99999999999", u"　"};
    for (int round = 0; round < 20000; ++round) {
        Text text;
        for (auto i = random() % 10; i > 0; --i) {
            text += pieces[random() % std::size(pieces)];
        }
        if (const auto date = dateOf(text, today)) {
            EXPECT_EQ(DateTime::fromText(date->text()), date) << toUtf8(text);
        }
    }
}

TEST(DateText, WhatIsNoDate) {
    for (const TextView text : {u"", u"   ", u"未定", u"5", u"1997", u"1997/13/1", u"1997/2/30",
                                u"1997/9/12x", u"1997/9/", u"99999/1/1", u"25:00", u"10:60", u"H0/1/1",
                                u"平成", u"1997年9", u"//", u"1997/9/12 13:00 PM", u"12:"}) {
        EXPECT_EQ(read(text), u"none") << toUtf8(text);
    }
}

} // namespace
} // namespace relvane
