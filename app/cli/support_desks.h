// The developer support as `document` presses it: every question it answers, for all objects.
#pragma once

#include <functional>

#include "panel_desks.h"

namespace relvane::cli {

// A desk of the support window. Where it shows one report more than once, that is bound in one file, a chapter each; the
// name of a chapter is empty where there is but one.
struct SupportDesk {
    std::string_view name;
    Steps preparation;
    // The presses that show a report: the chapter, and the steps that lead to it.
    struct Chapter {
        Text name;
        Steps steps;
    };
    std::function<std::vector<Chapter>(Session& session)> chapters;
};

std::span<const SupportDesk> supportDesks();

// Presses the chapters one after the other on a desk whose target is selected. `begin` is told the chapter ahead of its
// steps. Whether all went without an error.
bool pressChapters(Session& session, const SupportDesk& desk,
                   const std::function<void(const Text& chapter)>& begin);

} // namespace relvane::cli
