#include "support/variable_catalogue.h"

#include <algorithm>
#include <limits>
#include <span>

#include "core/error_report.h"
#include "core/text_functions.h"
#include "output/report_show.h"
#include "support/source_walk.h"

namespace relvane {
namespace {

constexpr TextView typeWord = u"TYPE ", constWord = u"CONST ";
constexpr std::int16_t withoutComment = 255; // where the declaration ends then
constexpr std::int64_t longestRest = 255;

// What DeclMode says of the piece in hand.
constexpr std::int16_t wholeLine = 0, insideList = 1, endOfList = 2;

// A line with one of them is looked at.
constexpr TextView declaringWords[] = {u"PRIVATE ", u"PUBLIC ", u"GLOBAL ", u"DIM ", u"TYPE "};
// A line with one of them declares nothing, nor does what follows in its list.
constexpr TextView procedureWords[] = {u"FUNCTION ", u"SUB ", u"PROPERTY "};

struct ScopeWord {
    TextView capitals, name;
};
// In the order in which they are looked for.
constexpr ScopeWord scopeWords[] = {
    {u"DIM ", u"Dim"}, {u"GLOBAL ", u"Global"}, {u"PUBLIC ", u"Public"}, {u"PRIVATE ", u"Private"}};

// A line, the same without the blanks ahead of it, and that in capitals.
struct DeclarationLine {
    explicit DeclarationLine(Text line) : raw(std::move(line)), text(LTrimView(raw)), capitals(UCase(text)) {}
    DeclarationLine(const DeclarationLine&) = delete;
    DeclarationLine& operator=(const DeclarationLine&) = delete;

    bool holds(TextView word) const { return capitals.find(word) != Text::npos; }
    bool holdsOneOf(std::span<const TextView> words) const {
        return std::ranges::any_of(words, [this](TextView word) { return holds(word); });
    }

    Text raw;
    TextView text;
    Text capitals;
};

std::int16_t position(std::int64_t number) {
    if (number > std::numeric_limits<std::int16_t>::max()) {
        throw RunTimeError(ErrorNumber::Overflow);
    }
    return static_cast<std::int16_t>(number);
}

// 0 when the line does not hold the word.
std::int16_t positionOf(const DeclarationLine& line, TextView word) {
    return position(InStr(line.capitals, word));
}

std::int16_t lengthOf(TextView word) {
    return static_cast<std::int16_t>(word.size());
}

// The last character ahead of the comment.
std::int16_t commentStop(const DeclarationLine& line) {
    const std::int16_t comment = positionOf(line, u"'");
    return comment > 1 ? static_cast<std::int16_t>(comment - 1) : withoutComment;
}

// A part of a line; a length below 0 is none.
Text part(TextView line, std::int64_t start, std::int64_t length) {
    return Mid(line, start, std::max<std::int64_t>(length, 0));
}

void clearDeclaration(SupportState& state) {
    state.DeclScope.clear();
    state.DeclBunrui.clear();
    state.DeclType.clear();
    state.DeclDescription.clear();
}

void writeRow(const FrmSien& sien, const Text& procedure, const Text& name) {
    const SupportState& state = sien.state;
    const AnalysisContext& context = sien.context;
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"ProcedureNo", std::int64_t{context.Scan.ProcNo});
    row.Collect(u"ObjectName", need(context.CurDocument).Name());
    row.Collect(u"ProcedureName", procedure);
    row.Collect(u"HensuName", name);
    row.Collect(u"Property", state.DeclScope);
    row.Collect(u"Bunrui", state.DeclBunrui);
    row.Collect(u"Type", state.DeclType);
    row.Collect(u"Line", std::int64_t{state.RowLineNo});
    row.Collect(u"Description", state.DeclDescription);
    row.Update();
}

// Without a word of scope the name is taken where that of the last declaration began.
void takeScope(SupportState& state, const DeclarationLine& line) {
    state.DeclScope.clear();
    for (const ScopeWord& word : scopeWords) {
        if (const std::int16_t found = positionOf(line, word.capitals); found != 0) {
            state.DeclStart = position(found + lengthOf(word.capitals));
            state.DeclScope = word.name;
            return;
        }
    }
}

// What stands between the word and the comment, with the label. A line without the word keeps what there was.
void takeType(SupportState& state, const DeclarationLine& line, TextView word, TextView label) {
    state.DeclStop = positionOf(line, word);
    if (state.DeclStop != 0) {
        const int start = state.DeclStop + lengthOf(word);
        state.DeclType = Text(label) + Trim(part(line.text, start, state.CommentStop - start));
    }
}

// ---- Types

// The beginning of the name, measured without the blanks ahead of the line, is looked up in the line with them.
bool declaresType(const SupportState& state, const DeclarationLine& line) {
    return state.DeclStart > 0 &&
           UCase(LTrimView(part(line.raw, state.DeclStart, state.CommentStop - state.DeclStart)))
               .starts_with(typeWord);
}

void listMember(FrmSien& sien, const DeclarationLine& line) {
    SupportState& state = sien.state;
    ++state.RowLineNo;
    state.DeclStop = positionOf(line, u"AS ");
    state.CommentStop = commentStop(line);
    const Text name = Trim(Left(line.text, state.DeclStop - 2));
    state.DeclType =
        u"型/" + Trim(Mid(line.text, state.DeclStop + 3, state.CommentStop - state.DeclStop - 3));
    state.DeclDescription = Trim(Mid(line.text, state.CommentStop + 1));
    writeRow(sien, sien.context.Scan.CurProcName, name);
}

void listType(FrmSien& sien, const DeclarationLine& header) {
    SupportState& state = sien.state;
    ScanState& scan = sien.context.Scan;
    state.DeclStart = position(state.DeclStart + lengthOf(typeWord));
    state.DeclBunrui = u"定義";
    state.DeclType.clear();
    state.DeclDescription = Trim(Mid(header.raw, positionOf(header, u"'") + 1));
    writeRow(sien, scan.CurProcName,
             Trim(part(header.text, state.DeclStart, state.CommentStop - state.DeclStart + 1)));
    for (;;) {
        state.LineText = need(scan.CurModule).Lines(++scan.LineIndex, 1);
        const DeclarationLine line(state.LineText);
        if (line.holds(u"END TYPE")) {
            break;
        }
        listMember(sien, line); // behind the module there is no member: error 5
    }
    clearDeclaration(state);
}

// ---- Variables and constants

void listVariable(FrmSien& sien, const DeclarationLine& line) {
    SupportState& state = sien.state;
    if (line.holds(constWord)) {
        state.DeclBunrui = u"定数";
        takeType(state, line, u"= ", u"値/");
        state.DeclStart = position(state.DeclStart + lengthOf(constWord));
    } else if (line.holds(u"Declare Function ")) { // never, among capitals
        state.DeclBunrui = u"API";
        state.DeclType.clear();
    } else {
        state.DeclBunrui = u"変数";
        takeType(state, line, u"AS ", u"型/");
    }
    state.DeclDescription = Trim(Mid(line.text, state.CommentStop + 2));
    if (!state.DeclScope.empty()) {
        AddHensuRow(sien);
    }
}

// ---- Lines and their pieces

// The next piece of a list. Of what is left no more than 255 characters are kept; the others stay on this piece.
void takePiece(SupportState& state) {
    const std::int32_t comma = InStr(state.DeclRest, u",");
    if (comma == 0) {
        state.DeclMode = endOfList;
        state.LineText = state.DeclPrefix + Trim(Left(state.DeclRest, longestRest));
        return;
    }
    state.LineText = (state.DeclMode == insideList ? state.DeclPrefix : Text()) + state.DeclRest;
    state.DeclRest = Mid(state.DeclRest, comma + 1, longestRest);
    state.LineText.resize(state.LineText.size() - state.DeclRest.size() - 1);
    state.DeclMode = insideList;
}

// Whether the list goes on behind the piece in LineText.
bool listPiece(FrmSien& sien) {
    SupportState& state = sien.state;
    const DeclarationLine line(state.LineText);
    ++state.RowLineNo;
    if (line.holdsOneOf(procedureWords)) {
        return false;
    }
    takeScope(state, line);
    state.CommentStop = commentStop(line);
    if (declaresType(state, line)) {
        listType(sien, line);
        return false;
    }
    listVariable(sien, line);
    return state.DeclMode == insideList;
}

void listDeclarations(FrmSien& sien) {
    AnalysisContext& context = sien.context;
    runOverSources(sien, {.table = u"T_RvHensu",
                          .cursor = &AnalysisContext::WorkRs1,
                          .message = u"変数 情報　取得中",
                          .read = [&](const SourceKind& kind, const access::Module* module) {
                              if (module != nullptr) {
                                  scanModule(context, *module, [&] {
                                      context.Scan.CurObjectKind = kind.digit;
                                      ScanDeclarations(sien);
                                  });
                              }
                          }});
    for (CommandButton* list : {&sien.cmdHensuU, &sien.cmdHensuT, &sien.cmdHensuH}) {
        list->Enabled = true;
    }
    context.platform.dialogs->MsgBox(u"「変数情報取得」を終了しました。\r"
                                     u"各種一覧を押して印刷下さい。",
                                     okOnly, Text(programTitle));
}

} // namespace

void cmdHensu_Click(FrmSien& sien) {
    guarded(sien.context, places::variables, sien, [&sien] { listDeclarations(sien); });
}

void cmdHensuU_Click(FrmSien& sien) {
    ShowReport(sien.context, u"R_RvHensuU", previewMode);
}

void cmdHensuT_Click(FrmSien& sien) {
    ShowReport(sien.context, u"R_RvHensuT", previewMode);
}

void cmdHensuH_Click(FrmSien& sien) {
    ShowReport(sien.context, u"R_RvHensuH", previewMode);
}

void ScanDeclarations(FrmSien& sien) {
    sien.state.RowLineNo = 0;
    forEachStatement(sien.context, [&sien](TextView text) {
        const DeclarationLine line{Text(text)};
        if (line.holdsOneOf(declaringWords) && !line.text.starts_with(u'\'')) {
            sien.state.LineText = line.raw;
            ScanDeclarationLine(sien);
        }
    });
}

void ScanDeclarationLine(FrmSien& sien) {
    SupportState& state = sien.state;
    state.DeclRest = state.LineText;
    state.DeclMode = wholeLine;
    if (InStr(state.LineText, u",") != 0) {
        const TextView line = LTrimView(state.LineText);
        state.DeclPrefix = Left(line, InStr(line, u" "));
        takePiece(state);
    }
    while (listPiece(sien)) {
        takePiece(state);
    }
}

void AddHensuRow(FrmSien& sien) {
    SupportState& state = sien.state;
    const Text& procedure = sien.context.Scan.CurProcName;
    const std::int16_t stop = state.DeclStop > state.DeclStart ? state.DeclStop : state.CommentStop;
    writeRow(sien, procedure.empty() ? Text(u"(Declarations)") : procedure,
             Trim(part(LTrimView(state.LineText), state.DeclStart, stop - state.DeclStart)));
    clearDeclaration(state);
}

} // namespace relvane
