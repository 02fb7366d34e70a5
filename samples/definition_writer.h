// The definition of a table: columns, indexes and page maps, on a chain of definition pages.
#pragma once

#include "sample_builder/row_writer.h"
#include "sample_builder/table_writer.h"

namespace relvane::samples {

// What the rows and the trees of the table have left for the definition to say.
struct TableContents {
    std::uint32_t rowCount = 0, lastAutoNumber = 0;
    std::uint32_t pageMap = 0, roomMap = 0; // row pointers of page maps
    struct Index {
        std::uint32_t rows = 0, distinctKeys = 0;
        std::uint32_t map = 0;
        PageNumber root = 0;
    };
    std::vector<Index> indexes{}; // as plan.realIndexes
    struct LongValues {
        unsigned column = 0; // number
        std::uint32_t map = 0, roomMap = 0;
    };
    std::vector<LongValues> longValues{};
};

void writeDefinition(PageFile& file, const TablePlan& plan, const TableLayout& layout,
                     const TableContents& contents, const TableSettings& settings);

} // namespace relvane::samples
