// The sample application as an analysis asks Access for it: every list of properties by position that controls have,
// with an event at each place where one can stand, and the other cases that lists of controls are particular about.

#include <gtest/gtest.h>

#include "access/target_application.h"
#include "support/file_formats.h"

namespace relvane::samples {
namespace {

using access::Designed;
using access::Properties;

class SampleCases : public testing::TestWithParam<FileFormat> {
protected:
    SampleCases() : application_(access::newTargetApplication()) {
        application_->OpenCurrentDatabase(fromUtf8(test::ownSample("juchu", GetParam()).string()), false);
    }

    access::Form& form(const Text& name) {
        application_->DoCmd().OpenForm(name, access::acViewDesign);
        return application_->Forms(name);
    }
    access::Report& report(const Text& name) {
        application_->DoCmd().OpenReport(name, access::acViewDesign);
        return application_->Reports(name);
    }

    static access::Control& control(const Designed& object, TextView name) {
        for (int i = 0; i < object.Controls().Count(); ++i) {
            if (object.Controls().Item(i).Name() == name) {
                return object.Controls().Item(i);
            }
        }
        throw std::out_of_range(toUtf8(name));
    }

    // The places in that range that have a name and no value.
    static std::vector<int> emptyPlaces(const Properties& properties, int first, int last) {
        std::vector<int> places;
        for (int place = first; place <= last; ++place) {
            if (!isNotEmptyText(properties.Item(place).Value)) {
                places.push_back(place);
            }
        }
        return places;
    }

private:
    std::shared_ptr<access::Application> application_;
};

INSTANTIATE_TEST_SUITE_P(Formats, SampleCases, test::everyFormat, test::formatName);

TEST_P(SampleCases, ControlsHaveEveryLengthOfListWithAllTheirEvents) {
    struct Case {
        const char16_t* name;
        int count, first, last; // of the list, and the places of its events
    };
    const access::Form& events = form(u"ｲﾍﾞﾝﾄ調査");
    for (const Case& expected : std::initializer_list<Case>{{u"文字", 78, 63, 77},
                                                            {u"文字上", 75, 60, 74},
                                                            {u"選択", 82, 66, 81},
                                                            {u"選択上", 79, 63, 78},
                                                            {u"一覧", 67, 53, 66},
                                                            {u"一覧上", 64, 50, 63},
                                                            {u"印", 48, 34, 47},
                                                            {u"印上", 45, 31, 44},
                                                            {u"丸", 48, 34, 47},
                                                            {u"丸上", 45, 31, 44},
                                                            {u"釦", 55, 41, 54},
                                                            {u"釦上", 52, 38, 51},
                                                            {u"組", 44, 35, 43},
                                                            {u"組上", 41, 32, 40},
                                                            {u"実行", 50, 38, 49},
                                                            {u"絵", 34, 29, 33},
                                                            {u"明細", 30, 28, 29}}) {
        SCOPED_TRACE(toUtf8(expected.name));
        const Properties& properties = control(events, expected.name).Properties();
        EXPECT_EQ(properties.Count(), expected.count);
        EXPECT_EQ(emptyPlaces(properties, expected.first, expected.last), std::vector<int>());
    }
    // The format has no known places for the events of a bound object frame.
    EXPECT_EQ(control(events, u"写真").Properties().Count(), 61);
    EXPECT_EQ(control(events, u"写真上").Properties().Count(), 58);
}

TEST_P(SampleCases, ChoicesOfAnOptionGroupHaveTheShortLists) {
    const access::Form& events = form(u"ｲﾍﾞﾝﾄ調査");
    for (const auto& [name, count, place] : std::initializer_list<std::tuple<const char16_t*, int, int>>{
             {u"組の印", 33, 1}, {u"組の丸", 33, 3}, {u"組の釦", 40, 7}}) {
        const Properties& properties = control(events, name).Properties();
        EXPECT_EQ(properties.Count(), count) << toUtf8(name);
        EXPECT_EQ(properties.Item(place).Name, u"OptionValue") << toUtf8(name);
    }
}

TEST_P(SampleCases, FormAndReportHaveAnEventAtEachPlaceOfTheirRanges) {
    constexpr int keyPreview = 101;
    EXPECT_EQ(emptyPlaces(form(u"ｲﾍﾞﾝﾄ調査").Properties(), 76, 102), std::vector<int>{keyPreview});
    EXPECT_EQ(emptyPlaces(report(u"請求書").Properties(), 41, 47), std::vector<int>());
}

TEST_P(SampleCases, FormsWithoutARecordSourceAndWithoutControlsAreThere) {
    EXPECT_EQ(form(u"メインメニュー")(u"RecordSource"), Value(Text()));
    EXPECT_EQ(form(u"F_1998").Controls().Count(), 0);
    EXPECT_TRUE(form(u"メインメニュー").HasModule());
    EXPECT_FALSE(form(u"F_1998").HasModule());
}

TEST_P(SampleCases, CaptionAndEventsAreLongerThanAListShows) {
    access::Form& events = form(u"ｲﾍﾞﾝﾄ調査");
    EXPECT_GT(toText(events(u"Caption")).size(), 100u);
    EXPECT_GT(toText(form(u"メインメニュー")(u"OnActivate")).size(), 60u);
}

TEST_P(SampleCases, PlaceOfAThousandTwipsIsThere) {
    EXPECT_EQ(control(form(u"検索条件"), u"下限額")(u"Top"), Value(std::int64_t{1000}));
}

TEST_P(SampleCases, LockedAndUnlockedCombosStandSideBySide) {
    const access::Form& items = form(u"商品マスタ保守");
    EXPECT_EQ(control(items, u"仕入先ID")(u"Locked"), Value(true));
    EXPECT_EQ(control(items, u"分類ID")(u"Locked"), Value(false));
    EXPECT_EQ(control(items, u"分類ID")(u"LimitToList"), Value(true));
    EXPECT_EQ(control(items, u"粗利")(u"ControlSource"), Value(Text()));
    EXPECT_EQ(control(form(u"得意先台帳"), u"締日25")(u"Locked"), Value(true));
}

TEST_P(SampleCases, ReportsHaveNoneToTenGroupLevels) {
    const auto levelsOf = [&](const char16_t* name) {
        access::Report& opened = report(name);
        int levels = 0;
        while (skipErrors([&] { opened.GroupLevel(levels)(u"ControlSource"); }) == 0) {
            ++levels;
        }
        return levels;
    };
    EXPECT_EQ(levelsOf(u"得意先宛名ラベル"), 0);
    EXPECT_EQ(levelsOf(u"受注一覧表"), 1);
    EXPECT_EQ(levelsOf(u"請求書"), 3);
    EXPECT_EQ(levelsOf(u"受注集計表"), 3);
    EXPECT_EQ(levelsOf(u"受注分析表"), 10);
}

} // namespace
} // namespace relvane::samples
