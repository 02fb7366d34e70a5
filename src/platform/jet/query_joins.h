// The sources of a saved query and how they are joined: the text behind FROM, and the test for outer joins that
// can be read in two ways.
#pragma once

#include <vector>

#include "jet/query_parts.h"

namespace relvane::jet {

// How the version of Jet writes a few things.
enum class SqlDialect { Jet3, Jet4 };

// The list behind FROM: sources without joins first, then one composite for each group of joined sources.
// Error 3049 for more than 32 sources, for a join of an unknown kind and for a source joined with itself.
Text printedSources(const QueryParts& parts, SqlDialect dialect);

// The sources (in capitals, by alias) that make the joins ambiguous: what an outer join may leave out stands in
// an inner join too, or may be left out by a second outer join. In the order of the join rows.
std::vector<Text> ambiguousSources(const QueryParts& parts);

} // namespace relvane::jet
