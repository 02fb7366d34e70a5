// The walk over the target's tables that the list of tables and the list of indexes share: which tables are left out,
// the link that leads nowhere, the gauge.
#pragma once

#include <functional>

#include "core/work_store_convention.h"

namespace relvane {

inline constexpr TextView tableMessage = u"テーブル情報　取得中";
inline constexpr std::int64_t nameLength = 150; // of tables, fields and indexes

struct TableWalk {
    const std::int16_t& linkFilter; // as LinkExclude: 2 leaves linked tables out; read anew for each table
    std::int16_t progress;          // 1: the main window's gauge follows the walk
    // Writes the rows of one table; `name` is as the columns for names take it.
    std::function<void(dao::TableDef& table, const Text& name)> write;
    // Whether the table is asked for at all. Left out: every table is.
    std::function<bool(const dao::TableDef& table)> isWanted = {};
};

// Whether the table is marked as one of Jet or of Access. In files of Access 97 the marks are compared as a whole: a
// table that has one among other flags is none. Later versions keep such flags on tables of their own, so that there each
// mark counts by itself.
bool hasSystemAttributes(const AnalysisContext& context, const dao::TableDef& table);

// Stopped, behind a message box, by a table that has no fields to show.
WalkEnd walkTables(AnalysisContext& context, const TableWalk& walk);

} // namespace relvane
