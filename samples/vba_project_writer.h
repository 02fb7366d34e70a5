// The VBA project of a database and the modules of it: the containers in which Access 97 keeps them, the streams in which
// Access 2000 does.
#pragma once

#include <vector>

#include "sample_builder/compound_file_writer.h"
#include "sample_builder/module_spec.h"

namespace relvane::samples {

// A module under the name that it has in the project: with "Form_" or "Report_" before that of a form or report.
struct ProjectModule {
    Text name{};
    ModuleSpec spec{};
    bool ofDocument = false; // of a form or report
};

// The container that the row of a module holds: its text, behind a head that says that nothing is compiled.
// std::invalid_argument when a character of the source is not in the code page.
Bytes moduleContainer(const ProjectModule& module, int codePage);

// The container of the project: the directory of all modules, and a _VBA_PROJECT that has its head alone, without the
// references and names that Access repeats there.
Bytes projectContainer(const std::vector<ProjectModule>& modules, int codePage, int locale);

// The same of Access 2000: the storage "VBA" of its store, in which each module has a stream of its own.
Streams projectStreams(const std::vector<ProjectModule>& modules, int codePage, int locale);

// The name of that stream in the storage of the modules. Real ones are drawn by lot; this one is made of the module's.
inline constexpr TextView moduleFolder = u"VBA/VBAProject/VBA/";
Text moduleStreamName(TextView module);

} // namespace relvane::samples
