// Where the properties of an object stand: each list ends with the events that its type has, where analyses look for
// them.
#include "access/property_positions.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

namespace relvane::access {
namespace {

using Names = std::vector<TextView>;

// Every event there is, in the order in which all lists have them.
const Names allEvents = {u"BeforeUpdate", u"AfterUpdate", u"OnChange",    u"OnNotInList", u"OnUpdated",
                         u"OnEnter",      u"OnExit",      u"OnGotFocus",  u"OnLostFocus", u"OnClick",
                         u"OnDblClick",   u"OnMouseDown", u"OnMouseMove", u"OnMouseUp",   u"OnKeyDown",
                         u"OnKeyUp",      u"OnKeyPress"};

Names without(std::set<TextView> missing) {
    Names events;
    std::ranges::copy_if(allEvents, std::back_inserter(events),
                         [&](TextView event) { return !missing.contains(event); });
    return events;
}

const Names ofButton = without({u"BeforeUpdate", u"AfterUpdate", u"OnChange", u"OnNotInList", u"OnUpdated"});
const Names ofChoice = without({u"OnChange", u"OnNotInList", u"OnUpdated"}); // and of list boxes
const Names ofGroupedChoice = without({u"BeforeUpdate", u"AfterUpdate", u"OnChange", u"OnNotInList",
                                       u"OnUpdated", u"OnEnter", u"OnExit", u"OnClick", u"OnDblClick"});
const Names ofTextBox = without({u"OnNotInList", u"OnUpdated"});
const Names ofComboBox = without({u"OnUpdated"});
const Names ofBoundFrame = without({u"OnChange", u"OnNotInList"});
const Names ofOptionGroup = without({u"OnChange", u"OnNotInList", u"OnUpdated", u"OnGotFocus", u"OnLostFocus",
                                     u"OnKeyDown", u"OnKeyUp", u"OnKeyPress"});
const Names ofSubform = {u"OnEnter", u"OnExit"};
const Names ofImage = {u"OnClick", u"OnDblClick", u"OnMouseDown", u"OnMouseMove", u"OnMouseUp"};

// As an analysis picks the range of events: the first row of the type whose threshold the number of properties exceeds.
struct Range {
    DesignType type;
    int above; // the number of properties
    int first, last;
};
constexpr int otherwise = -1;
constexpr Range ranges[] = {
    {DesignType::CommandButton, otherwise, 38, 49},
    {DesignType::ToggleButton, 52, 41, 54},
    {DesignType::ToggleButton, 41, 38, 51},
    {DesignType::ToggleButton, otherwise, 32, 39},
    {DesignType::CheckBox, 45, 34, 47},
    {DesignType::CheckBox, 33, 31, 44},
    {DesignType::CheckBox, otherwise, 25, 32},
    {DesignType::OptionButton, 45, 34, 47},
    {DesignType::OptionButton, 33, 31, 44},
    {DesignType::OptionButton, otherwise, 25, 32},
    {DesignType::ComboBox, 79, 66, 81},
    {DesignType::ComboBox, otherwise, 63, 78},
    {DesignType::ListBox, 64, 53, 66},
    {DesignType::ListBox, otherwise, 50, 63},
    {DesignType::TextBox, 75, 63, 77},
    {DesignType::TextBox, otherwise, 60, 74},
    {DesignType::OptionGroup, 41, 35, 43},
    {DesignType::OptionGroup, otherwise, 32, 40},
    {DesignType::BoundObjectFrame, 58, 46, 60},
    {DesignType::BoundObjectFrame, otherwise, 43, 57},
    {DesignType::Subform, otherwise, 28, 29},
    {DesignType::Image, otherwise, 29, 33},
};

const Range& rangeOf(DesignType type, int count) {
    return *std::ranges::find_if(
        ranges, [&](const Range& range) { return range.type == type && count > range.above; });
}

struct Expected {
    DesignType type;
    Arrangement arrangement;
    int count;
    const Names& events;
};
const Expected lists[] = {
    {DesignType::CommandButton, Arrangement::WithColumns, 50, ofButton},
    {DesignType::CommandButton, Arrangement::WithoutColumns, 50, ofButton},
    {DesignType::ToggleButton, Arrangement::WithColumns, 55, ofChoice},
    {DesignType::ToggleButton, Arrangement::WithoutColumns, 52, ofChoice},
    {DesignType::ToggleButton, Arrangement::InOptionGroup, 40, ofGroupedChoice},
    {DesignType::CheckBox, Arrangement::WithColumns, 48, ofChoice},
    {DesignType::CheckBox, Arrangement::WithoutColumns, 45, ofChoice},
    {DesignType::CheckBox, Arrangement::InOptionGroup, 33, ofGroupedChoice},
    {DesignType::OptionButton, Arrangement::WithColumns, 48, ofChoice},
    {DesignType::OptionButton, Arrangement::WithoutColumns, 45, ofChoice},
    {DesignType::OptionButton, Arrangement::InOptionGroup, 33, ofGroupedChoice},
    {DesignType::ComboBox, Arrangement::WithColumns, 82, ofComboBox},
    {DesignType::ComboBox, Arrangement::WithoutColumns, 79, ofComboBox},
    {DesignType::ListBox, Arrangement::WithColumns, 67, ofChoice},
    {DesignType::ListBox, Arrangement::WithoutColumns, 64, ofChoice},
    {DesignType::TextBox, Arrangement::WithColumns, 78, ofTextBox},
    {DesignType::TextBox, Arrangement::WithoutColumns, 75, ofTextBox},
    {DesignType::OptionGroup, Arrangement::WithColumns, 44, ofOptionGroup},
    {DesignType::OptionGroup, Arrangement::WithoutColumns, 41, ofOptionGroup},
    {DesignType::BoundObjectFrame, Arrangement::WithColumns, 61, ofBoundFrame},
    {DesignType::BoundObjectFrame, Arrangement::WithoutColumns, 58, ofBoundFrame},
    {DesignType::Subform, Arrangement::WithColumns, 30, ofSubform},
    {DesignType::Subform, Arrangement::WithoutColumns, 30, ofSubform},
    {DesignType::Image, Arrangement::WithColumns, 34, ofImage},
    {DesignType::Image, Arrangement::WithoutColumns, 34, ofImage},
};

Names namesAt(const std::vector<PropertyPlace>& places, int first, int last) {
    Names names;
    for (int i = first; i <= last; ++i) {
        names.push_back(places.at(static_cast<std::size_t>(i)).name);
    }
    return names;
}

bool isEvent(TextView name) {
    return std::ranges::find(allEvents, name) != allEvents.end();
}

TEST(PropertyPositions, EachListEndsWithTheEventsOfItsRange) {
    for (const Expected& list : lists) {
        SCOPED_TRACE(toUtf8(nameOf(list.type)) + " " + std::to_string(list.count));
        const auto places = propertyPlaces(list.type, list.arrangement);
        ASSERT_EQ(places.size(), static_cast<std::size_t>(list.count));
        const Range& range = rangeOf(list.type, list.count);
        EXPECT_EQ(range.last, list.count - 1);
        EXPECT_EQ(namesAt(places, range.first, range.last), list.events);
        EXPECT_EQ(std::ranges::count_if(places, isEvent, &PropertyPlace::name),
                  static_cast<std::ptrdiff_t>(list.events.size()));
        for (int i = range.first; i <= range.last; ++i) {
            EXPECT_TRUE(places[static_cast<std::size_t>(i)].showsValue);
        }
    }
}

TEST(PropertyPositions, EachThresholdIsTheNextShorterList) {
    for (const Range& range : ranges) {
        if (range.above == otherwise) {
            continue;
        }
        const auto counts = [&](Arrangement arrangement) {
            return static_cast<int>(propertyPlaces(range.type, arrangement).size());
        };
        const bool isOfColumns = counts(Arrangement::WithColumns) == range.last + 1;
        const int shorter = counts(isOfColumns ? Arrangement::WithoutColumns : Arrangement::InOptionGroup);
        // The middle threshold of toggle buttons leaves one place of room.
        EXPECT_GE(range.above, shorter);
        EXPECT_LE(range.above, shorter + 1);
        EXPECT_NE(&rangeOf(range.type, shorter), &range);
    }
}

TEST(PropertyPositions, AFormHasItsEventsFrom76To102) {
    const auto places = propertyPlaces(DesignType::Form, Arrangement::WithoutColumns);
    EXPECT_EQ(places.size(), 107u);
    const Names expected = {u"OnCurrent",   u"BeforeInsert", u"AfterInsert",      u"BeforeUpdate",
                            u"AfterUpdate", u"OnDelete",     u"BeforeDelConfirm", u"AfterDelConfirm",
                            u"OnOpen",      u"OnLoad",       u"OnResize",         u"OnUnload",
                            u"OnClose",     u"OnActivate",   u"OnDeactivate",     u"OnGotFocus",
                            u"OnLostFocus", u"OnClick",      u"OnDblClick",       u"OnMouseDown",
                            u"OnMouseMove", u"OnMouseUp",    u"OnKeyDown",        u"OnKeyUp",
                            u"OnKeyPress",  u"KeyPreview",   u"OnError"};
    EXPECT_EQ(namesAt(places, 76, 102), expected);
    for (std::size_t i = 76; i <= 102; ++i) {
        EXPECT_EQ(places[i].showsValue, i != 101) << i;
    }
    EXPECT_EQ(namesAt(places, 103, 105), (Names{u"OnFilter", u"OnApplyFilter", u"OnTimer"}));
}

TEST(PropertyPositions, AReportHasItsEventsFrom41To47) {
    const auto places = propertyPlaces(DesignType::Report, Arrangement::WithoutColumns);
    EXPECT_EQ(places.size(), 48u);
    EXPECT_EQ(namesAt(places, 41, 47), (Names{u"OnOpen", u"OnClose", u"OnActivate", u"OnDeactivate",
                                              u"OnNoData", u"OnPage", u"OnError"}));
}

TEST(PropertyPositions, AChoiceShowsItsOptionValueInAGroupAlone) {
    struct Case {
        DesignType type;
        std::set<std::size_t> positions;
    };
    for (const auto& [type, positions] :
         {Case{DesignType::CheckBox, {1, 3}}, Case{DesignType::OptionButton, {1, 3}},
          Case{DesignType::ToggleButton, {7}}}) {
        for (const auto arrangement :
             {Arrangement::WithColumns, Arrangement::WithoutColumns, Arrangement::InOptionGroup}) {
            const auto places = propertyPlaces(type, arrangement);
            for (std::size_t i = 0; i < places.size(); ++i) {
                EXPECT_EQ(places[i].name == u"OptionValue",
                          arrangement == Arrangement::InOptionGroup && positions.contains(i))
                    << toUtf8(nameOf(type)) << " " << i;
            }
        }
    }
}

TEST(PropertyPositions, NoCertainNameStandsTwiceButThatOfAChoice) {
    for (const DesignType type : knownTypes()) {
        for (const auto arrangement :
             {Arrangement::WithColumns, Arrangement::WithoutColumns, Arrangement::InOptionGroup}) {
            std::set<TextView> seen;
            for (const PropertyPlace& place : propertyPlaces(type, arrangement)) {
                EXPECT_TRUE(place.name.empty() || place.name == u"OptionValue" ||
                            seen.insert(place.name).second)
                    << toUtf8(nameOf(type)) << " " << toUtf8(place.name);
            }
        }
    }
}

} // namespace
} // namespace relvane::access
