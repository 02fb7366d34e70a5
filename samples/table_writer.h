// Writes one table whole: its rows with their long values, its index trees, its page maps and its definition.
#pragma once

#include "sample_builder/index_plan.h"

namespace relvane::samples {

struct TableSettings {
    TextCoding coding = japaneseCodePage;
    int sortOrder = 0x0411;
    std::size_t indexPageEntries = 0; // see DatabaseSpec
};

// The plan's definition page is already allocated. std::invalid_argument for what the format cannot hold.
void writeTable(PageFile& file, const TablePlan& plan, const TableSettings& settings);

} // namespace relvane::samples
