// The panels as the commands press them that document all of a database.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session.h"

namespace relvane::cli {

using Steps = std::vector<std::string>;

// All objects in scope, and the richest option last: what a saved analysis then says was done.
struct PanelDesk {
    std::string_view name;
    Steps preparation; // makes linked tables part of it
    Steps analyses;
    Steps views; // more reports of the same rows
};

std::span<const PanelDesk> panelDesks();

// Presses one after the other; a panel whose objects the target does not have stays as it is. Whether all went without
// an error.
bool pressAll(Session& session, const Steps& steps);

} // namespace relvane::cli
