// Files of later versions on the panel: their forms, reports and macros give rows as those of Access 97 do.
#include <set>

#include <gtest/gtest.h>

#include "real_program.h"

namespace relvane {
namespace {

using test::RealProgram;
using test::StoredRow;

struct Expected {
    const char* file;
    std::size_t forms, reports;
};
constexpr Expected expectedFiles[] = {{"northwind-2000-ja.mdb", 22, 14},
                                      {"formPropTest.accdb", 4, 0},
                                      {"vbaV2000.mdb", 1, 0},
                                      {"vbaV2003.mdb", 1, 0},
                                      {"vbaV2007.accdb", 1, 0}};

// The rows of one form.
std::vector<StoredRow> itemsOf(RealProgram& program, TextView form) {
    Value number;
    for (const StoredRow& row : program.rows(u"T_RvFrmInfo")) {
        if (row.at(u"FormName") == Value(Text(form))) {
            number = row.at(u"objectNo");
        }
    }
    std::vector<StoredRow> items = program.rows(u"T_RvFrmItem");
    std::erase_if(items, [&](const StoredRow& row) { return row.at(u"objectNo") != number; });
    return items;
}

bool hasValue(const std::vector<StoredRow>& rows, TextView text) {
    for (const StoredRow& row : rows) {
        for (const auto& [field, value] : row) {
            if (value == Value(Text(text))) {
                return true;
            }
        }
    }
    return false;
}

TEST(NewerFiles, FormsReportsAndCountsAreListedWithoutABox) {
    for (const Expected& expected : expectedFiles) {
        const auto target = test::realSample(std::string("later/") + expected.file);
        if (!target) {
            return;
        }
        SCOPED_TRACE(expected.file);
        const std::string before = test::bytesOf(*target);
        RealProgram program;
        ASSERT_TRUE(program.select(*target));
        program.dialogs.boxes.clear();
        for (const int option : {0, 1}) {
            program.form().optForm.choose(option);
            EXPECT_TRUE(program.press(program.form().cmdForm));
            EXPECT_EQ(program.rows(u"T_RvFrmInfo").size(), expected.forms);
            if (expected.reports > 0) {
                program.form().optReport.choose(option);
                EXPECT_TRUE(program.press(program.form().cmdReport));
                EXPECT_EQ(program.rows(u"T_RvRepInfo").size(), expected.reports);
            }
        }
        program.form().optControl.choose(2);
        EXPECT_TRUE(program.press(program.form().cmdControl));
        EXPECT_EQ(program.rows(u"T_RvControlCount").size(), expected.forms + expected.reports);
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
        EXPECT_EQ(test::bytesOf(*target), before);
    }
}

// Their marks stand among other flags, which those of Access 97 do not.
TEST(NewerFiles, TablesOfAccessItselfAreNotListed) {
    for (const Expected& expected : expectedFiles) {
        const auto target = test::realSample(std::string("later/") + expected.file);
        if (!target) {
            return;
        }
        SCOPED_TRACE(expected.file);
        RealProgram program;
        ASSERT_TRUE(program.select(*target));
        program.form().optTable.choose(2);
        EXPECT_TRUE(program.press(program.form().cmdTable));
        EXPECT_TRUE(program.press(program.form().cmdObject));
        for (const auto& [table, field] :
             {std::pair{u"T_RvTblInfo", u"TableName"}, {u"T_RvObject", u"ObjectName"}}) {
            for (const StoredRow& row : program.rows(table)) {
                const Text name = toText(row.at(field));
                EXPECT_FALSE(name.starts_with(u"MSys") || name.starts_with(u"f_")) << toUtf8(name);
            }
        }
    }
}

TEST(NewerFiles, TheEventsOfAControlAreFoundAtTheirPlaces) {
    const auto target = test::realSample("later/formPropTest.accdb");
    if (!target) {
        return;
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*target));
    program.form().optForm.choose(1);
    ASSERT_TRUE(program.press(program.form().cmdForm));
    // A form with a button for each event, called after the one that it has.
    std::set<Text> buttons, events;
    for (const StoredRow& row : itemsOf(program, u"F_Buttons")) {
        if (row.at(u"PropertyValue") == Value(Text(u"[Event Procedure]"))) {
            buttons.insert(toText(row.at(u"Name")));
            events.insert(toText(row.at(u"PropertyName")));
        }
    }
    EXPECT_EQ(buttons.size(), 12u);
    EXPECT_EQ(events.size(), 12u);
    EXPECT_TRUE(buttons.contains(u"btn_KeyPress"));
    EXPECT_TRUE(hasValue(itemsOf(program, u"jp_フォーム_2"), u"=[単価]*[個数]"));
}

TEST(NewerFiles, MacrosAreListedFromTheirConversion) {
    const auto target = test::realSample("later/northwind-2000-ja.mdb");
    if (!target) {
        return;
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*target));
    program.dialogs.boxes.clear();
    program.form().optMacro.choose(1);
    ASSERT_TRUE(program.press(program.form().cmdMacro));
    std::set<Text> names;
    for (const StoredRow& row : program.rows(u"T_RvMacro")) {
        names.insert(toText(row.at(u"ObjectName")));
    }
    EXPECT_EQ(names.size(), 5u);
    EXPECT_TRUE(names.contains(u"得意先電話リスト")); // in UTF-16
    EXPECT_FALSE(program.rows(u"T_RvMacro2").empty());
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
}

} // namespace
} // namespace relvane
