// The compression in which VBA keeps the text of its modules and the directory of its project: a signature byte, then
// chunks, each of which stands for 4096 bytes, the last one for what is left.
#pragma once

#include <optional>
#include <span>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane::access {

// The bytes that `compressed` stands for. They begin at its signature and end with its last byte. Error 3049 with the
// owner and the offset for anything that does not fit, a last chunk that is cut off and more than 64 MB included;
// bytes that end exactly behind a chunk are whole.
Bytes decompressVba(std::span<const std::uint8_t> compressed, TextView owner, TextView part);

// Where in the stream of a module its text begins: at `expected` when what stands there can be the text, or else at
// the first place where it can. The text is compressed, begins with "Attribute " and ends where the stream ends.
std::optional<std::size_t> findVbaText(std::span<const std::uint8_t> stream, std::size_t expected);

} // namespace relvane::access
