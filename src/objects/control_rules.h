// Which rows the four lists of controls have for each type of control: tables of data, which the walk over the
// controls interprets.
#pragma once

#include <array>
#include <optional>
#include <span>

#include "platform/text.h"

namespace relvane {

// The lists, as flags: a rule can belong to several.
enum ControlList : unsigned { formDetailed = 1, formSimple = 2, reportDetailed = 4, reportSimple = 8 };

// Words of GetControlTypeName; the places behind the last are empty.
struct ControlTypes {
    std::array<TextView, 6> words;

    constexpr bool contain(TextView word) const {
        for (const TextView each : words) {
            if (!each.empty() && each == word) {
                return true;
            }
        }
        return false;
    }
};

// Whether a rule is for members of an option group, for controls that are none, or makes no difference.
enum class GroupPlace { Any, Member, NoMember };

// A Null is neither empty nor not empty, neither true nor false.
enum class PropertyTest { NotEmpty, Empty, IsTrue, IsFalse };

struct RowCondition {
    TextView property; // empty: there is no such condition
    PropertyTest test;
};

// One half of a row's text: the text of a property, or the word for it.
struct TextPiece {
    TextView property;                // empty: `ifEmpty` alone
    Text (*word)(TextView) = nullptr; // of vocabulary.h
    TextView ifEmpty = {};            // stands for an empty property
};

struct RowText {
    TextPiece first;
    TextView between = {};
    TextPiece second = {};
    TextView behind = {};
};

// One row, written when all conditions hold.
struct RowRule {
    unsigned lists;
    GroupPlace place;
    ControlTypes types;
    TextView group, label;
    RowText text;
    std::array<RowCondition, 2> conditions = {};
};

// In the order of the rows of a control.
std::span<const RowRule> rowRules();

// Where a control's event properties stand among its properties; both positions belong to it.
struct EventRange {
    int first, last;
};

// By the type's word and the number of the control's properties, which differs with its place. Nothing for a type
// that has no events in any list.
std::optional<EventRange> eventRange(TextView type, int propertyCount);

// Where the property that tells a member of an option group is looked for.
struct GroupTest {
    TextView type;
    int inFormDetailed, inOtherLists; // positions; asBefore: where it was looked for in the control before
    static constexpr int asBefore = -1;
};

// Nothing for a type that is no member of groups.
const GroupTest* groupTest(TextView type);

// The group of the rows that tell events.
inline constexpr TextView eventGroup = u"ｲﾍﾞﾝﾄ";

} // namespace relvane
