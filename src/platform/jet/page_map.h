// Page maps: which pages belong to a table.
#pragma once

#include <vector>

#include "jet/page_file.h"

namespace relvane::jet {

// The pages named by the map at `pointer`, rising, each once. Of pages that the file does not have only the first is
// among them, at the end: whoever reads all pages meets the error there, behind what can still be read.
std::vector<std::uint32_t> readPageMap(const PageFile& file, RowPointer pointer);

} // namespace relvane::jet
