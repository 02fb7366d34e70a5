// One application in two formats, Access 97 and Access 2000: whatever is pressed on either, every table of the work
// database holds the same rows.
#include <gtest/gtest.h>

#include "core/panels.h"
#include "support/object_comparison.h"
#include "support/object_references.h"
#include "support/procedure_calls.h"
#include "support/specifications.h"
#include "support/variable_catalogue.h"
#include "support_program.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

using test::RealProgram;
using test::StoredRow;
using test::SupportProgram;

// What no two files have in common, and the format itself.
struct OwnField {
    TextView table, field;
    const char* why;
};
constexpr OwnField ownFields[] = {
    {u"T_DataBase", u"DbName", "each file lies in a folder of its own"},
    {u"T_DataBase", u"FileSize", "a page has twice as many bytes"},
    {u"T_DataBase", u"Version", "the format of the file"},
    {u"T_DataBase", u"AccessVersion", "the program that made it"},
    {u"T_RvFile", u"FileSize", "a page has twice as many bytes"},
    {u"T_RvFile", u"UpdateDate", "one was written after the other"},
    {u"T_RvFile", u"FilePath", "each file lies in a folder of its own"},
};

// A query within another has parentheses around it in the later format, and brackets with a point in the earlier one.
Value inOneSpelling(const Value& value) {
    const auto* text = std::get_if<Text>(&value);
    if (text == nullptr) {
        return value;
    }
    Text spelled = *text;
    constexpr std::pair<TextView, TextView> spellings[] = {{u"FROM [SELECT ", u"FROM (SELECT "},
                                                           {u"]. AS ", u")  AS "}};
    for (const auto& [earlier, later] : spellings) {
        for (std::size_t at = 0; (at = spelled.find(earlier, at)) != Text::npos; at += later.size()) {
            spelled.replace(at, earlier.size(), later);
        }
    }
    return spelled;
}

constexpr TextView tables[] = {
    u"T_DataBase",    u"T_RvObject",   u"T_RvTblInfo",    u"T_RvTblItem",       u"T_RvIndex",
    u"T_RvQeryInfo",  u"T_RvQeryItem", u"T_RvFrmInfo",    u"T_RvFrmItem",       u"T_RvRepInfo",
    u"T_RvRepItem",   u"T_RvRepGrp",   u"T_RvModule",     u"T_RvProcName",      u"T_RvDimCall",
    u"T_RvProcCount", u"T_RvMacro",    u"T_RvMacro2",     u"T_RvControlCount",  u"T_RvFile",
    u"T_RvComment",   u"T_RvHensu",    u"T_RvLinkObject", u"T_RvLinkModule",    u"T_RvTeigi",
    u"T_RvTeigiItem", u"T_RvSaveFlag", u"T_RvSaveObject", u"T_RvSaveObjectOld", u"T_RvHyousi",
    u"T_RvTitle",
};

bool isOwn(TextView table, TextView field) {
    return std::ranges::any_of(ownFields,
                               [&](const OwnField& own) { return own.table == table && own.field == field; });
}

std::string shown(const StoredRow& row) {
    std::string line;
    for (const auto& [field, value] : row) {
        line += toUtf8(field + u"=" + (std::holds_alternative<Null>(value) ? u"Null" : toText(value))) + " ";
    }
    return line;
}

// The application in one format, in a folder of its own with the database to which it links.
class OneFormat {
public:
    explicit OneFormat(const char* suffix) {
        for (const char* name : {"juchu", "zaiko"}) {
            fs::copy_file(test::ownSample(std::string(name) + suffix + ".mdb"),
                          folder / (std::string(name) + ".mdb"));
        }
    }

    test::TemporaryFolder folder;
    SupportProgram program{{LinkMapping{u"C:\\業務", folder.path()}}};
};

class TwoFormats : public testing::Test {
protected:
    void SetUp() override {
        for (OneFormat* each : {&access97, &access2000}) {
            ASSERT_TRUE(each->program.select(each->folder / "juchu.mdb"))
                << toUtf8(each->program.dialogs.lastText());
        }
        compare("the selection");
    }

    // Does the same with both; what the person is told and what is listed must not differ.
    template <class Action>
    void doBoth(const std::string& what, Action action, std::span<const TextView> compared = tables) {
        const bool goesOn = action(access97);
        EXPECT_EQ(action(access2000), goesOn) << what;
        compare(what, compared);
    }
    void run(const std::string& what, void (*command)(FrmSien&)) {
        doBoth(what, [&](OneFormat& each) { return each.program.run(command); });
    }

    std::size_t rowCount(TextView table) { return access97.program.rows(table).size(); }

    OneFormat access97{""}, access2000{"2000"};

private:
    void compare(const std::string& what, std::span<const TextView> compared = tables) {
        SCOPED_TRACE(what);
        EXPECT_EQ(access97.program.dialogs.boxes.size(), access2000.program.dialogs.boxes.size());
        EXPECT_EQ(toUtf8(access97.program.dialogs.lastText()), toUtf8(access2000.program.dialogs.lastText()));
        for (const TextView table : compared) {
            const auto left = access97.program.rows(table), right = access2000.program.rows(table);
            ASSERT_EQ(left.size(), right.size()) << toUtf8(table);
            for (std::size_t i = 0; i < left.size(); ++i) {
                compareRow(table, left[i], right[i]);
            }
        }
    }
    static void compareRow(TextView table, const StoredRow& left, const StoredRow& right) {
        for (const auto& [field, value] : left) {
            if (!isOwn(table, field)) {
                ASSERT_TRUE(inOneSpelling(value) == right.at(field))
                    << toUtf8(table) << "." << toUtf8(field) << "\n 97:   " << shown(left)
                    << "\n 2000: " << shown(right);
            }
        }
    }
};

// All panels with their first option, then all with their second, and so on: each has tables of its own.
bool analyseWithOption(FrmRelvane& form, RealProgram& program, int option) {
    for (const Panel& panel : panels()) {
        OptionGroup& options = form.*panel.options;
        options.choose(std::min(option, options.count() - 1));
        if (!program.press(form.*panel.action)) {
            return false;
        }
    }
    return program.press(form.cmdComment);
}

TEST_F(TwoFormats, EveryPanelGivesTheSameRowsInAllItsOptions) {
    int mostOptions = 0;
    for (const Panel& panel : panels()) {
        mostOptions = std::max(mostOptions, (access97.program.form().*panel.options).count());
    }
    for (int option = 0; option < mostOptions; ++option) {
        doBoth("option " + std::to_string(option + 1),
               [&](OneFormat& each) { return analyseWithOption(each.program.form(), each.program, option); });
    }
    for (const TextView table :
         {u"T_RvTblItem", u"T_RvIndex", u"T_RvQeryItem", u"T_RvFrmItem", u"T_RvRepItem", u"T_RvRepGrp",
          u"T_RvModule", u"T_RvProcName", u"T_RvProcCount", u"T_RvMacro", u"T_RvControlCount", u"T_RvFile",
          u"T_RvComment"}) {
        EXPECT_GT(rowCount(table), 0u) << toUtf8(table);
    }
}

TEST_F(TwoFormats, DeveloperSupportGivesTheSameRows) {
    run("preparation", cmdSyoki_Click);
    doBoth("tables", [](OneFormat& each) { return each.program.press(each.program.form().cmdTable); });
    for (const StoredRow& row : access97.program.rows(u"T_RvTblInfo")) {
        const Text table = toText(row.at(u"TableName"));
        constexpr TextView written[] = {u"T_RvLinkObject"};
        doBoth(
            "usage of " + toUtf8(table), [&](OneFormat& each) { return each.program.findUsage(table); },
            written);
    }
    run("references of forms", cmdLinkForm_Click);
    EXPECT_GT(rowCount(u"T_RvLinkObject"), 0u);
    run("references of reports", cmdLinkReport_Click);
    EXPECT_GT(rowCount(u"T_RvLinkObject"), 0u);
    run("calls", cmdLinkProc_Click);
    EXPECT_GT(rowCount(u"T_RvLinkModule"), 0u);
    run("declarations", cmdHensu_Click);
    EXPECT_GT(rowCount(u"T_RvHensu"), 0u);
    run("specifications", cmdTeigi_Click);
    EXPECT_GT(rowCount(u"T_RvTeigiItem"), 0u);
}

// The state of one format, kept, is also that of the other: nothing was added, removed or changed.
TEST_F(TwoFormats, StateKeptFromOneFormatComparesEqualToTheOther) {
    const fs::path kept = access97.folder / "受注.adb";
    for (OneFormat* each : {&access97, &access2000}) {
        EXPECT_TRUE(each->program.press(each->program.form().cmdObject));
    }
    doBoth("saving", [](OneFormat& each) {
        each.program.dialogs.files.push_back(textOfNativePath((each.folder / "受注.adb").string()));
        return each.program.desk->dispatch([&] { each.program.form().m1b.press(); });
    });
    doBoth("comparison", [&](OneFormat& each) {
        each.program.dialogs.files.push_back(textOfNativePath(kept.string()));
        return each.program.run(cmdObjUpdate_Click);
    });
    EXPECT_GT(rowCount(u"T_RvSaveObjectOld"), 0u);
    EXPECT_EQ(rowCount(u"T_RvSaveObjectOld"), rowCount(u"T_RvSaveObject"));
}

} // namespace
} // namespace relvane
