// The state of the running program: one instance, alive as long as the program, read and written by everything.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "core/frm_relvane.h"
#include "platform/system_services.h"

namespace relvane {

// What the tables of a panel with a choice of scope were last filled with.
struct LastRun {
    std::int16_t scope = 0;       // 1 all, 2 the chosen one
    Text name;                    // of the list, as each kind of run remembers it
    std::int16_t linkExclude = 0; // tables only: the link filter behind the run
};

// The control at which a walk over a form or report stands, and what its next row says. Nothing resets ControlNo: it
// counts the controls of all forms and reports for as long as the program runs.
struct CurrentControl {
    std::int16_t ControlNo = 0;
    std::int16_t PropertyNo = 0; // of the row within the control, from 1
    Text ControlName;
    Text ControlTypeName; // the English word
    Text ControlVisible;  // True or False
    Text ControlTLWH;     // top, left, width and height in centimetres
    Text PropertyGroup, PropertyLabel, PropertyText;
};

// Where the scanners of source stand. One state for all of them: what none of them resets runs on from object to object,
// and from one list to the next.
struct ScanState {
    const access::Module* CurModule = nullptr; // of the object being read, only while it is
    Text CurObjectKind;                        // Form, Report or Module; in the module listing 1, 2 or 3
    std::int32_t ModuleLineCount = 0, DeclLineCount = 0;
    std::int16_t ProcNo = 0;
    std::int32_t ProcLineNo = 0;
    Text CurProcName; // of the line before; empty in the declarations
    std::int32_t CurProcKind = 0;
    std::int32_t LineIndex = 0; // from 1
    Text CodeLine, NextCodeLine;

    // Step counts: what was counted since the last row, and of which object.
    std::int16_t CommentLines = 0, BlankLines = 0;
    std::int32_t TotalLines = 0;
    Text LastObjectName;

    // The macro in hand, and what its next row takes along.
    Text MacroName, MacroComment, MacroCondition, ArgText;
    std::int16_t ActionNo = 0, ArgNo = 0;
};

struct AnalysisContext {
    AnalysisContext(Platform& platform, FrmRelvane& frmRelvane)
        : platform(platform), frmRelvane(frmRelvane) {}

    Platform& platform;
    FrmRelvane& frmRelvane;

    // Places. ProgramFolder ends in a separator.
    Text ProgramFolder;
    Text WorkDbPath;
    Text IniPath;

    // The target, open twice: for Access's answers and for DAO's.
    std::shared_ptr<access::Application> TargetApp;
    std::shared_ptr<dao::Database> TargetDb;
    // In the place of a target: the analysis file that is loaded.
    std::shared_ptr<RowStore> SavedDb;
    // The analysis file that the target is compared with.
    std::shared_ptr<access::Application> CompareApp;
    std::shared_ptr<RowStore> CompareDb;
    // Shows the reports of the work database.
    std::shared_ptr<access::Application> ReportApp;
    // The spreadsheet program with the workbooks of the exports; it outlives each of them.
    std::shared_ptr<spreadsheet::Application> ExcelApp;

    // The work database and its cursors, shared by all analyses in turn. Each replaces what the last one left.
    std::shared_ptr<RowStore> WorkDb;
    std::unique_ptr<Recordset> WorkRs1, WorkRs2, WorkRs3;
    std::int16_t ObjectNo = 0;

    // Loop variables of the walks. They point into TargetDb and are cleared when it is replaced.
    dao::TableDef* CurTableDef = nullptr;
    dao::QueryDef* CurQueryDef = nullptr;
    dao::Container* CurContainer = nullptr;
    dao::Document* CurDocument = nullptr;
    Text CurrentKind;

    // The form or report that a walk has open in TargetApp, only while it has.
    access::Designed* CurDesign = nullptr;
    access::Report* CurReport = nullptr; // the same when it is a report
    Text CurDesignName;
    CurrentControl CurControl;
    ScanState Scan;

    // The control counts of one form or report, in the order of their table, and the word for its kind.
    std::array<std::int16_t, 19> ControlCounters{};
    Text CountedClass;

    std::int16_t AnalysisMode = 0; // one of the modes below

    // Done flags: 0 not analysed since the selection, noSuchObject, or the option the tables were filled with.
    std::int16_t DoneObject = 0, DoneTable = 0, DoneQuery = 0, DoneForm = 0, DoneReport = 0, DoneProc = 0,
                 DoneModule = 0, DoneModStep = 0, DoneMacro = 0, DoneControl = 0, DoneFile = 0;
    // The current option of each panel: index of the chosen button plus 1.
    std::int16_t OptObject = 0, OptTable = 0, OptQuery = 0, OptForm = 0, OptReport = 0, OptProc = 0,
                 OptModule = 0, OptModStep = 0, OptMacro = 0, OptControl = 0, OptFile = 0;
    std::int16_t OptModPrint = 0; // 1 one column, 2 two columns
    // What the batch runs: 1 ticked, 0 not, noSuchObject.
    std::int16_t BatchObject = 0, BatchTable = 0, BatchQuery = 0, BatchForm = 0, BatchReport = 0,
                 BatchMacro = 0, BatchProc = 0, BatchModule = 0, BatchModStep = 0, BatchControl = 0,
                 BatchFile = 0, BatchComment = 0;
    // 1 all objects of the kind, 2 the one chosen in the panel's list.
    std::int16_t SelTable = 0, SelQuery = 0, SelForm = 0, SelReport = 0, SelMacro = 0;
    LastRun LastTable, LastQuery, LastForm, LastReport, LastMacro;
    std::int16_t SortProc = 0, SortModule = 0; // 1 the report in kana order
    std::int16_t LinkExclude = 0;              // 2 linked tables are left out, 1 they are not

    // Number of objects of each kind, counted at the selection.
    std::int16_t TableCount = 0, QueryCount = 0, FormCount = 0, ReportCount = 0, ModuleCount = 0,
                 MacroCount = 0;
    std::int16_t LinkTableCount = 0;
    bool HasAutoExec = false;

    // Start-up properties of the target as found.
    Text OldStartupForm;
    bool OldStartupShowDBWindow = true, OldAllowFullMenus = true;
    Text AppTitleText, StartupMenuBarText;
    bool StartupStatusBarFlag = false, StartupShortcutFlag = false, StartupToolbarFlag = false;

    // Basic information for the cover, and the wait of the screen capture.
    Text CoverTitle, CoverCompany, CoverDepartment, CaptureSeconds;
    std::int32_t CaptureMilliseconds = 0;
    std::int16_t CaptureDesignView = 0;

    // Print settings: 1 when the box is ticked.
    std::int16_t PrintFileName = 0, PrintFullPath = 0, PrintFreeText = 0;
    Text PrintChoice;

    Text FileFilter, ChosenFile;
    Text LastFolder; // a first letter "0" means none
    std::array<Text, 4> RecentList;

    std::int32_t ScreenSaverResult = 0;
    int ExitArmed = 0; // result of the exit box

    std::int16_t SienReady = 0; // 1 once the developer support is prepared
};

inline constexpr std::int16_t modeNone = 0, modeTarget = 1, modeSavedFile = 2;
inline constexpr std::int16_t noSuchObject = 9;

// A shared object that a step needs: error 91 when it is not there.
template <class Pointer>
auto& need(const Pointer& object) {
    if (!object) {
        throw RunTimeError(ErrorNumber::ObjectNotSet);
    }
    return *object;
}

// Puts the rows written so far into the file: before anything is shown to a person while an analysis may be unfinished,
// and before somebody else reads them. What cannot be written is found out by the next step that writes.
inline void flushWorkStore(AnalysisContext& context) {
    if (context.WorkDb) {
        skipErrors([&] { context.WorkDb->flush(); });
    }
}

} // namespace relvane
