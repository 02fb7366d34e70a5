// The catalogue of a database: every object with its id, its place and its properties.
#pragma once

#include "sample_builder/system_tables.h"

namespace relvane::samples {

struct Catalogue {
    std::vector<CatalogueRow> rows;
    std::vector<std::pair<std::int32_t, const QuerySpec*>> queries; // with their ids
    std::vector<TableSpec> accessTables; // as accessTables() has them, with their rows
};

// `tables` are all tables with their definition pages, Jet's own first.
Catalogue buildCatalogue(const DatabaseSpec& spec,
                         const std::vector<std::pair<PageNumber, const TableSpec*>>& tables);

} // namespace relvane::samples
