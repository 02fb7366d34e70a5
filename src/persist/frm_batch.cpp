#include "persist/frm_batch.h"

#include "core/error_report.h"
#include "core/file_dialogs.h"
#include "core/file_name_parts.h"
#include "core/panels.h"
#include "core/program_end.h"
#include "persist/batch_run.h"
#include "persist/pattern_file.h"

namespace relvane {
namespace {

using B = FrmBatch;
using C = AnalysisContext;

constexpr std::int16_t ticked = 1, clear = 0;
constexpr std::int16_t everyKindOfObject = 7; // the option of the object list
constexpr TextView extension = u".apt";

// A box with its options. Where the done flag in `lack` says that the target has no such object, the value says so too,
// whatever the tick.
struct BatchKind {
    CheckBox B::*box;
    OptionGroup B::*options; // nullptr for the comments, which have none
    ContextNumber value, option, lack;
    int defaultOption; // index
};

// clang-format off
constexpr BatchKind kinds[] = {
    {&B::chkTbl,     &B::optTbl,     &C::BatchTable,   &C::OptTable,   &C::DoneTable,  1},
    {&B::chkQery,    &B::optQery,    &C::BatchQuery,   &C::OptQuery,   &C::DoneQuery,  2},
    {&B::chkForm,    &B::optForm,    &C::BatchForm,    &C::OptForm,    &C::DoneForm,   0},
    {&B::chkRep,     &B::optRep,     &C::BatchReport,  &C::OptReport,  &C::DoneReport, 0},
    {&B::chkMac,     &B::optMac,     &C::BatchMacro,   &C::OptMacro,   &C::DoneMacro,  1},
    {&B::chkProc,    &B::optProc,    &C::BatchProc,    &C::OptProc,    &C::DoneModule, 1},
    {&B::chkMod,     &B::optMod,     &C::BatchModule,  &C::OptModule,  &C::DoneModule, 2},
    {&B::chkModStep, &B::optModStep, &C::BatchModStep, &C::OptModStep, &C::DoneModule, 3},
    {&B::chkControl, &B::optControl, &C::BatchControl, &C::OptControl, nullptr,        0},
    {&B::chkFile,    &B::optFile,    &C::BatchFile,    &C::OptFile,    nullptr,        0},
    {&B::chkComent,  nullptr,        &C::BatchComment, nullptr,        nullptr,        0},
};
// clang-format on

void setEnabled(OptionGroup& options, bool enabled) {
    for (int index = 0; index < options.count(); ++index) {
        options(index).Enabled = enabled;
    }
}

void takeTick(B& batch, const BatchKind& kind) {
    AnalysisContext& context = batch.context;
    const bool isTicked = (batch.*kind.box).Value == ticked;
    context.*kind.value = isTicked ? ticked : clear;
    if (kind.options != nullptr) {
        setEnabled(batch.*kind.options, isTicked);
    }
    if (kind.lack != nullptr && context.*kind.lack == noSuchObject) {
        context.*kind.value = noSuchObject;
    }
}

// The box as its value says, as if it had been clicked; then the option.
void showKind(B& batch, const BatchKind& kind) {
    const bool isTicked = batch.context.*kind.value == ticked;
    (batch.*kind.box).Value = isTicked ? 1 : 0;
    takeTick(batch, kind);
    if (isTicked && kind.options != nullptr) {
        (batch.*kind.options).set(batch.context.*kind.option - 1);
    }
}

Text patternFilter() {
    return fileFilter(u"解析ﾊﾟﾀｰﾝ(*.apt)", u"*.apt");
}

void say(AnalysisContext& context, TextView text) {
    context.platform.dialogs->MsgBox(Text(text), okOnly, Text(programTitle));
}

} // namespace

FrmBatch::FrmBatch(AnalysisContext& owner) : Form("frmBatch", u"一括処理"), context(owner) {
    linGuage.Visible = false;
    Load = [this] { Form_Load(); };
    chkObj.Click = [this] { chkObj_Click(); };
    for (const BatchKind& kind : kinds) {
        (this->*kind.box).Click = [this, &kind] { takeTick(*this, kind); };
        if (kind.options != nullptr) {
            (this->*kind.options).Click = [this, &kind](int index) {
                context.*kind.option = static_cast<std::int16_t>(index + 1);
            };
        }
    }
    chkLink.Click = [this] { context.LinkExclude = chkLink.Value == 1 ? 2 : 1; };
    cmdSave.Click = [this] { cmdSave_Click(); };
    cmdRead.Click = [this] { cmdRead_Click(); };
    cmdExec.Click = [this] { cmdExec_Click(*this); };
}

// The options are those of the main window, whose buttons stay as they are.
void FrmBatch::Form_Load() {
    for (const BatchKind& kind : kinds) {
        if (kind.options != nullptr) {
            (this->*kind.options).set(kind.defaultOption);
            context.*kind.option = static_cast<std::int16_t>(kind.defaultOption + 1);
        }
    }
    BatchOptionsOff();
    context.OptObject = everyKindOfObject;
    chkLink.Value = 1;
    context.LinkExclude = 2;
    Percent = 0;
    hideGauge(gauge);
}

void FrmBatch::BatchOptionsOff() {
    for (const BatchKind& kind : kinds) {
        if (kind.options != nullptr) {
            setEnabled(this->*kind.options, false);
        }
    }
}

void FrmBatch::chkObj_Click() {
    context.BatchObject = chkObj.Value == 1 ? ticked : clear;
    if (chkObj.Value == 1) {
        context.OptObject = everyKindOfObject;
    }
}

void FrmBatch::cmdSave_Click() {
    guarded(context, places::batch, *this, [this] {
        const Text chosen = ShowSaveDialog(context, patternFilter(), context.platform.files->currentFolder(),
                                           u"解析用パターンの保存");
        const Text path = withExtension(chosen, extension);
        if (path == extension) { // cancelled, or nothing but the extension
            return;
        }
        if (context.platform.files->isSameFile(path, context.frmRelvane.lblDBName.Caption)) {
            throw RunTimeError(ErrorNumber::PermissionDenied, path); // the target itself is never written
        }
        writePattern(context, path);
        say(context, u"解析パターン登録が完了しました。");
    });
}

void FrmBatch::cmdRead_Click() {
    guarded(context, places::batch, *this, [this] {
        const Text path = ShowOpenDialog(context, patternFilter(), context.platform.files->currentFolder(),
                                         u"解析用パターンの選択");
        if (path.empty()) {
            return;
        }
        ReadPattern(context, path);
        const bool objects = context.BatchObject == ticked;
        chkObj.Value = objects ? 1 : 0;
        chkObj_Click();
        context.OptObject = objects ? everyKindOfObject : 0;
        for (const BatchKind& kind : kinds) {
            showKind(*this, kind);
        }
        say(context, u"解析パターンを読み込みました。");
    });
}

void FrmBatch::LeaveAtOnce() {
    skipErrors([this] { need(context.TargetApp).CloseCurrentDatabase(); });
    context.TargetDb.reset();
    context.TargetApp.reset();
    context.ReportApp.reset();
    context.ScreenSaverResult = context.platform.system->setScreenSaverActive(true);
    throw ProgramEnd();
}

} // namespace relvane
