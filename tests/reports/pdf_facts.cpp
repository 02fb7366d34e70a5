#include "pdf_facts.h"

#include <algorithm>

#define POINTERHOLDER_TRANSITION 4
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFOutlineDocumentHelper.hh>
#include <qpdf/QPDFPageLabelDocumentHelper.hh>

namespace relvane::test {
namespace {

void addEntries(QPDF& file, const std::vector<QPDFOutlineObjectHelper>& entries, const std::string& inset,
                std::vector<std::string>& result) {
    const std::vector<QPDFObjectHandle>& pages = file.getAllPages();
    for (QPDFOutlineObjectHelper entry : entries) {
        const auto page = std::find_if(pages.begin(), pages.end(), [&](const QPDFObjectHandle& candidate) {
            return candidate.getObjGen() == entry.getDestPage().getObjGen();
        });
        result.push_back(inset + entry.getTitle() + " " + std::to_string(page - pages.begin() + 1));
        addEntries(file, entry.getKids(), inset + " ", result);
    }
}

} // namespace

PdfFacts factsOf(const std::string& path) {
    QPDF file;
    file.setSuppressWarnings(true);
    file.processFile(path.c_str());
    QPDFObjectHandle root = file.getRoot();
    PdfFacts facts;
    facts.language = root.getKey("/Lang").getUTF8Value();
    facts.pageMode = root.getKey("/PageMode").getName();
    facts.showsTitle = root.getKey("/ViewerPreferences").getKey("/DisplayDocTitle").getBoolValue();
    facts.creationDate = file.getTrailer().getKey("/Info").getKey("/CreationDate").getUTF8Value();
    facts.labelStyle = QPDFPageLabelDocumentHelper(file).getLabelForPage(0).getKey("/S").getName();
    addEntries(file, QPDFOutlineDocumentHelper(file).getTopLevelOutlines(), "", facts.outline);
    facts.warnings = file.anyWarnings();
    return facts;
}

} // namespace relvane::test
