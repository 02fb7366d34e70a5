#include "support_desks.h"

#include "platform/text.h"

namespace relvane::cli {
namespace {

using Chapters = std::vector<SupportDesk::Chapter>;

// One list for each table and query that the window offers.
Chapters everyTable(Session& session) {
    Chapters chapters;
    for (const Text& table : session.desk.frmSien.cboTable.List()) {
        chapters.push_back({table, {"frmSien.cboTable=" + toUtf8(table), "frmSien.cmdLinkTable"}});
    }
    return chapters;
}

std::function<Chapters(Session&)> always(Chapters chapters) {
    return [chapters = std::move(chapters)](Session&) { return chapters; };
}

const SupportDesk desks[] = {
    {"table usage", {"m7"}, everyTable},
    {"references",
     {"m7", "frmSien.cmdSyoki"},
     always({{u"フォーム", {"frmSien.cmdLinkForm"}}, {u"レポート", {"frmSien.cmdLinkReport"}}})},
    {"calls", {"m7", "frmSien.cmdSyoki"}, always({{{}, {"frmSien.cmdLinkProc"}}})},
    {"variables",
     {"m7", "frmSien.cmdSyoki", "frmSien.cmdHensu"},
     always({{{}, {"frmSien.cmdHensuU", "frmSien.cmdHensuT", "frmSien.cmdHensuH"}}})},
    {"specifications", {"m7", "frmSien.cmdSyoki"}, always({{{}, {"frmSien.cmdTeigi"}}})},
};

} // namespace

std::span<const SupportDesk> supportDesks() {
    return desks;
}

bool pressChapters(Session& session, const SupportDesk& desk,
                   const std::function<void(const Text& chapter)>& begin) {
    if (!pressAll(session, desk.preparation)) {
        return false;
    }
    for (const SupportDesk::Chapter& chapter : desk.chapters(session)) {
        begin(chapter.name);
        if (!pressAll(session, chapter.steps)) {
            return false;
        }
    }
    return true;
}

} // namespace relvane::cli
