// The text format of descriptions.

#include "sample_builder/description.h"

#include <gtest/gtest.h>

#include "sample_builder/database_writer.h"
#include "support/samples.h"

namespace relvane::samples {
namespace {

std::string errorOf(std::string_view description) {
    try {
        parseDescription(description);
        return "no error";
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

TEST(Description, QuotedTextsHoldBlanksQuotesAndLineEnds) {
    const DatabaseSpec spec =
        parseDescription("table t\n column a text 20\n row \"x \"\"y\"\" #z\"\n row \"1↵2\"\n");
    EXPECT_EQ(spec.tables.at(0).rows.at(0).values, std::vector<Value>{u"x \"y\" #z"});
    EXPECT_EQ(spec.tables.at(0).rows.at(1).values, std::vector<Value>{u"1\r\n2"});
}

TEST(Description, PicturesOfControlCharactersStandForThem) {
    const DatabaseSpec spec = parseDescription("table t\n column a text 20\n row \"a␉b␁␟␠\"\n row ␉\n");
    EXPECT_EQ(spec.tables.at(0).rows.at(0).values, std::vector<Value>{u"a\tb\u0001\u001F␠"});
    EXPECT_EQ(spec.tables.at(0).rows.at(1).values, std::vector<Value>{u"␉"}) << "in quotes alone";
}

TEST(Description, CommentsEmptyLinesAndWindowsLineEndsMeanNothing) {
    const DatabaseSpec spec = parseDescription("# first\r\n\r\ntable t # second\r\n\tcolumn a long\r\n");
    EXPECT_EQ(spec.tables.at(0).name, u"t");
    EXPECT_EQ(spec.tables.at(0).columns.at(0).name, u"a");
}

TEST(Description, RepeatedTextsAndBytesAreWrittenOut) {
    const DatabaseSpec spec =
        parseDescription("table t\n column a memo\n column b ole\n row \"ab\"*3 00FF*2\n");
    EXPECT_EQ(spec.tables.at(0).rows.at(0).values, (std::vector<Value>{u"ababab", Bytes{0, 255, 0, 255}}));
}

TEST(Description, ValuesFollowTheTypeOfTheirColumn) {
    const DatabaseSpec spec = parseDescription(
        "table t\n column a boolean\n column b currency\n column c date\n column d guid\n column e text 9\n"
        " row yes -12.5 1998-04-01T09:30:15 {00112233-4455-6677-8899-AABBCCDDEEFF} 007\n row - - - - "
        "\"-\"\n");
    const Guid guid{
        {0x33, 0x22, 0x11, 0x00, 0x55, 0x44, 0x77, 0x66, 0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF}};
    EXPECT_EQ(spec.tables.at(0).rows.at(0).values,
              (std::vector<Value>{true, Currency{-125'000}, DateTime{1998, 4, 1, 9, 30, 15}, guid, u"007"}));
    EXPECT_EQ(spec.tables.at(0).rows.at(1).values,
              (std::vector<Value>{Null{}, Null{}, Null{}, Null{}, u"-"}));
}

TEST(Description, DescriptionBelongsToTheTableBeforeItsColumnsAndThenToTheColumn) {
    const DatabaseSpec spec =
        parseDescription("table t\n description \"of t\"\n column a long\n description \"of a\"\n");
    EXPECT_EQ(spec.tables.at(0).properties.at(0).value, Value(u"of t"));
    EXPECT_EQ(spec.tables.at(0).columns.at(0).properties.at(0).value, Value(u"of a"));
}

TEST(Description, QueryLinesBecomeRowsOfTheirAttribute) {
    const DatabaseSpec spec =
        parseDescription("query q append\n target t\n options distinct top 5 percent\n"
                         " from a b\n field x into y values\n order z descending\n hidden\n");
    const QuerySpec& query = spec.queries.at(0);
    EXPECT_EQ(query.flags, queryAppend | queryHidden);
    ASSERT_EQ(query.rows.size(), 5u);
    EXPECT_EQ(query.rows[0].flag, 3);
    EXPECT_EQ(query.rows[0].name1, u"t");
    EXPECT_EQ(query.rows[1].flag, 2 | 0x10 | 0x20);
    EXPECT_EQ(query.rows[1].name1, u"5");
    EXPECT_EQ(query.rows[2].name2, u"b");
    EXPECT_EQ(query.rows[3].name2, u"y");
    EXPECT_EQ(query.rows[3].flag, -0x8000);
    EXPECT_EQ(query.rows[4].name1, u"D");
}

TEST(Description, MistakesNameTheirLine) {
    EXPECT_EQ(errorOf("database\n nonsense 1\n"), "line 2: not understood here: nonsense");
    EXPECT_EQ(errorOf("table t\n column a strange\n"), "line 2: no type: strange");
    EXPECT_EQ(errorOf("table t\n column a long\n row x\n"), "line 3: no value of this column's type: x");
    EXPECT_EQ(errorOf("table t\n column a long\n row 1 2\n"), "line 3: not understood: 2");
    EXPECT_EQ(errorOf("table \"t\n"), "line 1: a quoted text has no end");
    EXPECT_EQ(errorOf("table \"t\"x\n"), "line 1: a blank is missing behind a quoted text");
    EXPECT_EQ(errorOf("form\n"), "line 1: missing: a name");
    EXPECT_EQ(errorOf("query q dance\n"), "line 1: no kind of query: dance");
    EXPECT_EQ(errorOf("query q select\n join outer a b c\n"), "line 2: a join is inner, left or right");
    EXPECT_EQ(errorOf("table t\n hidden\n created 1998-13-01\n"), "line 3: no date: 1998-13-01");
    EXPECT_EQ(errorOf("row 1\n"), "line 1: not understood here: row");
}

TEST(Description, SameDescriptionGivesTheSameBytes) {
    const auto path = test::sourceFolder() / "samples" / "juchu.txt";
    EXPECT_TRUE(databaseBytes(readDescription(path)) == databaseBytes(readDescription(path)));
}

} // namespace
} // namespace relvane::samples
