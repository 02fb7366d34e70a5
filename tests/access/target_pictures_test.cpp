// Forms that are opened to be looked at: who draws them, and in which view.
#include <gmock/gmock.h>

#include "access/target_application.h"
#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using testing::ElementsAre;

// A painter that writes down what it is asked for.
struct PainterLog {
    std::vector<Text> calls;
    int alive = 0;
    int refused = 0; // the error with which forms open, 0 when they do
};

class NotingPainter : public FormPainter {
public:
    explicit NotingPainter(PainterLog& log) : log_(log) { ++log_.alive; }
    ~NotingPainter() override { --log_.alive; }

    void requireOpens(const Text& form) override {
        log_.calls.push_back(u"requireOpens " + form);
        if (log_.refused != 0) {
            throw RunTimeError(log_.refused, form);
        }
    }
    Picture draw(const Text& form, View view, bool wholeWindow) override {
        log_.calls.push_back(u"draw " + form + u" " + toText(static_cast<long long>(view)) +
                             (wholeWindow ? u" whole" : u""));
        return {1, 1, {0xABCDEF}};
    }

private:
    PainterLog& log_;
};

struct TargetPictures : testing::Test {
    TargetPictures() { application->OpenCurrentDatabase(path, false); }
    DoCmd& commands() const { return application->DoCmd(); }

    const Text path = textOfNativePath(test::ownSample("juchu.mdb").native());
    const Text form = u"得意先台帳";
    PainterLog log;
    std::shared_ptr<Application> application =
        newTargetApplication({}, [this](dao::Database&) { return std::make_unique<NotingPainter>(log); });
};

TEST_F(TargetPictures, FormInUseIsDrawnInUse) {
    commands().OpenForm(form, acViewNormal);
    commands().SelectObject(acForm, form, false);
    commands().RepaintObject(acForm, form);
    EXPECT_EQ(application->Forms(form).picture(false).pixels, std::vector<std::uint32_t>{0xABCDEF});
    application->Forms(form).picture(true);
    EXPECT_THAT(log.calls,
                ElementsAre(u"requireOpens 得意先台帳", u"draw 得意先台帳 0", u"draw 得意先台帳 0 whole"));
}

TEST_F(TargetPictures, FormInDesignViewIsDrawnSoAndReadsNoData) {
    commands().OpenForm(form, acViewDesign);
    application->Forms(form).picture(false);
    EXPECT_THAT(log.calls, ElementsAre(u"draw 得意先台帳 1"));
}

TEST_F(TargetPictures, OpenFormChangesItsView) {
    commands().OpenForm(form, acViewDesign);
    const Form* const design = &application->Forms(form);
    commands().OpenForm(form, acViewNormal);
    EXPECT_EQ(&application->Forms(form), design);
    application->Forms(form).picture(false);
    EXPECT_EQ(log.calls.back(), u"draw 得意先台帳 0");
}

TEST_F(TargetPictures, FormThatNeedsAnotherOneDoesNotOpen) {
    log.refused = 2450;
    EXPECT_EQ(skipErrors([&] { commands().OpenForm(form, acViewNormal); }), 2450);
    EXPECT_EQ(skipErrors([&] { application->Forms(form); }), 2450);
    commands().OpenForm(form, acViewDesign);
    EXPECT_EQ(application->Forms(form).Name(), form);
}

TEST_F(TargetPictures, FormThatDoesNotExistIsFoundMissingBeforeItIsDrawn) {
    EXPECT_EQ(skipErrors([&] { commands().OpenForm(u"ない", acViewNormal); }), 2102);
    EXPECT_TRUE(log.calls.empty());
}

TEST_F(TargetPictures, FormThatIsNotOpenIsNeitherSelectedNorRepainted) {
    EXPECT_EQ(skipErrors([&] { commands().SelectObject(acForm, form, false); }), 2489);
    EXPECT_EQ(skipErrors([&] { commands().RepaintObject(acForm, form); }), 2489);
    EXPECT_EQ(skipErrors([&] { commands().SelectObject(acForm, form, true); }), 0)
        << "in the database window";
    EXPECT_EQ(skipErrors([&] { commands().SelectObject(acForm, u"ない", false); }), 2544);
    commands().OpenForm(form, acViewNormal);
    commands().Close(acForm, form, acSaveNo);
    EXPECT_EQ(skipErrors([&] { commands().SelectObject(acForm, form, false); }), 2489);
}

TEST_F(TargetPictures, PainterGoesBeforeTheDatabase) {
    commands().OpenForm(form, acViewNormal);
    EXPECT_EQ(log.alive, 1);
    application->CloseCurrentDatabase();
    EXPECT_EQ(log.alive, 0);
    application->OpenCurrentDatabase(path, false);
    commands().OpenForm(form, acViewNormal);
    EXPECT_EQ(log.alive, 1);
    application.reset();
    EXPECT_EQ(log.alive, 0);
}

TEST(TargetWithoutAPainter, OpensFormsAndHasNoPictures) {
    const auto application = newTargetApplication();
    application->OpenCurrentDatabase(textOfNativePath(test::ownSample("juchu.mdb").native()), false);
    application->DoCmd().OpenForm(u"得意先台帳", acViewNormal);
    EXPECT_EQ(skipErrors([&] { application->Forms(u"得意先台帳").picture(false); }), 438);
}

} // namespace
} // namespace relvane::access
