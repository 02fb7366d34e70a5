// Property blobs, as the catalogue keeps them in LvProp.
#pragma once

#include <utility>
#include <vector>

#include "sample_builder/database_spec.h"
#include "sample_builder/text_coding.h"

namespace relvane::samples {

using NamedProperties = std::pair<Text, const std::vector<PropertySpec>*>;

// The blob of an object's own properties and of those of its columns; nothing when there are no properties at all.
std::optional<Bytes> propertyBlob(const std::vector<PropertySpec>& ofObject,
                                  const std::vector<NamedProperties>& ofColumns, TextCoding coding);

} // namespace relvane::samples
