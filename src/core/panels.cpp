#include "core/panels.h"

namespace relvane {
namespace {

using C = AnalysisContext;
using F = FrmRelvane;

constexpr PanelScope tableScope{&F::optTSelect, &F::cboTable, &C::SelTable, &C::LastTable};
constexpr PanelScope queryScope{&F::optQSelect, &F::cboQuery, &C::SelQuery, &C::LastQuery};
constexpr PanelScope formScope{&F::optFSelect, &F::cboForm, &C::SelForm, &C::LastForm};
constexpr PanelScope reportScope{&F::optRSelect, &F::cboReport, &C::SelReport, &C::LastReport};
constexpr PanelScope macroScope{&F::optMcSelect, &F::cboMacro, &C::SelMacro, &C::LastMacro};

// clang-format off
constexpr Panel table[] = {
    {&F::optObject,  6, &C::OptObject,  &C::DoneObject,  &F::cmdObject,  &F::cmdOPre,  nullptr},
    {&F::optTable,   1, &C::OptTable,   &C::DoneTable,   &F::cmdTable,   &F::cmdTPre,  &tableScope},
    {&F::optQuery,   2, &C::OptQuery,   &C::DoneQuery,   &F::cmdQuery,   &F::cmdQPre,  &queryScope},
    {&F::optForm,    0, &C::OptForm,    &C::DoneForm,    &F::cmdForm,    &F::cmdFPre,  &formScope},
    {&F::optReport,  0, &C::OptReport,  &C::DoneReport,  &F::cmdReport,  &F::cmdRPre,  &reportScope},
    {&F::optProc,    1, &C::OptProc,    &C::DoneProc,    &F::cmdProc,    &F::cmdPPre,  nullptr},
    {&F::optModule,  2, &C::OptModule,  &C::DoneModule,  &F::cmdModule,  &F::cmdMPre,  nullptr},
    {&F::optModStep, 3, &C::OptModStep, &C::DoneModStep, &F::cmdModStep, &F::cmdMsPre, nullptr},
    {&F::optMacro,   1, &C::OptMacro,   &C::DoneMacro,   &F::cmdMacro,   &F::cmdMCPre, &macroScope},
    {&F::optControl, 0, &C::OptControl, &C::DoneControl, &F::cmdControl, &F::cmdCPre,  nullptr},
    {&F::optFile,    0, &C::OptFile,    &C::DoneFile,    &F::cmdFile,    &F::cmdFlPre, nullptr},
};
// clang-format on

constexpr CommandButton F::*actions[] = {&F::cmdObject, &F::cmdTable,   &F::cmdQuery,   &F::cmdProc,
                                         &F::cmdModule, &F::cmdModStep, &F::cmdControl, &F::cmdFile,
                                         &F::cmdForm,   &F::cmdReport,  &F::cmdFmImage, &F::cmdComment,
                                         &F::cmdMacro};

constexpr CommandButton F::*previews[] = {&F::cmdOPre, &F::cmdTPre,  &F::cmdQPre,  &F::cmdPPre,
                                          &F::cmdMPre, &F::cmdMsPre, &F::cmdCPre,  &F::cmdFlPre,
                                          &F::cmdFPre, &F::cmdRPre,  &F::cmdCmPre, &F::cmdMCPre};

} // namespace

std::span<const Panel> panels() {
    return table;
}

const Panel& panelOf(CommandButton FrmRelvane::*action) {
    for (const Panel& panel : table) {
        if (panel.action == action) {
            return panel;
        }
    }
    throw RunTimeError(ErrorNumber::InvalidProcedureCall);
}

std::span<CommandButton FrmRelvane::*const> actionButtons() {
    return actions;
}

std::span<CommandButton FrmRelvane::*const> previewButtons() {
    return previews;
}

void setActionButtonsEnabled(FrmRelvane& form, bool enabled) {
    for (const auto button : actions) {
        (form.*button).Enabled = enabled;
    }
    for (CommandButton& button : form.cmdHyousiButtons) {
        button.Enabled = enabled;
    }
}

void disablePreviewButtons(FrmRelvane& form) {
    for (const auto button : previews) {
        (form.*button).Enabled = false;
    }
    form.cmdSave.Enabled = false;
}

} // namespace relvane
