// The language of the definitions: what it refuses, and where it says so.
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::HasSubstr;

std::string complaintOf(const std::string& json) {
    try {
        reports::parseDefinition(u"R_Test", text(json));
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.is(ErrorNumber::DatabaseDamaged));
        return toUtf8(error.description());
    }
    return "accepted";
}

TEST(Definition, IsReadWhole) {
    const auto report = reports::parseDefinition(u"R_RvObjectAll", deliveredDefinition("R_RvObjectAll"));
    EXPECT_EQ(report.orientation, reports::Orientation::Lying);
    EXPECT_EQ(report.source, u"T_RvObject");
    EXPECT_EQ(report.sort.size(), 2U);
    EXPECT_EQ(report.groups.size(), 1U);
    EXPECT_EQ(report.tables.front().columns.size(), 6U);
    EXPECT_EQ(report.counters.size(), 7U);
    // A field that is named twice is read once.
    EXPECT_EQ(std::count(report.fields.begin(), report.fields.end(), Text(u"Class")), 1);
}

TEST(Definition, KnowsKanaOrderAndDescendingKeys) {
    const auto report = reports::parseDefinition(u"R", uR"({ "source": "V",
        "sort": [ { "field": "Name", "kana": true }, { "field": "Date", "descending": true } ],
        "tables": [ { "columns": [ { "text": "[Name]" } ] } ] })");
    ASSERT_EQ(report.sort.size(), 2U);
    EXPECT_EQ(report.sort[0].collation, Collation::Kana);
    EXPECT_TRUE(report.sort[1].descending);
}

TEST(Definition, SaysWhereItIsWrong) {
    const std::string rest = R"("tables": [ { "columns": [ { "text": "[a]" } ] } ] })";
    EXPECT_THAT(complaintOf("{ "), HasSubstr("R_Test: no JSON"));
    EXPECT_THAT(complaintOf("{ " + rest), HasSubstr("R_Test.source: is missing"));
    EXPECT_THAT(complaintOf(R"({ "source": "V" })"), HasSubstr("either tables or placed"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "colour": "red", )" + rest),
                HasSubstr("R_Test.colour: is not known"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "page": "round", )" + rest),
                HasSubstr("R_Test.page: one of upright, lying"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "columns": 3, )" + rest), HasSubstr("a number from 1 to 2"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "tables": [ { "columns": [ { "text": "[a" } ] } ] })"),
                HasSubstr("R_Test.tables[0].columns[0].text: a bracket is not closed"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "tables": [ { "columns": [ { "text": "[a|b]" } ] } ] })"),
                HasSubstr("\"b\" is no table of words"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "tables": [ { "columns": [ { "text": "[a:b]" } ] } ] })"),
                HasSubstr("\"b\" is no format"));
    EXPECT_THAT(
        complaintOf(
            R"({ "source": "V", "counters": { "n": {} }, "foot": [ { "counter": "n", "format": "b" } ], )" +
            rest),
        HasSubstr("R_Test.foot[0].format: \"b\" is no format"));
    EXPECT_THAT(
        complaintOf(
            R"({ "source": "V", "tables": [ { "when": ["a", 3], "columns": [ { "text": "[a]" } ] } ] })"),
        HasSubstr("R_Test.tables[0].when: a field, or a field with its value"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "tables": [ { "columns": [ { "text": "[#n]" } ] } ] })"),
                HasSubstr("there is no counter \"n\""));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "groups": [ { "name": "g" } ], )" + rest),
                HasSubstr("R_Test.groups[0].by"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "counters": { "n": { "groups": "g" } }, )" + rest),
                HasSubstr("R_Test.counters.n.groups: there is no such group"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "tables": [ { "columns": [] } ] })"),
                HasSubstr("a list of columns"));
    EXPECT_THAT(complaintOf(R"({ "source": "V", "placed": [ { "at": [1, 2, 3], "text": "x" } ] })"),
                HasSubstr("R_Test.placed[0].at: 4 numbers"));
    EXPECT_THAT(
        complaintOf(
            R"({ "source": "V", "groups": [ { "name": "g", "by": ["a"] } ], "tables": [ { "within": "g", "columns": [ { "text": "[a]" } ] } ] })"),
        HasSubstr("R_Test.tables[0].within: there is no such group with columns"));
    EXPECT_THAT(
        complaintOf(
            R"({ "source": "V", "tables": [ { "columns": [ { "text": "[a]", "total": "[#n:tally]" } ] } ] })"),
        HasSubstr("R_Test.tables[0].columns[0].total: there is no counter \"n\""));
    EXPECT_THAT(
        complaintOf(R"({ "source": "V", "tables": [ { "columns": [ { "text": "[a]", "source": 3 } ] } ] })"),
        HasSubstr("R_Test.tables[0].columns[0].source: a field, or a field with its value"));
    EXPECT_THAT(complaintOf("[1, 2]"), HasSubstr("R_Test"));
}

TEST(Definition, RefusesColumnsWiderThanThePage) {
    auto store = emptyStore();
    store->tables[u"V"].fields = {u"a"};
    const auto wide = reports::parseDefinition(u"R_Test", uR"({ "source": "V", "tables": [ { "columns": [
        { "text": "[a]", "width": 150 }, { "text": "[a]", "width": 150 } ] } ] })");
    EXPECT_THROW(reports::ReportDocument(store, wide, printed), RunTimeError);
}

TEST(Definition, OfAMissingFieldOrTableIsAnError) {
    auto store = emptyStore();
    store->tables[u"V"].fields = {u"b"};
    const auto report = reports::parseDefinition(
        u"R_Test", uR"({ "source": "V", "tables": [ { "columns": [ { "text": "[a]" } ] } ] })");
    try {
        reports::ReportDocument(store, report, printed);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3265);
        EXPECT_THAT(toUtf8(error.description()), HasSubstr("V.a"));
    }
    store->tables.erase(u"V");
    try {
        reports::ReportDocument(store, report, printed);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3078);
    }
}

// Whatever stands in a definition: it is refused in words, or its pages come out.
TEST(Definition, SurvivesMutations) {
    std::mt19937 random(97);
    const auto pick = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    auto store = emptyStore();
    addObjects(*store, 12);
    addLongestObjects(*store);
    setCover(*store, text("題名"), text("12年度・ｼｽﾃﾑ"), text("社"), u"", u"");
    const char* const names[] = {"R_RvObjectAll", "R_RvHyousi",  "R_RvHyousiH",
                                 "R_RvHyousiW",   "R_RvRepCntl", "R_RvControlCount"};
    for (const char* name : {"R_RvRepCntl", "R_RvControlCount"}) {
        const auto report = reports::parseDefinition(text(name), deliveredDefinition(name));
        MemoryTable& source = store->tables[report.source];
        source.fields = report.fields;
        for (std::int64_t row = 0; row < 60; ++row) {
            std::vector<Value> values;
            for (std::size_t field = 0; field < report.fields.size(); ++field) {
                values.push_back(field % 3 == 0   ? Value(row / 5)
                                 : row % 7 == 0   ? Value(Null{})
                                 : field % 2 == 0 ? Value(text("SELECT 受注"))
                                                  : Value(row));
            }
            source.rows.push_back(std::move(values));
        }
    }
    const Text pieces[] = {u"0", u"9", u"-",    u"1e9",  u"\"",      u"{", u"}", u"[",
                           u"]", u",", u"null", u"true", u"[Class]", u"5", u"."};
    const Text digits[] = {u"0", u"1", u"5", u"9", u"77", u"0.1", u"-3"};
    int refused = 0, laidOut = 0;
    for (int i = 0; i < 1000; ++i) {
        Text json = deliveredDefinition(names[static_cast<std::size_t>(i) / 2 % std::size(names)]);
        for (std::size_t change = pick(3) + 1; change-- > 0;) {
            const std::size_t at = pick(json.size());
            const Text& piece = pieces[pick(std::size(pieces))];
            if (i % 2 == 0) { // numbers alone: most of these are still definitions
                const std::size_t digit = json.find_first_of(u"0123456789", at);
                if (digit != Text::npos) {
                    json.replace(digit, 1, digits[pick(std::size(digits))]);
                }
                continue;
            }
            switch (pick(3)) {
            case 0:
                json.erase(at, pick(12) + 1);
                break;
            case 1:
                json.insert(at, piece);
                break;
            default:
                json.replace(at, 1, piece);
            }
        }
        try {
            const reports::ReportDocument document(store, reports::parseDefinition(u"R_Test", json), printed);
            EXPECT_LT(document.pageCount(), 500);
            document.search(u"題", 0, 2);
            ++laidOut;
        } catch (const RunTimeError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 50);
    EXPECT_GT(laidOut, 50);
}

TEST(Open, FindsAReportByNameWithoutRegardToCase) {
    auto store = emptyStore();
    EXPECT_EQ(reports::open(store, u"r_rvobjectall", printed).name(), u"R_RvObjectAll");
}

TEST(Open, DoesNotKnowOtherReports) {
    try {
        reports::open(emptyStore(), u"R_RvNothing", printed);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 2103);
        EXPECT_THAT(toUtf8(error.description()), HasSubstr("R_RvNothing"));
    }
}

} // namespace
} // namespace relvane::test
