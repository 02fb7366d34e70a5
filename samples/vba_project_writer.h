// The streams in which Access 97 keeps the VBA project of a database and the modules of it.
#pragma once

#include <vector>

#include "sample_builder/module_spec.h"

namespace relvane::samples {

// A module under the name that it has in the project: with "Form_" or "Report_" before that of a form or report.
struct ProjectModule {
    Text name{};
    ModuleSpec spec{};
};

// The container that the row of a module holds: its text, behind a head that says that nothing is compiled.
// std::invalid_argument when a character of the source is not in the code page.
Bytes moduleContainer(const ProjectModule& module, int codePage);

// The container of the project: the directory of all modules, and a _VBA_PROJECT that has its head alone, without the
// references and names that Access repeats there.
Bytes projectContainer(const std::vector<ProjectModule>& modules, int codePage, int locale);

} // namespace relvane::samples
