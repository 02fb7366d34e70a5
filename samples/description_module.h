// The lines of a description that belong to the module of a form, report or module.
#pragma once

#include "sample_builder/database_spec.h"
#include "sample_builder/description_line.h"

namespace relvane::samples {

// Where the lines of a module have got to.
class ModuleInProgress {
public:
    ModuleInProgress() = default;
    // `document` must stay where it is while its lines are read.
    explicit ModuleInProgress(DocumentSpec& document) : document_(&document) {}

    // The rest of a line that begins with `keyword`; false when it is no keyword of modules.
    bool read(TextView keyword, DescriptionLine& line);
    // A line of the source; false when there is nothing that could have one.
    bool readSource(TextView line);

private:
    ModuleSpec& module();

    DocumentSpec* document_ = nullptr;
    bool sourceBegun_ = false;
};

} // namespace relvane::samples
