// The order that an index gives to the rows of its table.
#pragma once

#include <vector>

#include "jet/page_file.h"

namespace relvane::jet {

// The rows that the leaves of the tree name, from the first leaf to the last. Error 3049 for a tree that is none.
std::vector<RowPointer> walkIndex(const PageFile& file, std::uint32_t root);

} // namespace relvane::jet
