// The VBA module of a form, report or module, as database_spec.h has the rest of a database.
#pragma once

#include "platform/text.h"
#include "platform/value.h"

namespace relvane::samples {

// What Access puts into a new module when variables must be declared.
inline constexpr TextView newModuleSource = u"Option Compare Database\r\nOption Explicit\r\n";

// What is wrong with the bytes of a module, for cases of a test.
enum class ModuleDamage {
    None,
    NotStored,    // the row is there, Module is Null
    NotInProject, // the directory of the project does not name it
    CutOff,       // the last bytes of the text are missing
};

struct ModuleSpec {
    // As the editor shows it, each line closed by CR LF. Attribute lines within it are written as they stand; those
    // at the head of a module are added.
    Text source{newModuleSource};
    bool isClass = false; // a module of a form or report always is one
    // Stands before the text, in the place of what Access compiled: any bytes.
    Bytes compiledCode{};
    // Off: the directory says 0 in place of where the text begins, as it happens in real files.
    bool directoryKnowsOffset = true;
    ModuleDamage damage = ModuleDamage::None;
};

} // namespace relvane::samples
