// The comparison of the selected target with an earlier analysis file.
#pragma once

#include <filesystem>

#include "session.h"

namespace relvane::cli {

// Opens the report of the comparison. Whether that went without an error.
bool compareWith(Session& session, const std::filesystem::path& file);

} // namespace relvane::cli
