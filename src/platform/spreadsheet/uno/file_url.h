// Paths as the addresses that LibreOffice takes ("file:///a%20b").
#pragma once

#include <string>
#include <string_view>

namespace relvane::spreadsheet {

std::string fileUrl(std::string_view path); // of an absolute path
// The bytes that an address stands for. Two addresses of one file may differ in what they escape.
std::string unescaped(std::string_view url);

} // namespace relvane::spreadsheet
