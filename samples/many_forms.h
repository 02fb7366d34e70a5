// Databases of many forms made by rule, for benchmarks and for tests of size.
#pragma once

#include "sample_builder/database_spec.h"

namespace relvane::samples {

// `forms` forms of exactly `controlsEach` controls, labels and the choices of option groups counted: text boxes, combo
// and list boxes, check boxes, buttons, option groups, subforms, images, lines and rectangles in turn, with sources,
// formats, rules, hints and events as applications have them. Every third form has a module. Access itself allows 754
// controls in a form; manyForms(64, 512) has 32,768 in all. The same numbers give the same database.
DatabaseSpec manyForms(int forms, int controlsEach);

} // namespace relvane::samples
