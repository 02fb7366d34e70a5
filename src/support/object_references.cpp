#include "support/object_references.h"

#include <optional>
#include <span>

#include "code/module_walk.h"
#include "core/error_report.h"
#include "core/target_selection.h"
#include "core/text_functions.h"
#include "core/vocabulary.h"
#include "objects/control_rules.h"
#include "objects/object_text.h"
#include "output/report_show.h"
#include "support/procedure_calls.h"
#include "support/support_run.h"

namespace relvane {
namespace {

constexpr std::int64_t nameLength = 150;
constexpr std::int16_t allObjects = 1;

struct LabelledProperty {
    TextView name, label; // no name: there is none
};

constexpr LabelledProperty sourceObject{u"SourceObject", u"ｿｰｽｵﾌﾞｼﾞｪｸﾄ"};
constexpr LabelledProperty rowSource{u"RowSource", u"値集合ｿｰｽ"};
constexpr LabelledProperty controlSource{u"ControlSource", u"ｺﾝﾄﾛｰﾙｿｰｽ"};
constexpr LabelledProperty defaultValue{u"DefaultValue", u"規定値"};
constexpr LabelledProperty none{};

// The positions at which events are looked for stay from control to control, until one sets them anew.
enum class Events {
    Untouched,  // no events, and the positions stay
    Cleared,    // from here on there are none
    PassedOver, // the positions are set for the controls that follow; its own events are not read
    Read,
};

// A control that is a choice of an option group has its value at one position.
constexpr int noChoice = -1;
constexpr TextView choiceMark = u"OptionValue";

// What is read of one type of control: its source, the properties that can call a function, its events.
struct ControlRule {
    TextView kind; // word of GetControlTypeName
    int choicePosition;
    LabelledProperty source;
    std::array<LabelledProperty, 2> functions;
    Events events;
};

// clang-format off
constexpr ControlRule ofForms[] = {
    {u"Subform",          noChoice, sourceObject, {none, none},                  Events::Cleared},
    {u"ComboBox",         noChoice, rowSource,    {controlSource, none},         Events::PassedOver},
    {u"ListBox",          noChoice, rowSource,    {controlSource, none},         Events::PassedOver},
    {u"TextBox",          noChoice, none,         {controlSource, none},         Events::Read},
    {u"BoundObjectFrame", noChoice, none,         {controlSource, none},         Events::Read},
    {u"CommandButton",    noChoice, none,         {none, none},                  Events::Read},
    {u"OptionGroup",      noChoice, none,         {none, none},                  Events::Read},
    {u"CheckBox",         3,        none,         {controlSource, defaultValue}, Events::Read},
    {u"OptionButton",     3,        none,         {controlSource, defaultValue}, Events::Read},
    {u"ToggleButton",     7,        none,         {controlSource, defaultValue}, Events::Read},
};

constexpr ControlRule ofReports[] = {
    {u"Subform",          noChoice, sourceObject, {none, none},          Events::Untouched},
    {u"ComboBox",         noChoice, rowSource,    {controlSource, none}, Events::Untouched},
    {u"ListBox",          noChoice, rowSource,    {controlSource, none}, Events::Untouched},
    {u"TextBox",          noChoice, none,         {controlSource, none}, Events::Untouched},
    {u"OptionGroup",      noChoice, none,         {controlSource, none}, Events::Untouched},
    {u"BoundObjectFrame", noChoice, none,         {controlSource, none}, Events::Untouched},
    {u"CheckBox",         3,        none,         {controlSource, none}, Events::Untouched},
    {u"OptionButton",     3,        none,         {controlSource, none}, Events::Untouched},
    {u"ToggleButton",     7,        none,         {controlSource, none}, Events::Untouched},
};
// clang-format on

struct DesignRule {
    TextView word; // stands for a control in the rows of the object's own events
    EventRange events;
    int notAnEvent; // a position among them
    std::span<const ControlRule> controls;
};

constexpr DesignRule formRule{u"フォーム", {76, 102}, 101, ofForms};
constexpr DesignRule reportRule{u"レポート", {41, 47}, -1, ofReports};

const ControlRule* ruleFor(std::span<const ControlRule> rules, TextView kind) {
    for (const ControlRule& rule : rules) {
        if (rule.kind == kind) {
            return &rule;
        }
    }
    return nullptr;
}

// As in the lists of controls, but for the longest option groups, whose events are not found.
std::optional<EventRange> referenceRange(TextView kind, int propertyCount) {
    constexpr int longestOptionGroup = 43;
    if (kind == u"OptionGroup" && propertyCount > longestOptionGroup) {
        return std::nullopt;
    }
    return eventRange(kind, propertyCount);
}

Text sourceWord(const Text& source) {
    return UCase(Left(Trim(source), 7)) == u"SELECT " ? u"ＳＱＬ" : u"ﾃｰﾌﾞﾙ/ｸｴﾘｰ";
}

// The macro group of "group.macro".
Text macroOf(const Text& event) {
    return event.substr(0, event.find(u'.'));
}

bool listsOwnValues(const access::Control& control, const LabelledProperty& source) {
    return source.name == rowSource.name && toText(control(u"RowSourceType")) == u"Value List";
}

// One walk over an open form or report.
class ReferenceScan {
public:
    ReferenceScan(FrmSien& sien, const DesignRule& rule) : sien_(sien), state_(sien.state), rule_(rule) {}

    void run() {
        const access::Designed& design = need(sien_.context.CurDesign);
        state_.LinkControlNo = state_.LinkPropertyNo = 0;
        writeRecordSource(design);
        writeOwnEvents(design);
        for (const auto& control : design.Controls()) {
            readControl(*control);
        }
    }

private:
    void writeRecordSource(const access::Designed& design) {
        const Value source = design(u"RecordSource");
        if (isNotEmptyText(source)) {
            state_.LinkControlName.clear();
            writeSource(u"ﾚｺｰﾄﾞｿｰｽ", toText(source));
        }
    }

    void writeOwnEvents(const access::Designed& design) {
        for (int position = rule_.events.first; position <= rule_.events.last; ++position) {
            if (position != rule_.notAnEvent) {
                writeEvent(design.Properties(), position, rule_.word);
            }
        }
    }

    void readControl(const access::Control& control) {
        increment(state_.LinkControlNo);
        state_.LinkControlName = cutText(control.Name(), nameLength);
        state_.LinkControlKind = GetControlTypeName(toText(static_cast<long long>(control.ControlType())));
        const ControlRule* rule = ruleFor(rule_.controls, state_.LinkControlKind);
        if (rule == nullptr) {
            return;
        }
        if (!rule->source.name.empty()) {
            state_.LinkPropertyNo = 0;
            writeSourceOf(control, rule->source);
        }
        const bool isChoice = rule->choicePosition != noChoice &&
                              control.Properties().Item(rule->choicePosition).Name == choiceMark;
        if (!isChoice) {
            for (const LabelledProperty& property : rule->functions) {
                writeFunction(control, property);
            }
            takeEventRange(control, rule->events);
        }
        if (rule->events == Events::Read) {
            writeEvents(control);
        }
    }

    void writeSourceOf(const access::Control& control, const LabelledProperty& property) {
        const Value source = control(property.name);
        if (isNotEmptyText(source) && !listsOwnValues(control, property)) {
            increment(state_.LinkPropertyNo);
            writeSource(property.label, toText(source));
        }
    }

    void writeSource(TextView label, const Text& source) {
        state_.LinkBunrui = sourceWord(source);
        state_.LinkPropertyName = Text(label);
        state_.LinkPropertyValue = source;
        AddLinkObjectRow(sien_);
    }

    // The first procedure of the list that the property holds.
    void writeFunction(const access::Control& control, const LabelledProperty& property) {
        if (property.name.empty()) {
            return;
        }
        const Text value = toText(control(property.name));
        for (std::size_t i = 0; i < static_cast<std::size_t>(state_.UserProcCount); ++i) {
            if (InStr(value, state_.UserProcNames[i]) != 0) {
                state_.LinkBunrui = u"ﾕｰｻﾞｰ関数";
                state_.LinkPropertyName = Text(property.label);
                state_.LinkPropertyValue = state_.UserProcNames[i];
                state_.LinkMotoName = state_.UserProcModules[i];
                AddLinkObjectRow(sien_);
                return;
            }
        }
    }

    void takeEventRange(const access::Control& control, Events events) {
        if (events == Events::Cleared) {
            range_.reset();
        } else if (events != Events::Untouched) {
            range_ = referenceRange(state_.LinkControlKind, control.Properties().Count());
        }
    }

    // Without procedures in modules no control is asked for its events.
    void writeEvents(const access::Control& control) {
        if (!range_ || state_.UserProcCount == 0) {
            return;
        }
        for (int position = range_->first; position <= range_->last; ++position) {
            writeEvent(control.Properties(), position, state_.LinkControlName);
        }
    }

    void writeEvent(const access::Properties& properties, int position, TextView controlName) {
        const access::Property event = properties.Item(position);
        if (!isNotEmptyText(event.Value)) {
            return;
        }
        increment(state_.LinkPropertyNo);
        state_.LinkBunrui = u"マクロ";
        state_.LinkControlName = Text(controlName);
        state_.LinkPropertyName = GetEventLabel(event.Name);
        state_.LinkPropertyValue = toText(event.Value);
        state_.LinkMotoName = macroOf(state_.LinkPropertyValue);
        AddLinkObjectRow(sien_);
    }

    FrmSien& sien_;
    SupportState& state_;
    const DesignRule& rule_;
    std::optional<EventRange> range_; // none until a control sets it
};

void scanReferences(FrmSien& sien, const DesignRule& rule, std::int16_t objectNo) {
    sien.context.ObjectNo = objectNo;
    ReferenceScan(sien, rule).run();
}

// One of the two commands.
struct ReferenceRun {
    const DesignKind& kind;
    const ErrorPlace& place;
    std::int16_t SupportState::*selected;
    ComboBox FrmSien::*list;
    TextView message, objectMessage, moduleMessage; // of the run, and of the chosen object
    void (*scan)(FrmSien& sien, std::int16_t objectNo);
};

const ReferenceRun formRun{formKind,
                           places::referencesOfForms,
                           &SupportState::SienSelForm,
                           &FrmSien::cboForm,
                           u"ｵﾌﾞｼﾞｪｸﾄ参照元情報(ﾌｫｰﾑ)",
                           u"ﾌｫｰﾑｵﾌﾞｼﾞｪｸﾄ情報　取得中",
                           u"ﾌｫｰﾑﾓｼﾞｭｰﾙ情報　取得中",
                           ScanFormReferences};
const ReferenceRun reportRun{reportKind,
                             places::referencesOfReports,
                             &SupportState::SienSelReport,
                             &FrmSien::cboReport,
                             u"ｵﾌﾞｼﾞｪｸﾄ参照元情報(ﾚﾎﾟｰﾄ)",
                             u"ﾚﾎﾟｰﾄｵﾌﾞｼﾞｪｸﾄ情報　取得中",
                             u"ﾚﾎﾟｰﾄﾓｼﾞｭｰﾙ情報　取得中",
                             ScanReportReferences};

void readObject(FrmSien& sien, const ReferenceRun& run, const Text& name, const Text& keptName,
                const Text& objectMessage, const Text& moduleMessage) {
    AnalysisContext& context = sien.context;
    withDesign(context, run.kind, name, [&] {
        const access::Designed& design = need(context.CurDesign);
        increment(context.ObjectNo);
        sien.state.LinkObjectName = keptName;
        showMessage(sien.gauge, objectMessage);
        run.scan(sien, context.ObjectNo);
        if (design.HasModule()) {
            // The preparation has said of a compiled file what is missing.
            missingSource([&] {
                readModule(context, design.Module(), [&] {
                    showMessage(sien.gauge, moduleMessage);
                    sien.state.LinkCallerKind = u"ﾓｼﾞｭｰﾙ";
                    ScanProcedureCalls(sien, context.ObjectNo);
                });
            });
        }
    });
}

void readAllObjects(FrmSien& sien, const ReferenceRun& run) {
    AnalysisContext& context = sien.context;
    context.CurContainer = &need(context.TargetDb).Containers().Item(run.kind.container);
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        const Text name = document->Name();
        const Text keptName = cutText(name, nameLength);
        readObject(sien, run, name, keptName, keptName + u"(ｵﾌﾞｼﾞｪｸﾄ情報)　取得中",
                   keptName + u"(ﾓｼﾞｭｰﾙ情報)　取得中");
        SetGauge(sien.gauge, percentOf(context.ObjectNo, context.*run.kind.count));
    }
}

void listReferences(FrmSien& sien, const ReferenceRun& run) {
    AnalysisContext& context = sien.context;
    reopenTarget(context);
    context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
    context.WorkRs1 = context.WorkDb->OpenRecordset(u"T_RvLinkObject");
    context.WorkRs2 = context.WorkDb->OpenRecordset(u"T_RvLinkModule");
    beginRun(sien);
    showMessage(sien.gauge, run.message);
    context.WorkDb->Execute(u"delete * from T_RvLinkObject;");
    context.WorkDb->Execute(u"delete * from T_RvLinkModule;");
    sien.state.LinkMidasi = 1;
    if (sien.state.*run.selected == allObjects) {
        readAllObjects(sien, run);
    } else {
        const Text name = (sien.*run.list).Text();
        readObject(sien, run, name, name, Text(run.objectMessage), Text(run.moduleMessage));
    }
    need(context.WorkRs1).Close();
    need(context.WorkRs2).Close();
    endRun(sien);
    ShowReport(context, u"R_RvLinkObject", previewMode);
}

void runReferences(FrmSien& sien, const ReferenceRun& run) {
    guarded(sien.context, run.place, sien, [&] { listReferences(sien, run); });
}

} // namespace

void cmdLinkForm_Click(FrmSien& sien) {
    runReferences(sien, formRun);
}

void cmdLinkReport_Click(FrmSien& sien) {
    runReferences(sien, reportRun);
}

void ScanFormReferences(FrmSien& sien, std::int16_t objectNo) {
    scanReferences(sien, formRule, objectNo);
}

void ScanReportReferences(FrmSien& sien, std::int16_t objectNo) {
    scanReferences(sien, reportRule, objectNo);
}

void AddLinkObjectRow(FrmSien& sien) {
    const SupportState& state = sien.state;
    Recordset& row = need(sien.context.WorkRs1);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{sien.context.ObjectNo});
    row.Collect(u"ObjectName", state.LinkObjectName);
    row.Collect(u"ControlNo", std::int64_t{state.LinkControlNo});
    row.Collect(u"PropertyNo", std::int64_t{state.LinkPropertyNo});
    row.Collect(u"Bunrui", state.LinkBunrui);
    row.Collect(u"ControlName", state.LinkControlName);
    row.Collect(u"ControlBunrui", GetControlTypeLabel(state.LinkControlKind));
    row.Collect(u"PropertyName", state.LinkPropertyName);
    row.Collect(u"PropertyValue", state.LinkPropertyValue);
    row.Collect(u"MotoName", state.LinkMotoName);
    row.Collect(u"Midasi", std::int64_t{state.LinkMidasi});
    row.Update();
}

} // namespace relvane
