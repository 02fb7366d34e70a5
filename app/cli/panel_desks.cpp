#include "panel_desks.h"

#include "press_steps.h"

namespace relvane::cli {
namespace {

const PanelDesk desks[] = {
    {"cover", {}, {}, {"cmdHyousi(1)", "cmdHyousi(2)", "cmdHyousi(3)"}},
    {"objects", {}, {"optObject=7", "cmdObject"}, {}},
    {"tables", {"chkLink=0"}, {"optTable=1", "cmdTable", "optTable=3", "cmdTable"}, {}},
    {"queries", {}, {"optQuery=1", "cmdQuery", "optQuery=3", "cmdQuery"}, {}},
    {"forms", {}, {"optForm=2", "cmdForm"}, {}},
    {"reports", {}, {"optReport=2", "cmdReport"}, {}},
    {"procedures", {}, {"optProc=2", "cmdProc"}, {"chkProc50=1", "cmdProc"}},
    {"modules",
     {},
     {"optModule=4", "optMPrint=1", "cmdModule"},
     {"optMPrint=2", "cmdModule", "chkMod50=1", "cmdModule", "optMPrint=1", "cmdModule"}},
    {"step counts", {}, {"optModStep=4", "cmdModStep"}, {}},
    {"comments", {}, {"cmdComment"}, {}},
    {"macros", {}, {"optMacro=2", "cmdMacro"}, {}},
    {"control counts", {}, {"optControl=3", "cmdControl"}, {}},
    {"files", {}, {"optFile=3", "cmdFile"}, {}},
};

} // namespace

std::span<const PanelDesk> panelDesks() {
    return desks;
}

bool pressAll(Session& session, const Steps& steps) {
    for (const std::string& step : steps) {
        try {
            if (!carryOut(session.desk, parseStep(step))) {
                return false;
            }
        } catch (const CannotPress&) {
            // Nothing to analyse.
        }
    }
    return !session.hasFailed();
}

} // namespace relvane::cli
