// How the lists of source reach it: forms, reports and modules one after the other, each opened, scanned and closed
// without saving. A scanner works on the shared state (AnalysisContext::Scan) and takes nothing else.
#pragma once

#include <array>
#include <functional>
#include <optional>

#include "objects/design_walk.h"

namespace relvane {

struct SourceKind {
    std::int16_t option; // the choice of a panel that takes this kind alone
    TextView word;       // CurObjectKind
    TextView digit;      // what the module listing keeps there instead
    TextView message,
        supportMessage;       // of the panels, with the object's name behind it; of the developer support
    const DesignKind* design; // nullptr: a module, which has a window of its own

    TextView container() const { return design == nullptr ? u"Modules" : design->container; }
};

// Forms, reports and modules, in the order in which all walks take them.
extern const std::array<SourceKind, 3> sourceKinds;

inline constexpr std::int16_t everyKind = 4; // the choice of all three

// Runs `read`, and gives back the error of a compiled file, in which there is no source, so that what needs none can go
// on. Any other error is thrown.
std::optional<RunTimeError> missingSource(const std::function<void()>& read);

// Scans the source of each object of the kinds that `option` chooses, each of which is CurrentKind in its turn. Forms and
// reports without code are opened and closed and take no number. Before a scan ObjectNo is counted on, and the state has
// the module, its numbers of lines and the word for its kind.
void walkSources(AnalysisContext& context, std::int16_t option, std::int16_t progress,
                 const std::function<void(const SourceKind& kind)>& scan);

// Opens the module of that name, shows it to `read`, and closes it without saving. After an error it stays open.
void withModule(AnalysisContext& context, const Text& name,
                const std::function<void(const access::Module& module)>& read);

// Makes a module the one being read, and scans it. While `scan` runs, and no longer, it is CurModule; its numbers of
// lines stay.
void readModule(AnalysisContext& context, const access::Module& module, const std::function<void()>& scan);

// The same, the object counted.
void scanModule(AnalysisContext& context, const access::Module& module, const std::function<void()>& scan);

// Each line of the module being read but blank ones and Option statements. Its procedure becomes the current one, and
// takes a number where it is another than that of the line before. `take` may move LineIndex on.
void forEachStatement(AnalysisContext& context, const std::function<void(TextView line)>& take);

// The name of the object in hand as the lists keep it.
Text sourceObjectName(const AnalysisContext& context);

} // namespace relvane
