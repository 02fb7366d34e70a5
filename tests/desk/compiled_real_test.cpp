// A compiled file (.mde): its source is said to be not in it, and everything else is there. A file of the builder, which
// marks it as Access does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "persist/batch_run.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "support/object_references.h"
#include "support/procedure_calls.h"
#include "support/specifications.h"
#include "support/variable_catalogue.h"
#include "support_program.h"

namespace relvane {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct CompiledTarget : testing::Test, test::SupportProgram {
    CompiledTarget() {
        samples::DatabaseSpec spec = samples::readDescription(test::sourceFolder() / "samples" / "juchu.txt");
        spec.properties.push_back({u"MDE", Text(u"T")});
        samples::writeDatabase(spec, path);
        before = test::bytesOf(path);
        EXPECT_TRUE(select(path));
        dialogs.boxes.clear();
    }
    ~CompiledTarget() override { EXPECT_EQ(test::bytesOf(path), before); }

    // What was said since the last time.
    std::vector<std::string> said() {
        std::vector<std::string> texts;
        for (const auto& box : dialogs.boxes) {
            texts.push_back(toUtf8(box.text));
        }
        dialogs.boxes.clear();
        return texts;
    }

    test::TemporaryFolder targets;
    std::filesystem::path path = targets / "juchu.mde";
    std::string before;
};

const char* const saysSo = "コンパイル済みのファイル";

TEST_F(CompiledTarget, ListsOfSourceSayThatItIsNotThereAndTheProgramGoesOn) {
    for (CommandButton* button :
         {&form().cmdProc, &form().cmdModule, &form().cmdModStep, &form().cmdComment}) {
        EXPECT_TRUE(press(*button)) << button->name();
        EXPECT_THAT(said(), testing::ElementsAre(HasSubstr(saysSo))) << button->name();
    }
}

TEST_F(CompiledTarget, BatchOfEverythingMakesAllOtherLists) {
    FrmBatch& batch = desk->frmBatch;
    EXPECT_TRUE(desk->dispatch([&] {
        form().m6.press();
        for (CheckBox* box :
             {&batch.chkObj, &batch.chkTbl, &batch.chkQery, &batch.chkForm, &batch.chkRep, &batch.chkMac,
              &batch.chkProc, &batch.chkModStep, &batch.chkControl, &batch.chkFile, &batch.chkComent}) {
            box->tick(true);
        }
        batch.cmdExec.press();
    }));
    const auto texts = said();
    ASSERT_EQ(texts.size(), 5u); // procedures, modules, steps, comments, and the end
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_THAT(texts[i], HasSubstr(saysSo));
    }
    EXPECT_THAT(texts[4], HasSubstr("「一括処理」を終了しました。"));
    for (const TextView table : {u"T_RvObject", u"T_RvTblItem", u"T_RvQeryItem", u"T_RvFrmItem",
                                 u"T_RvRepItem", u"T_RvMacro", u"T_RvControlCount", u"T_RvFile"}) {
        EXPECT_THAT(rows(table), Not(IsEmpty())) << toUtf8(table);
    }
    EXPECT_TRUE(form().cmdFPre.Enabled);
    EXPECT_FALSE(form().cmdPPre.Enabled);
}

TEST_F(CompiledTarget, DeveloperSupportOpensWithoutItsProcedures) {
    run(cmdSyoki_Click);
    EXPECT_THAT(said(), testing::ElementsAre(HasSubstr(saysSo), HasSubstr("「初期処理」を終了しました。")));
    EXPECT_TRUE(sien.cmdTeigi.Enabled);
    EXPECT_TRUE(sien.cmdLinkForm.Enabled);
    EXPECT_TRUE(run(cmdLinkForm_Click));
    EXPECT_THAT(rows(u"T_RvLinkObject"), Not(IsEmpty()));
    EXPECT_TRUE(run(cmdTeigi_Click));
    EXPECT_THAT(rows(u"T_RvTeigiItem"), Not(IsEmpty()));
    EXPECT_THAT(said(), IsEmpty());
    for (void (*const command)(FrmSien&) : {cmdLinkProc_Click, cmdHensu_Click}) {
        EXPECT_TRUE(run(command));
        EXPECT_THAT(said(), testing::Contains(HasSubstr(saysSo)));
    }
}

} // namespace
} // namespace relvane
