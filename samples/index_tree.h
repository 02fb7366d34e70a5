// The pages of one index: leaves with the entries in order, inner pages above them until one page, the root, is left.
#pragma once

#include "sample_builder/page_file.h"

namespace relvane::samples {

struct IndexTree {
    PageNumber root = 0;
    std::vector<PageNumber> pages; // the root among them
};

// `entries` are keys with the row's page (3 bytes, big-endian) and number behind them, sorted.
// At most `entriesPerPage` on one page; 0 is as many as fit.
IndexTree writeIndexTree(PageFile& file, PageNumber definition, const std::vector<Bytes>& entries,
                         std::size_t entriesPerPage);

} // namespace relvane::samples
