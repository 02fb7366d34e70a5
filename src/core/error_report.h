// What a command says when it fails: which box for which error number, under which name of a place, and whether the
// program goes on. The boxes, the places and their special numbers are tables of data; one function shows them.
#pragma once

#include <array>
#include <functional>
#include <initializer_list>
#include <span>

#include "core/analysis_context.h"

namespace relvane {

// What stands before the lines of a box: nothing, "場所:<place>" with the first line directly behind it, or
// "場所:<place>ｴﾗｰNo:<number>" on a line of its own.
enum class BoxHead { None, Place, PlaceAndNumber };

struct ErrorBox {
    BoxHead head;
    std::array<TextView, 3> lines; // as many as are not empty
    bool description;              // a last line "内容:" with the error's description
};

enum class Afterwards { GoOn, ExitProgram };

// A range of error numbers and what is done about it. Without a box the error passes silently.
struct ErrorRule {
    int first, last;
    const ErrorBox* box;
    Afterwards afterwards;
};

struct ErrorPlace {
    TextView name;
    std::span<const ErrorRule> rules; // the first that fits counts
    const ErrorBox& otherwise;        // and the program goes on
};

// A link whose source is not where it was; also shown where no error happened.
extern const ErrorBox brokenLinkBox;

// The places, named for the commands they stand for.
namespace places {
extern const ErrorPlace selection;
extern const ErrorPlace tableAnalysis;
extern const ErrorPlace queryAnalysis;
extern const ErrorPlace formAnalysis;
extern const ErrorPlace reportAnalysis;
extern const ErrorPlace procedureList;
extern const ErrorPlace moduleListing;
extern const ErrorPlace stepCounts;
extern const ErrorPlace macroAnalysis;
extern const ErrorPlace controlCounts;
extern const ErrorPlace commentList;
extern const ErrorPlace fileList;
extern const ErrorPlace coverPage;
extern const ErrorPlace reportPreview;
extern const ErrorPlace screenCapture;
extern const ErrorPlace imageViewer;
extern const ErrorPlace saving;
extern const ErrorPlace loading;
extern const ErrorPlace printSettings;
extern const ErrorPlace batch;
extern const ErrorPlace tableUsage, specifications;
extern const ErrorPlace textExportSql, textExportModule;
extern const ErrorPlace csvExportObject, csvExportTable, csvExportQuery, csvExportForm, csvExportReport,
    csvExportMacro;
extern const ErrorPlace referencesOfForms, referencesOfReports, procedureReferences, variables, comparison,
    preparation;
extern const ErrorPlace about;
} // namespace places

void showErrorBox(AnalysisContext& context, const ErrorPlace& place, const ErrorBox& box,
                  const RunTimeError& error);

// Shows the box for the error. Either the program ends as by its exit menu (ProgramEnd is thrown), or the pointer is
// normal, `window` enabled, and the command is over.
void reportError(AnalysisContext& context, const ErrorPlace& place, const RunTimeError& error, Form& window);

// Runs a command of that window; a run-time error in it is reported. Returns its number, 0 when the command ran to its
// end.
int guarded(AnalysisContext& context, const ErrorPlace& place, Form& window,
            const std::function<void()>& command);
// The same for a command of the main window.
int guarded(AnalysisContext& context, const ErrorPlace& place, const std::function<void()>& command);

} // namespace relvane
