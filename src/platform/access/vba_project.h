// The formats around the text of VBA modules: the directory of the project, which names the modules; the container that a
// row of MSysModules2 holds in a file of Access 97; the list of the modules by their kinds in newer ones.
#pragma once

#include <span>
#include <vector>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane::access {

// The bytes of the stream of that name in a container; they lie within `container`. Error 3049 with the owner when
// there is none, or when anything in the container does not fit.
std::span<const std::uint8_t> vbaStream(std::span<const std::uint8_t> container, TextView name,
                                        TextView owner);

struct VbaModule {
    Bytes storedName;             // in the project's code page
    Text name;                    // with "Form_" or "Report_" before a form's or report's
    Text streamName;              // in newer files; Access 97 has one name for all
    bool isClass = true;          // class modules, and those of forms and reports
    bool isOrdinaryClass = false; // a class that is no form's or report's, as far as it is known
    std::size_t textOffset = 0;   // of the text in the stream of the module; a hint, which can be wrong
};

struct VbaProject {
    int codePage = 0; // of all names and texts
    std::vector<VbaModule> modules;
};

// Reads the directory, decompressed, up to its end record. Error 3049 when anything does not fit, and when there is no
// code page.
VbaProject readVbaProject(std::span<const std::uint8_t> directory, TextView owner);

// Finds the ordinary classes of a project in the stream PROJECT, a text with a line for each module.
void markOrdinaryClasses(VbaProject& project, std::span<const std::uint8_t> text);

} // namespace relvane::access
