// The option --map of the commands that follow links, and the mappings that the user keeps.
#pragma once

#include <filesystem>
#include <vector>

#include "arguments.h"
#include "system/link_paths.h"

namespace relvane::cli {

inline constexpr Option mapOption{"--map", "PREFIX=DIR",
                                  "linked files under PREFIX (C:\\data) lie in DIR; may be repeated", true};

// The mappings on the command line, in the order given. Throws UsageError for one that cannot be read, or whose folder
// does not exist.
std::vector<LinkMapping> givenMappings(const Arguments& arguments);

// These mappings and behind them those that Relvane.map in `programFolder` holds, so that the command line goes before
// the file. A line that cannot be read is told on standard error; the rest counts.
std::vector<LinkMapping> withKeptMappings(std::vector<LinkMapping> given,
                                          const std::filesystem::path& programFolder);

} // namespace relvane::cli
