#include "code/macro_scan.h"

#include <optional>

#include "code/macro_words.h"
#include "core/text_functions.h"

namespace relvane {
namespace {

constexpr std::int16_t detailedList = 2; // option
constexpr std::int16_t mostArguments = 10, noMoreArguments = 99;
constexpr std::int32_t plainProcedure = 0; // kind

constexpr std::int64_t shortText = 150, longText = 170;

// The numbers of actions that the scan itself gives or asks for.
enum MacroAction : std::int16_t {
    runSql = 1,
    runApp = 2,
    cancelEvent = 3,
    sendKeys = 11,
    runCommand = 13,
    goToControl = 14,
    transferDatabase = 17,
    transferText = 19,
    runCode = 22,
    stopMacro = 25,
    setWarnings = 26,
    messageBox = 27,
    otherTransfer = 34,
    beep = 36,
    restore = 37,
    hourglass = 38,
    requery = 39,
    minimize = 40,
    maximize = 41,
    findNext = 42,
    quit = 43,
    endMacros = 45,
    showAllRecords = 46,
    setValue = 47,
};

// A line as it stands, and in capitals; CodeLine is the line trimmed.
struct MacroLine {
    TextView raw;
    Text capitals;

    TextView trimmedCapitals() const { return TrimView(capitals); }
};

TextView lineAt(const ScanState& scan, std::int32_t line) {
    return need(scan.CurModule).Lines(line, 1);
}

MacroLine readLine(ScanState& scan) {
    const TextView raw = lineAt(scan, scan.LineIndex);
    scan.CodeLine = TrimView(raw);
    return {raw, UCase(raw)};
}

// Behind it the function deals with errors only.
bool isTail(const MacroLine& line) {
    return holds(line.capitals, u"_EXIT") || holds(line.capitals, u"ERROR$") ||
           holds(line.capitals, u"END FUNCTION");
}

bool holdsIf(const MacroLine& line) {
    return holds(line.trimmedCapitals(), u"IF ");
}

// A remark is taken to open its line, a condition too: their words are cut out by position.
void takeRemarkAndCondition(ScanState& scan, const MacroLine& line) {
    if (holds(scan.CodeLine, u"'")) {
        scan.MacroComment = Trim(Mid(scan.CodeLine, 2, shortText));
    }
    if (holdsIf(line)) {
        scan.MacroCondition = Trim(Mid(scan.CodeLine, 4, InStr(line.trimmedCapitals(), u"THEN") - 5));
    }
}

using NumberOf = std::optional<std::int16_t> (*)(const ScanState& scan, const MacroLine& line);

template <std::int16_t number>
std::optional<std::int16_t> always(const ScanState&, const MacroLine&) {
    return number;
}

std::optional<std::int16_t> ofMethod(const ScanState&, const MacroLine& line) {
    constexpr std::int64_t lengthOfDoCmd = 6, lengthOfPrefix = 5; // with the point
    const std::int64_t position = InStr(line.capitals, u"DOCMD");
    const std::int16_t number = GetMacroActionNo(Mid(line.raw, position + lengthOfDoCmd, lengthOfPrefix));
    if (number != unknownMacroAction) {
        return number;
    }
    return holds(line.capitals, u"DATABASE") ? transferDatabase
           : holds(line.capitals, u"TEXT")   ? transferText
                                             : otherTransfer;
}

// The beep of a message box belongs to that.
std::optional<std::int16_t> ofBeep(const ScanState& scan, const MacroLine&) {
    if (holds(UCase(lineAt(scan, scan.LineIndex + 1)), u"MSGBOX")) {
        return std::nullopt;
    }
    return beep;
}

// A condition that compares sets no value.
std::optional<std::int16_t> ofEqualsSign(const ScanState&, const MacroLine& line) {
    if (holdsIf(line)) {
        return std::nullopt;
    }
    return setValue;
}

struct ActionWord {
    TextView word;
    NumberOf number; // nothing: the line has no row of its own
};

// The first word that a line holds counts; a line with none of them is no action. SENDKEYS holds END, so its own number
// is not met.
constexpr ActionWord actionWords[] = {
    {u"DOCMD", ofMethod},
    {u"END", always<endMacros>},
    {u"BEEP", ofBeep},
    {u"MSGBOX", always<messageBox>},
    {u"SENDKEYS", always<sendKeys>},
    {u"CALL SHELL", always<runApp>},
    {u" = ", ofEqualsSign},
    {u"CALL", always<runCode>},
};

std::optional<std::int16_t> actionOf(const ScanState& scan, const MacroLine& line) {
    for (const ActionWord& action : actionWords) {
        if (holds(line.capitals, action.word)) {
            return action.number(scan, line);
        }
    }
    return std::nullopt;
}

// What stands behind the first word; all of it when there is one word alone.
Text behindFirstWord(const ScanState& scan, std::int64_t length) {
    return Trim(Mid(scan.CodeLine, InStr(scan.CodeLine, u" ") + 1, length));
}

void writeArgument(AnalysisContext& context, const Text& argument) {
    const ScanState& scan = context.Scan;
    Recordset& row = need(context.WorkRs2);
    row.AddNew();
    row.Collect(u"ProcedureNo", std::int64_t{scan.ProcNo});
    row.Collect(u"LineNo", std::int64_t{scan.LineIndex});
    row.Collect(u"Hikisu", argument);
    row.Collect(u"ActionNo", std::int64_t{scan.ActionNo});
    row.Collect(u"HikiNo", std::int64_t{1});
    row.Update();
}

// A statement without its semicolon goes on in the next line.
void writeSqlStatement(AnalysisContext& context, const MacroLine& line) {
    const ScanState& scan = context.Scan;
    Text statement = behindFirstWord(scan, longText);
    if (!holds(line.raw, u";")) {
        statement += Trim(Mid(lineAt(scan, scan.LineIndex + 1), 1, longText));
    }
    writeArgument(context, statement);
}

void writeEachArgument(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    scan.ArgText = behindFirstWord(scan, longText);
    for (scan.ArgNo = 1; scan.ArgNo <= mostArguments; ++scan.ArgNo) {
        SplitMacroArgument(context);
    }
}

void writeArguments(AnalysisContext& context, const MacroLine& line) {
    switch (context.Scan.ActionNo) {
    case runSql:
        writeSqlStatement(context, line);
        break;
    case runApp:
    case runCommand:
    case goToControl:
    case runCode:
    case setWarnings:
    case hourglass:
    case requery:
    case quit:
        writeArgument(context, GetMacroConstantLabel(behindFirstWord(context.Scan, shortText)));
        break;
    case cancelEvent:
    case stopMacro:
    case beep:
    case restore:
    case minimize:
    case maximize:
    case findNext:
    case endMacros:
    case showAllRecords:
        break;
    case setValue:
        writeArgument(context, Trim(Mid(context.Scan.CodeLine, 1, shortText)));
        break;
    default:
        writeEachArgument(context);
    }
}

// The member of a macro group: behind the macro's name and the character that joins them.
Text memberName(const ScanState& scan) {
    return Trim(Mid(scan.CurProcName, static_cast<std::int64_t>(scan.MacroName.size()) + 2, shortText));
}

void writeAction(AnalysisContext& context, const MacroLine& line) {
    ScanState& scan = context.Scan;
    ++scan.ProcLineNo;
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"ProcedureNo", std::int64_t{scan.ProcNo});
    row.Collect(u"ObjectName", scan.MacroName);
    row.Collect(u"ActionNo", std::int64_t{scan.ActionNo});
    row.Collect(u"LineNo", std::int64_t{scan.LineIndex});
    row.Collect(u"ProcName", memberName(scan));
    row.Collect(u"Procedure", Text(line.raw));
    row.Collect(u"Tekiyou", scan.MacroComment);
    row.Collect(u"AcWhere", scan.MacroCondition);
    row.Collect(u"Midasi", std::int64_t{context.OptMacro});
    row.Update();
    scan.CodeLine.clear();
    scan.MacroComment.clear();
    scan.MacroCondition.clear();
}

void scanFunction(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    const access::Module& module = need(scan.CurModule);
    const std::int32_t behind = module.ProcStartLine(scan.CurProcName, plainProcedure) +
                                module.ProcCountLines(scan.CurProcName, plainProcedure);
    scan.LineIndex = module.ProcBodyLine(scan.CurProcName, plainProcedure);
    increment(scan.ProcNo);
    for (; scan.LineIndex < behind; ++scan.LineIndex) {
        const MacroLine line = readLine(scan);
        if (isTail(line)) {
            break;
        }
        takeRemarkAndCondition(scan, line);
        if (const auto action = actionOf(scan, line)) {
            scan.ActionNo = *action;
            if (context.OptMacro == detailedList) {
                writeArguments(context, line);
            }
            writeAction(context, line);
        }
    }
}

} // namespace

void ScanMacroModule(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    const access::Module& module = need(scan.CurModule);
    scan.ProcLineNo = 0;
    for (std::int32_t line = scan.DeclLineCount + 1; line <= scan.ModuleLineCount; ++line) {
        const TextView name = module.ProcOfLine(line, scan.CurProcKind);
        // The first function is scanned even when one of the same name was the last of the macro before.
        if (line == scan.DeclLineCount + 1 || name != scan.CurProcName) {
            scan.CurProcName = Text(name);
            scanFunction(context);
        }
    }
}

void SplitMacroArgument(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    const std::int32_t comma = InStr(scan.ArgText, u",");
    const bool isLast = comma < 1;
    Recordset& row = need(context.WorkRs2);
    row.AddNew();
    if (isLast) {
        row.Collect(u"Hikisu", Trim(scan.ArgText));
    } else {
        row.Collect(u"Hikisu", GetMacroConstantLabel(Trim(Mid(scan.ArgText, 1, comma - 1))));
        scan.ArgText = Mid(scan.ArgText, comma + 1);
    }
    row.Collect(u"ActionNo", std::int64_t{scan.ActionNo});
    row.Collect(u"HikiNo", std::int64_t{scan.ArgNo});
    row.Collect(u"ProcedureNo", std::int64_t{scan.ProcNo});
    row.Collect(u"LineNo", std::int64_t{scan.LineIndex});
    row.Update();
    if (isLast) {
        scan.ArgNo = noMoreArguments;
    }
}

} // namespace relvane
