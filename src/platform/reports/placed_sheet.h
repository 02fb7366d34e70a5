// A page of fields at fixed places: the cover, the labels.
#pragma once

#include "reports/page.h"
#include "reports/row_text.h"

namespace relvane::reports {

// The page for one row.
void addPlaced(Page& page, const ReportDefinition& definition, Fonts& fonts, const Row& row);

} // namespace relvane::reports
