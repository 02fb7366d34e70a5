// The lines of a description that belong to the design of a form or report.
#pragma once

#include "sample_builder/database_spec.h"
#include "sample_builder/description_line.h"

namespace relvane::samples {

// Where the lines of a design have got to.
class DesignInProgress {
public:
    DesignInProgress() = default;
    // `document` must stay where it is while its lines are read.
    DesignInProgress(DocumentSpec& document, DesignType root) : document_(&document), root_(root) {}

    // The rest of a line that begins with `keyword`; false when it is no keyword of designs.
    bool read(TextView keyword, DescriptionLine& line, int codePage);

private:
    DesignSpec& design();
    DesignObjectSpec& add(std::size_t level, DesignType type, DescriptionLine& line);
    void addObject(std::size_t level, DesignType type, DescriptionLine& line);
    void addAttachedLabel(DescriptionLine& line);
    void setPrinter(DescriptionLine& line, int codePage);

    DocumentSpec* document_ = nullptr;
    DesignType root_ = DesignType::Form;
    std::vector<DesignObjectSpec*>
        open_; // the root, and one in the other down to the object that was begun last
};

} // namespace relvane::samples
