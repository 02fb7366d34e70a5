// A design in the two streams that Access keeps of it.
#pragma once

#include "sample_builder/design_spec.h"
#include "sample_builder/text_coding.h"

namespace relvane::samples {

// The design itself: version 17, that of Access 97, or with wide texts 19, that of Access 2000. What equals the inherited
// value (of the form's default block, or else built in) is not stored. Stored without being asked for, as Access derives them: AccessKey from the "&" of a caption,
// EventProcPrefix of a name that is none for a procedure, RowSourceTypeInt beside RowSourceType.
// std::invalid_argument names a property that the type does not have or that cannot be kept so.
Bytes designStream(const DesignSpec& design, TextCoding coding);

// The list of names beside it.
Bytes typeInfoStream(const DesignSpec& design, int codePage);

// The name as procedures have it: "氏名 (カナ)" is 氏名__カナ_.
Text procedurePrefix(TextView name);

} // namespace relvane::samples
