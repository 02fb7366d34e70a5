// Page maps: which pages belong to a table.
#pragma once

#include <vector>

#include "jet/page_file.h"

namespace relvane::jet {

// The pages named by the map at `pointer`, rising, each once. Pages that the file does not have are left out.
std::vector<std::uint32_t> readPageMap(const PageFile& file, RowPointer pointer);

} // namespace relvane::jet
