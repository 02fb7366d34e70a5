// What forms draw on beside their own design: other forms, records, lists.
#pragma once

#include <map>
#include <memory>

#include "access/design_source.h"
#include "formview/record_source.h"

namespace relvane::formview {

class FormTarget {
public:
    explicit FormTarget(dao::Database& database);

    // Error 2102 for a form that does not exist, and those of DesignSource::design.
    std::shared_ptr<const access::Design> design(const Text& form) const;

    const RecordSource& records() const { return records_; }
    // All rows behind a combo or list box, read once; nullptr when they cannot be had.
    const Records* list(const Text& rowSource);

private:
    access::DesignSource designs_;
    RecordSource records_;
    std::map<Text, std::optional<Records>> lists_; // by row source
};

} // namespace relvane::formview
