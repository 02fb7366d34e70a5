// Which indexes every table has in the end: its own, and those that relations make on both of their sides.
#pragma once

#include "sample_builder/page_file.h"

namespace relvane::samples {

// An index as it is stored once; several logical indexes may share it.
struct RealIndex {
    std::vector<IndexColumnSpec> columns{};
    std::uint8_t flags = 0;
};

struct LogicalIndex {
    Text name{};
    std::size_t number = 0, realIndex = 0; // number: in the order of their making
    jet::IndexType type = jet::IndexType::Plain;
    jet::IndexSide side = jet::IndexSide::None;
    std::uint32_t otherIndex = 0xFFFFFFFF;
    PageNumber otherTable = 0;
    bool cascadeUpdates = false, cascadeDeletes = false;
};

struct TablePlan {
    const TableSpec* table = nullptr;
    PageNumber definition = 0;
    std::vector<RealIndex> realIndexes{};
    std::vector<LogicalIndex> logicalIndexes{}; // in name order, as the definition has them
};

// `tables` with their definition pages; fills in the indexes. A relation that is not enforced, or one of whose
// tables is not in the list (a link), makes none.
void planIndexes(std::vector<TablePlan>& tables, const std::vector<RelationSpec>& relations, int codePage);

} // namespace relvane::samples
