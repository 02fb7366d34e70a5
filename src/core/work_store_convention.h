// How every analysis that a panel's button starts fills its tables and shows its report. An analysis says what is its
// own; the steps stand here alone.
//
//     runAnalysis(context, {.tables = {u"T_RvObject", u"T_DataBase"},
//                           .workingMessage = u"データベース情報　取得中",
//                           .walk = [&](auto progress) { ... context.WorkRs1->AddNew(); ... return WalkEnd::Complete; },
//                           .showReport = [&] { ShowReport(context, u"R_RvObjectAll", previewMode); },
//                           .preview = &context.frmRelvane.cmdOPre,
//                           .option = context.OptObject,
//                           .done = &context.DoneObject});
#pragma once

#include <functional>
#include <vector>

#include "core/analysis_context.h"
#include "core/panels.h"

namespace relvane {

// How a walk ended. Behind a stopped one the cursors stay open, and the run goes on with the rows there are.
enum class WalkEnd { Complete, Stopped };

// Whether the main window's message line and gauge follow a walk.
inline constexpr std::int16_t withoutGauge = 0, withGauge = 1;

struct AnalysisSpec {
    // One to three, opened in this order as WorkRs1 to WorkRs3, emptied in this order unless `emptied` names another. An
    // empty name leaves the cursor of that place as it is.
    std::vector<TextView> tables;
    TextView workingMessage;
    std::function<WalkEnd(std::int16_t progress)> walk; // writes the rows; ObjectNo is 0 before it
    std::function<void()> showReport;                   // opens the report for the present option
    CommandButton* preview = nullptr;                   // opened after the run
    std::int16_t option = 0;                            // of this run
    std::int16_t* done = nullptr; // the panel's done flag; nullptr for a panel that has none and always runs
    // Whether the tables already hold what the panel asks for. Left out: the done flag equals the option.
    std::function<bool()> isDone = {};
    std::vector<TextView> emptied = {};
};

// For panels with a choice of scope. The tables hold what is asked for when the option is the same, and either all
// objects were wanted and are again, or one is and the remembered name is the one in the list.
bool isRepeated(const AnalysisContext& context, const Panel& panel);

// Remembers, behind a run, which scope it had. The name is told apart, since each kind of run has its own moment to
// remember it.
void rememberScope(AnalysisContext& context, const Panel& panel, std::int16_t scope);
void rememberName(AnalysisContext& context, const Panel& panel);

// Puts a message behind a finished run: print, then close the preview; both disappear after five seconds.
void announceReport(FrmRelvane& form);

// Opens the tables in the open work database, empties them, walks, closes the cursors. The main window shows nothing of
// it. A failure leaves the rows written so far.
WalkEnd fillTables(AnalysisContext& context, const AnalysisSpec& spec);

// What a panel's button does: fills the tables unless they hold the result already, shows the report, opens the preview
// button.
void runAnalysis(AnalysisContext& context, const AnalysisSpec& spec);

} // namespace relvane
