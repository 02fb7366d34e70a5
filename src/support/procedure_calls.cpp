#include "support/procedure_calls.h"

#include "core/error_report.h"
#include "core/text_functions.h"
#include "output/report_show.h"
#include "support/name_matcher.h"
#include "support/source_walk.h"

namespace relvane {
namespace {

constexpr std::int64_t longestText = 255;

// A call is looked for from the first of these on that the line holds, comments and texts in it like code.
constexpr TextView anchors[] = {u"CALL ", u"= ", u"."};

// What of the line may hold calls; empty without an anchor.
Text textWithCalls(TextView line) {
    const Text capitals = UCase(line);
    for (const TextView anchor : anchors) {
        if (const std::int32_t position = InStr(capitals, anchor); position != 0) {
            return Trim(Mid(line, position, longestText));
        }
    }
    return {};
}

// The index of the procedures lives until the preparation lists others.
const NameMatcher& matcherOf(SupportState& state) {
    if (!state.UserProcMatcher || state.UserProcMatcher->names() != state.UserProcNames) {
        state.UserProcMatcher = std::make_shared<const NameMatcher>(state.UserProcNames);
    }
    return *state.UserProcMatcher;
}

void writeCall(const FrmSien& sien, std::int16_t objectNo, std::size_t called) {
    const SupportState& state = sien.state;
    const ScanState& scan = sien.context.Scan;
    Recordset& row = need(sien.context.WorkRs2);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{objectNo});
    row.Collect(u"ProcedureNo", std::int64_t{scan.ProcNo});
    row.Collect(u"Bunrui", state.LinkCallerKind);
    row.Collect(u"ObjectName", state.LinkObjectName);
    row.Collect(u"Procedure", scan.CurProcName);
    row.Collect(u"LinkProcedure", state.UserProcNames[called]);
    row.Collect(u"MotoName", state.UserProcModules[called]);
    row.Update();
}

void listCalls(FrmSien& sien) {
    AnalysisContext& context = sien.context;
    SupportState& state = sien.state;
    runOverSources(sien, {.table = u"T_RvLinkModule",
                          .cursor = &AnalysisContext::WorkRs2,
                          .message = u"引用先 情報　取得中",
                          .read = [&](const SourceKind& kind, const access::Module* module) {
                              increment(context.ObjectNo);
                              state.LinkObjectName = sourceObjectName(context);
                              if (module != nullptr) {
                                  readModule(context, *module, [&] {
                                      state.LinkCallerKind = kind.word;
                                      ScanProcedureCalls(sien, context.ObjectNo);
                                  });
                              }
                          }});
    ShowReport(context, u"R_RvLinkProc", previewMode);
}

} // namespace

void ScanProcedureCalls(FrmSien& sien, std::int16_t objectNo) {
    const ScanState& scan = sien.context.Scan;
    if (scan.ModuleLineCount == scan.DeclLineCount) {
        return;
    }
    const NameMatcher& procedures = matcherOf(sien.state);
    forEachStatement(sien.context, [&](TextView line) {
        for (const std::size_t called : procedures.mentioned(textWithCalls(line))) {
            if (sien.state.UserProcNames[called] != scan.CurProcName) {
                writeCall(sien, objectNo, called);
            }
        }
    });
}

void cmdLinkProc_Click(FrmSien& sien) {
    guarded(sien.context, places::procedureReferences, sien, [&sien] { listCalls(sien); });
}

} // namespace relvane
