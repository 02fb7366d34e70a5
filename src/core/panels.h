// The panels of the main window as one table: which controls belong together and which fields of the context they
// feed. What treats all panels alike walks this table.
#pragma once

#include <span>

#include "core/analysis_context.h"

namespace relvane {

using ContextNumber = std::int16_t AnalysisContext::*;

// The scope of a run: all objects of its kind, or the one chosen in the panel's list.
inline constexpr std::int16_t allObjects = 1, chosenObject = 2;

// Analyse all objects of the kind, or only the one chosen in the list.
struct PanelScope {
    OptionGroup FrmRelvane::*buttons;
    ComboBox FrmRelvane::*list;
    ContextNumber selected; // 1 all, 2 the chosen one
    LastRun AnalysisContext::*lastRun;
};

struct Panel {
    OptionGroup FrmRelvane::*options;
    int defaultOption; // index
    ContextNumber option;
    ContextNumber done;
    CommandButton FrmRelvane::*action;
    CommandButton FrmRelvane::*preview;
    const PanelScope* scope; // nullptr for a panel without a choice of scope
};

// In the order object, table, query, form, report, procedure, module, step count, macro, control count, file.
std::span<const Panel> panels();

// The panel of an action button; error 5 for a button without one.
const Panel& panelOf(CommandButton FrmRelvane::*action);

// Every action button, and every preview button, those outside the table included (image, comments, cover).
std::span<CommandButton FrmRelvane::*const> actionButtons();
std::span<CommandButton FrmRelvane::*const> previewButtons();

void setActionButtonsEnabled(FrmRelvane& form, bool enabled); // with the cover's three
void disablePreviewButtons(FrmRelvane& form);                 // and the button that keeps the cover texts

} // namespace relvane
