// Where a link leads on this machine. Links keep the path of the machine on which they were made
// ("C:\data\orders.mdb", "\\server\share\orders.mdb"); here the file lies elsewhere, and its name may be spelt with
// other capitals. This is the only place that knows how to find it, for the file list and for the reader alike.
#pragma once

#include <filesystem>
#include <span>

#include "platform/text.h"

namespace relvane {

// The folder of this machine that holds what links know under `prefix`: "C:\data" and "/srv/data".
struct LinkMapping {
    Text prefix;
    std::filesystem::path folder;
};

// Whether two prefixes name the same folder: either separator, one more at the end or none, any case.
bool isSamePrefix(TextView left, TextView right);

// The path of the regular file to which `path` leads for a database in `folder`. Tried in this order:
//
// 1. the mappings whose prefix the path begins with, in whole components, those with more components first and
//    among equal ones in the order given;
// 2. the path itself, below `folder` when it is relative (a drive letter makes no path of this machine);
// 3. the file of that name in `folder`.
//
// Everywhere a component of exactly that spelling goes before others that differ in case. Errors: 76 when neither
// 1 nor 2 has the folder of the file, else 53.
Text resolveLinkPath(const Text& path, const Text& folder, std::span<const LinkMapping> mappings);

} // namespace relvane
