// Property blobs: what Access and users have stored about an object and its columns, in the column LvProp of the
// catalogue.
#pragma once

#include <string>
#include <vector>

#include "jet/page_file.h"

namespace relvane::jet {

struct StoredProperty {
    Text name;    // in the spelling in which it was written
    int type = 0; // ColumnType, as a number
    bool needsDesignPermission = false;
    Value value;
};

struct PropertyBlob {
    struct ColumnProperties {
        Text column;
        std::vector<StoredProperty> properties;
    };
    std::vector<StoredProperty> ofObject;
    std::vector<ColumnProperties> ofColumns;

    // Without regard to case; nullptr when nothing is stored under that name.
    const StoredProperty* find(TextView name) const;
    const std::vector<StoredProperty>* column(TextView name) const;
};

const StoredProperty* findProperty(const std::vector<StoredProperty>& properties, TextView name);

// Most of a table's blob is about its columns, which whoever asks for the object alone need not pay for.
enum class PropertyScope { Everything, ObjectAlone };

// An empty blob has no properties. Error 3049 for anything that does not fit.
PropertyBlob readPropertyBlob(const PageFile& file, const ByteSpan& blob,
                              PropertyScope scope = PropertyScope::Everything);

} // namespace relvane::jet
