#include "code/procedure_list.h"

#include <algorithm>

#include "code/dim_call_row.h"
#include "code/module_walk.h"
#include "core/error_report.h"
#include "core/text_functions.h"
#include "objects/object_text.h"
#include "output/report_show.h"

namespace relvane {
namespace {

constexpr std::int16_t detailedList = 2;
constexpr std::int64_t nameLength = 150;
constexpr std::int64_t longestHeader = 255;

constexpr TextView procedureWords[] = {u"FUNCTION ", u"SUB ", u"PROPERTY "};

struct ProcedureType {
    TextView beginning; // in capitals
    TextView word;
};

constexpr ProcedureType procedureTypes[] = {
    {u"PROPERTY GET", u"Property Get"},
    {u"PROPERTY LET", u"Property Let"},
    {u"PROPERTY SET", u"Property Set"},
    {u"FUNCTION", u"Function"},
    {u"SUB", u"Sub"},
};

// The word before a header. What stands behind it is kept.
struct HeaderScope {
    TextView beginning; // in capitals
    bool isPrivate;
    std::int64_t behind; // where the rest begins
};

constexpr HeaderScope headerScopes[] = {
    {u"PRIVATE", true, 8},
    {u"PUBLIC ", false, 7},
};

Text classOf(const ScanState& scan) {
    if (scan.CurObjectKind != u"Module") {
        return scan.CurObjectKind;
    }
    return scan.CurObjectKind + (need(scan.CurModule).Type() == 0 ? u"(Standard)" : u"(Class)");
}

Recordset& beginRow(AnalysisContext& context, const Text& objectClass, const Text& procedureName) {
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"Object", objectClass);
    row.Collect(u"ObjectName", sourceObjectName(context));
    row.Collect(u"ProcedureName", procedureName);
    return row;
}

void endRow(AnalysisContext& context, Recordset& row, std::int32_t lines) {
    row.Collect(u"Line", std::int64_t{lines});
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"ProcedureNo", std::int64_t{context.Scan.ProcNo});
    row.Collect(u"pLine", std::int64_t{context.Scan.ProcLineNo});
    row.Collect(u"Midasi", std::int64_t{context.OptProc});
    row.Update();
}

void addDeclarationsRow(AnalysisContext& context) {
    ++context.Scan.ProcLineNo;
    Recordset& row = beginRow(context, classOf(context.Scan), u"(Declarations)");
    row.Collect(u"PrivatePublic", true);
    endRow(context, row, context.Scan.DeclLineCount);
}

// `capitals` is CodeLine in capitals. A name without a blank behind it is error 5.
void addApiRow(AnalysisContext& context, TextView capitals) {
    ScanState& scan = context.Scan;
    increment(scan.ProcNo);
    const bool isFunction = holds(capitals, u"FUNCTION ");
    const TextView word = isFunction ? u"FUNCTION " : u"SUB ";
    const std::int32_t name = InStr(capitals, word) + static_cast<std::int32_t>(word.size());
    const std::int32_t nameEnd = InStr(name, scan.CodeLine, u" ");
    Recordset& row =
        beginRow(context, scan.CurObjectKind + u"(Api)", Mid(scan.CodeLine, name, nameEnd - name));
    row.Collect(u"Type", Text(isFunction ? u"Function" : u"Sub"));
    row.Collect(u"PrivatePublic", capitals.starts_with(u"PRIVATE "));
    endRow(context, row, 0);
}

// Takes the word for the scope off the header.
void writeScope(Recordset& row, Text& header) {
    const Text beginning = UCase(Left(header, 7));
    for (const HeaderScope& scope : headerScopes) {
        if (beginning == scope.beginning) {
            row.Collect(u"PrivatePublic", scope.isPrivate);
            header = Trim(Mid(header, scope.behind, longestHeader));
            return;
        }
    }
}

void writeType(Recordset& row, TextView header) {
    const Text capitals = UCase(header);
    for (const ProcedureType& type : procedureTypes) {
        if (capitals.starts_with(type.beginning)) {
            row.Collect(u"Type", Text(type.word));
            return;
        }
    }
}

// The parameters reach from the first "(" to the last ")", and the type of the result is looked for behind them.
void writeParametersAndResult(Recordset& row, TextView header) {
    const std::int32_t open = InStr(header, u"(");
    const std::int32_t close = std::max(open, static_cast<std::int32_t>(header.rfind(u')') + 1));
    if (close - open > 1) {
        row.Collect(u"Parameters", Mid(header, open + 1, close - open - 1));
    }
    const std::int32_t result = InStr(std::max(close, 1), header, u"As");
    if (result != 0) {
        row.Collect(u"As", Mid(header, result + 3));
    }
}

// A header goes on in one further line at most.
void addProcedureRow(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    const access::Module& module = need(scan.CurModule);
    Recordset& row = beginRow(context, classOf(scan), scan.CurProcName);
    scan.NextCodeLine = LTrim(module.Lines(scan.LineIndex + 1, 1));
    if (scan.CodeLine.ends_with(u" _")) {
        scan.CodeLine += scan.NextCodeLine;
    }
    writeScope(row, scan.CodeLine);
    writeType(row, scan.CodeLine);
    writeParametersAndResult(row, scan.CodeLine);
    endRow(context, row, module.ProcCountLines(scan.CurProcName, scan.CurProcKind));
    scan.CodeLine.clear();
}

// Numbers the procedure of the line. The property procedures of one name are told apart by their headers, so that any
// line with that word counts.
void countProcedure(ScanState& scan, TextView name, TextView capitals) {
    if (name != scan.CurProcName) {
        increment(scan.ProcNo);
        scan.CurProcName = cutText(name, nameLength);
    } else if (holds(capitals, u"PROPERTY ")) {
        increment(scan.ProcNo);
    }
}

void scanLine(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    const access::Module& module = need(scan.CurModule);
    const TextView line = module.Lines(scan.LineIndex, 1);
    const Text lineCapitals = UCase(line);
    countProcedure(scan, module.ProcOfLine(scan.LineIndex, scan.CurProcKind), lineCapitals);
    scan.CodeLine = TrimView(line);
    ++scan.ProcLineNo;
    const TextView capitals = TrimView(lineCapitals);
    if (capitals.empty() || capitals.starts_with(u"OPTION ") || capitals.starts_with(u'\'')) {
        return;
    }
    if (holds(capitals, u"DECLARE ")) {
        addApiRow(context, capitals);
    } else if (std::ranges::any_of(procedureWords, [&](TextView word) { return holds(capitals, word); })) {
        addProcedureRow(context);
    } else if (context.OptProc == detailedList && isDimCall(LTrimView(lineCapitals))) {
        scan.NextCodeLine = LTrimView(line);
        AddDimCallRow(context);
    }
}

} // namespace

AnalysisSpec procedureAnalysis(AnalysisContext& context) {
    return {.tables = {u"T_RvProcName", u"T_RvDimCall"},
            .workingMessage = u"プロシージャ情報　取得中",
            .walk =
                [&context](std::int16_t progress) {
                    walkSources(context, everyKind, progress,
                                [&](const SourceKind&) { ScanProcedures(context); });
                    return WalkEnd::Complete;
                },
            .showReport =
                [&context] { ShowReport(context, reportOf(context, &FrmRelvane::cmdPPre), previewMode); },
            .preview = &context.frmRelvane.cmdPPre,
            .option = context.OptProc,
            .done = &context.DoneProc};
}

void cmdProc_Click(AnalysisContext& context) {
    guarded(context, places::procedureList, [&context] { runAnalysis(context, procedureAnalysis(context)); });
}

void ScanProcedures(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    scan.ProcLineNo = 0;
    scan.CurProcName.clear();
    scan.ProcNo = 0;
    if (scan.DeclLineCount != 0) {
        addDeclarationsRow(context);
    }
    for (scan.LineIndex = 1; scan.LineIndex <= scan.ModuleLineCount; ++scan.LineIndex) {
        scanLine(context);
    }
}

} // namespace relvane
