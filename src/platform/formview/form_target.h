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

    // Error 2102 for a form that does not exist, and those of DesignSource::design. A design is read once.
    std::shared_ptr<const access::Design> design(const Text& form);

    // How many subforms one picture may still show: each may hold others, so that a few forms could go on for hours.
    int subformsLeft = 0;
    // How many values it may still compute: controls name each other, and totals go over all records for each row.
    std::int64_t valuesLeft = 0;

    const RecordSource& records() const { return records_; }
    // All rows behind a combo or list box, read once; nullptr when they cannot be had.
    const Records* list(const Text& rowSource);

private:
    access::DesignSource designs_;
    RecordSource records_;
    std::map<Text, std::shared_ptr<const access::Design>> read_; // by name in capitals
    std::map<Text, std::optional<Records>> lists_;               // by row source
};

} // namespace relvane::formview
