// The objects of an open database as its application sees them: those of the file, and beside them the modules that
// macros were converted to. The latter live here alone, until they are deleted: the file is never written.
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "access/design_source.h"
#include "access/macro_source.h"
#include "access/module_source.h"
#include "platform/access.h"

namespace relvane::access {

// Names are looked up without regard to case. A converted module hides one of the file that has the same name.
class DatabaseObjects {
public:
    // Does not fail; what the file has is read when it is asked for first.
    explicit DatabaseObjects(std::shared_ptr<const jet::JetFile> file) : file_(std::move(file)) {}

    const DesignSource& designs();
    const ModuleSource& sources();
    const MacroSource& macros();
    bool isOfFile(ObjectType type, TextView name);
    bool isConverted(ObjectType type, TextView name) const;

    // The text of a module, nothing when there is none of that name. The errors of ModuleSource::text.
    std::optional<ModuleText> moduleText(TextView name);

    // Gives the name of the module that it makes; one that was made of the macro before is replaced. The errors of
    // MacroSource::sheet: then nothing changes.
    Text convert(const MacroDocument& macro);
    // False when no conversion has made it.
    bool deleteConverted(ObjectType type, TextView name);

private:
    std::shared_ptr<const jet::JetFile> file_;
    std::optional<DesignSource> designs_;
    std::optional<ModuleSource> sources_;
    std::optional<MacroSource> macros_;
    std::map<Text, ModuleText> converted_; // by the name in capitals
};

} // namespace relvane::access
