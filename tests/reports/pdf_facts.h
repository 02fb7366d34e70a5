// What a PDF file holds besides its pages. C++17 and the standard library alone, as the headers of libqpdf want it.
#pragma once

#include <string>
#include <vector>

namespace relvane::test {

struct PdfFacts {
    bool warnings = false; // the file is not quite sound
    bool showsTitle = false;
    std::string language, pageMode, creationDate, labelStyle;
    std::vector<std::string>
        outline; // title and page (from 1) of each entry, a blank before it for each level
};

PdfFacts factsOf(const std::string& path);

} // namespace relvane::test
