// What the batch runs, and with which options, as a text file: a key, "=" and a digit on each line.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// Takes the fields of which the file has a line; the others stay. A line counts for the first key that stands anywhere
// in it, by the one character behind the key's "=". Error 13 where that is no digit; the lines before it have counted.
// 53, 57, 76 for a file that cannot be read.
void ReadPattern(AnalysisContext& context, const Text& path);

// Replaces the file; 57, 61, 70, 76.
void writePattern(AnalysisContext& context, const Text& path);

} // namespace relvane
