// SHA-256 of a text's bytes in hexadecimal digits, to compare texts with digests of them.
#pragma once

#include <string>
#include <string_view>

namespace relvane::test {

std::string sha256(std::string_view bytes);

} // namespace relvane::test
