#include "objects/table_walk.h"

#include "core/error_report.h"
#include "objects/object_text.h"

namespace relvane {
namespace {

constexpr std::int16_t includeLinks = 1, excludeLinks = 2;

// Most links that lead nowhere raise an error of their own as soon as their fields are asked for. This is for a table
// that answers and has none.
bool isBroken(dao::TableDef& table) {
    return table.Fields().Count() < 1;
}

void showBrokenLink(AnalysisContext& context) {
    showErrorBox(context, places::tableAnalysis, brokenLinkBox, RunTimeError(0, Text()));
}

} // namespace

bool hasSystemAttributes(const AnalysisContext& context, const dao::TableDef& table) {
    constexpr std::uint32_t ofEngine = 0x80000000, ofAccess = 2;
    const auto attributes = static_cast<std::uint32_t>(table.Attributes());
    if (need(context.TargetDb).Version() == u"3.0") {
        return attributes == ofEngine || attributes == ofAccess;
    }
    return (attributes & (ofEngine | ofAccess)) != 0;
}

WalkEnd walkTables(AnalysisContext& context, const TableWalk& walk) {
    std::int32_t done = 0;
    for (const auto& table : need(context.TargetDb).TableDefs()) {
        context.CurTableDef = table.get();
        if (hasSystemAttributes(context, *table) || (walk.isWanted && !walk.isWanted(*table))) {
            continue;
        }
        if (walk.linkFilter == includeLinks) {
            context.LinkTableCount = 0; // links are among the tables that the gauge counts
            if (isBroken(*table)) {
                showBrokenLink(context);
                return WalkEnd::Stopped;
            }
        }
        if (walk.linkFilter == excludeLinks && !table->Connect().empty()) {
            continue;
        }
        const Text name = cutText(table->Name(), nameLength);
        walk.write(*table, name);
        if (walk.progress == withGauge) {
            showProgress(context.frmRelvane.gauge, ++done, context.TableCount - context.LinkTableCount,
                         Text(tableMessage) + u"　(" + name + u")");
        }
    }
    return WalkEnd::Complete;
}

} // namespace relvane
