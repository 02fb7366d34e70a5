#include "objects/control_properties.h"

#include "core/vocabulary.h"
#include "objects/object_text.h"
#include "objects/round_half_up.h"

namespace relvane {
namespace {

constexpr std::int64_t nameLength = 150;
constexpr TextView memberMark = u"OptionValue";
constexpr TextView sizeless = u"PageBreak";

bool holds(const RowCondition& condition, const access::Control& control) {
    if (condition.property.empty()) {
        return true;
    }
    const Value value = control(condition.property);
    if (std::holds_alternative<Null>(value)) {
        return false;
    }
    switch (condition.test) {
    case PropertyTest::NotEmpty:
        return isNotEmptyText(value);
    case PropertyTest::Empty:
        return isEmptyText(value);
    case PropertyTest::IsTrue:
        return toBoolean(value);
    case PropertyTest::IsFalse:
        return !toBoolean(value);
    }
    return false;
}

Text textOf(const TextPiece& piece, const access::Control& control) {
    const Value value = piece.property.empty() ? Value(Text()) : control(piece.property);
    if (isEmptyText(value) && !piece.ifEmpty.empty()) {
        return Text(piece.ifEmpty);
    }
    const Text text = toText(value);
    return piece.word == nullptr ? text : piece.word(text);
}

Text textOf(const RowText& row, const access::Control& control) {
    return textOf(row.first, control) + Text(row.between) + textOf(row.second, control) + Text(row.behind);
}

Text placeAndSize(const access::Control& control, TextView type) {
    const auto measure = [&control](TextView property) { return centimetres(control(property)) + u"cm"; };
    const Text place = measure(u"Top") + u"・" + measure(u"Left");
    return type == sizeless ? place : place + u"・" + measure(u"Width") + u"・" + measure(u"Height");
}

// One walk over the controls of a form or report.
class ControlWalk {
public:
    ControlWalk(AnalysisContext& context, ControlList list)
        : context_(context), current_(context.CurControl), list_(list) {}

    void write(const access::Control& control) {
        readHead(control);
        const bool isMember = isMemberOfGroup(control);
        for (const RowRule& rule : rowRules()) {
            if (appliesTo(rule, isMember) && holds(rule.conditions[0], control) &&
                holds(rule.conditions[1], control)) {
                add(rule.group, rule.label, textOf(rule.text, control));
            }
        }
        if (list_ == formDetailed && !isMember) {
            writeEvents(control.Properties());
        }
    }

private:
    // What every row of the control repeats.
    void readHead(const access::Control& control) {
        increment(current_.ControlNo);
        current_.PropertyNo = 0;
        current_.ControlName = cutText(control.Name(), nameLength);
        current_.ControlTypeName = GetControlTypeName(toText(static_cast<long long>(control.ControlType())));
        current_.ControlVisible = toText(control(u"Visible"));
        current_.ControlTLWH = placeAndSize(control, current_.ControlTypeName);
    }

    bool isMemberOfGroup(const access::Control& control) {
        const GroupTest* test = groupTest(current_.ControlTypeName);
        if (test == nullptr) {
            return false;
        }
        const int position = list_ == formDetailed ? test->inFormDetailed : test->inOtherLists;
        if (position != GroupTest::asBefore) {
            groupTestPosition_ = position;
        }
        return control.Properties().Item(groupTestPosition_).Name == memberMark;
    }

    bool appliesTo(const RowRule& rule, bool isMember) const {
        return (rule.lists & list_) != 0 && rule.types.contain(current_.ControlTypeName) &&
               (rule.place == GroupPlace::Any || (rule.place == GroupPlace::Member) == isMember);
    }

    void writeEvents(const access::Properties& properties) {
        const auto range = eventRange(current_.ControlTypeName, properties.Count());
        for (int position = range ? range->first : 0; range && position <= range->last; ++position) {
            const access::Property event = properties.Item(position);
            if (isNotEmptyText(event.Value)) {
                add(eventGroup, GetEventLabel(event.Name), toText(event.Value));
            }
        }
    }

    void add(TextView group, TextView label, Text text) {
        increment(current_.PropertyNo);
        current_.PropertyGroup = Text(group);
        current_.PropertyLabel = Text(label);
        current_.PropertyText = std::move(text);
        AddControlProperty(context_);
    }

    AnalysisContext& context_;
    CurrentControl& current_;
    ControlList list_;
    int groupTestPosition_ = 0;
};

} // namespace

void AddControlProperty(AnalysisContext& context) {
    CurrentControl& control = context.CurControl;
    Recordset& row = need(context.WorkRs2);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"ControlNo", std::int64_t{control.ControlNo});
    row.Collect(u"PropertyNo", std::int64_t{control.PropertyNo});
    row.Collect(u"Name", control.ControlName);
    row.Collect(u"ControlType", GetControlTypeLabel(control.ControlTypeName));
    row.Collect(u"cntlVisible", control.ControlVisible);
    row.Collect(u"TLWH", control.ControlTLWH);
    row.Collect(u"Bunrui", control.PropertyGroup);
    row.Collect(u"PropertyName", control.PropertyLabel);
    row.Collect(u"PropertyValue", control.PropertyText);
    row.Update();
    control.PropertyGroup.clear();
    control.PropertyLabel.clear();
    control.PropertyText.clear();
}

void writeControls(AnalysisContext& context, ControlList list) {
    ControlWalk walk(context, list);
    for (const auto& control : need(context.CurDesign).Controls()) {
        walk.write(*control);
    }
}

} // namespace relvane
