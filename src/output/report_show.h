// The one operation that opens a report of the work database, and which report belongs to which button.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

inline constexpr std::int16_t previewMode = 0, printMode = 1;

// Opens the report in a new application, which replaces the one of the report before: at most one preview is open.
// Errors are shown here and never reach the caller. Another mode only opens the work database.
void ShowReport(AnalysisContext& context, const Text& reportName, std::int16_t mode);

// The report that a panel's preview button, and its analysis, shows under the present options.
Text reportOf(const AnalysisContext& context, CommandButton FrmRelvane::*preview);

// Gives every preview button its handler: it shows the report again and does nothing else.
void wirePreviewButtons(AnalysisContext& context);

} // namespace relvane
