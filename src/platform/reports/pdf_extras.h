// What the page writer cannot put into a PDF file: outline, page labels, language, author, date.
//
// This header and its source use C++17 and the standard library alone: the headers of libqpdf do not compile as
// C++20 with every compiler of ours.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace relvane::reports {

// All texts are UTF-8.
struct PdfExtras {
    struct Entry {
        int level; // 0 outermost
        std::string text;
        int page; // from 0
    };
    std::string title, author, creator, language;
    std::string date;     // D:20261120160509+09'00'
    std::string metadata; // the packet that says the same in XML
    std::vector<Entry> outline;
};

struct PdfFailure {
    int systemError = 0; // 0: the file is no sound PDF
    std::string reason;
};

// Reads the drawn pages from a file and hands the whole document, piece by piece, to `write`. Throws PdfFailure.
void addExtras(const std::string& pagesFile, const PdfExtras& extras,
               const std::function<void(const char* data, std::size_t size)>& write);

} // namespace relvane::reports
