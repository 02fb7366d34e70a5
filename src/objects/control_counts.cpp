#include "objects/control_counts.h"

#include "core/error_report.h"
#include "core/vocabulary.h"
#include "objects/design_walk.h"
#include "output/report_show.h"

namespace relvane {
namespace {

struct CountedType {
    TextView word, field;
};

constexpr CountedType countedTypes[] = {
    {u"Rectangle", u"RectangleCount"},
    {u"Label", u"LabelCount"},
    {u"Line", u"LineCount"},
    {u"Image", u"ImageCount"},
    {u"CommandButton", u"CommandButtonCount"},
    {u"OptionButton", u"OptionButtonCount"},
    {u"CheckBox", u"CheckBoxCount"},
    {u"OptionGroup", u"OptionGroupCount"},
    {u"BoundObjectFrame", u"BoundObjectFrameCount"},
    {u"TextBox", u"TextBoxCount"},
    {u"ListBox", u"ListBoxCount"},
    {u"ComboBox", u"ComboBoxCount"},
    {u"Subform", u"SubformCount"},
    {u"ObjectFrame", u"ObjectFrameCount"},
    {u"PageBreak", u"PageBreakCount"},
    {u"Page", u"PageCount"},
    {u"CustomControl", u"CustomControlCount"},
    {u"ToggleButton", u"ToggleButtonCount"},
    {u"TabCtl", u"TabCtlCount"},
};
static_assert(std::size(countedTypes) == std::tuple_size_v<decltype(AnalysisContext::ControlCounters)>);

// What each option counts, in this order.
struct CountedKind {
    const DesignKind& kind;
    TextView message;
    std::int16_t alone; // the option that counts it alone
};

constexpr std::int16_t countForms = 1, countReports = 2, countBoth = 3;

const CountedKind countedKinds[] = {
    {formKind, u"フォームコントロール数　取得中", countForms},
    {reportKind, u"レポートコントロール数　取得中", countReports},
};

bool isChosen(const AnalysisContext& context, const CountedKind& counted) {
    return context.OptControl == counted.alone || context.OptControl == countBoth;
}

WalkEnd countChosenKinds(AnalysisContext& context, std::int16_t progress) {
    std::int32_t total = 0;
    for (const CountedKind& counted : countedKinds) {
        total += isChosen(context, counted) ? context.*counted.kind.count : 0;
    }
    for (const CountedKind& counted : countedKinds) {
        if (isChosen(context, counted)) {
            context.CountedClass = Text(counted.kind.className);
            walkDesigns(context, counted.kind, WalkProgress(context, progress, counted.message, total),
                        [&context] {
                            ClearControlCounters(context);
                            CountControls(context);
                        });
        }
    }
    return WalkEnd::Complete;
}

} // namespace

AnalysisSpec controlAnalysis(AnalysisContext& context) {
    return {.tables = {u"T_RvControlCount"},
            .workingMessage = u"コントロール数　取得中",
            .walk = [&context](std::int16_t progress) { return countChosenKinds(context, progress); },
            .showReport =
                [&context] { ShowReport(context, reportOf(context, &FrmRelvane::cmdCPre), previewMode); },
            .preview = &context.frmRelvane.cmdCPre,
            .option = context.OptControl,
            .done = &context.DoneControl};
}

void cmdControl_Click(AnalysisContext& context) {
    guarded(context, places::controlCounts, [&context] { runAnalysis(context, controlAnalysis(context)); });
}

void ClearControlCounters(AnalysisContext& context) {
    context.ControlCounters.fill(0);
}

void CountControls(AnalysisContext& context) {
    const access::Designed& object = need(context.CurDesign);
    increment(context.ObjectNo);
    for (const auto& control : object.Controls()) {
        const Text word = GetControlTypeName(toText(static_cast<long long>(control->ControlType())));
        for (std::size_t i = 0; i < std::size(countedTypes); ++i) {
            if (word == countedTypes[i].word) {
                increment(context.ControlCounters[i]);
            }
        }
    }
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"Class", context.CountedClass);
    row.Collect(u"ObjectName", context.CurDesignName);
    for (std::size_t i = 0; i < std::size(countedTypes); ++i) {
        row.Collect(countedTypes[i].field, std::int64_t{context.ControlCounters[i]});
    }
    row.Update();
}

} // namespace relvane
