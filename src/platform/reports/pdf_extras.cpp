#include "reports/pdf_extras.h"

#include <algorithm>

#define POINTERHOLDER_TRANSITION 4
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFSystemError.hh>
#include <qpdf/QPDFWriter.hh>

namespace relvane::reports {
namespace {

using Handle = QPDFObjectHandle;

void setInformation(QPDF& pdf, const PdfExtras& extras) {
    Handle information = pdf.getTrailer().getKey("/Info");
    if (!information.isDictionary()) {
        information = pdf.makeIndirectObject(Handle::newDictionary());
        pdf.getTrailer().replaceKey("/Info", information);
    }
    information.replaceKey("/Title", Handle::newUnicodeString(extras.title));
    information.replaceKey("/Author", Handle::newUnicodeString(extras.author));
    information.replaceKey("/Creator", Handle::newUnicodeString(extras.creator));
    information.replaceKey("/CreationDate", Handle::newString(extras.date));
    information.replaceKey("/ModDate", Handle::newString(extras.date));

    Handle metadata = Handle::newStream(&pdf, extras.metadata);
    metadata.getDict().replaceKey("/Type", Handle::newName("/Metadata"));
    metadata.getDict().replaceKey("/Subtype", Handle::newName("/XML"));
    pdf.getRoot().replaceKey("/Metadata", metadata);
}

// An entry of the outline tree while it is linked up.
struct Node {
    Handle handle;
    Handle last;   // child
    int count = 0; // children
};

void append(Node& parent, Handle child) {
    child.replaceKey("/Parent", parent.handle);
    if (parent.count == 0) {
        parent.handle.replaceKey("/First", child);
    } else {
        child.replaceKey("/Prev", parent.last);
        parent.last.replaceKey("/Next", child);
    }
    parent.handle.replaceKey("/Last", child);
    parent.last = child;
    ++parent.count;
    // The first level is open, what lies below it closed.
    const bool isRoot = !parent.handle.hasKey("/Title");
    parent.handle.replaceKey("/Count", Handle::newInteger(isRoot ? parent.count : -parent.count));
}

void setOutline(QPDF& pdf, const PdfExtras& extras, const std::vector<Handle>& pages) {
    std::vector<Node> open{{pdf.makeIndirectObject(Handle::newDictionary()), {}, 0}};
    open.front().handle.replaceKey("/Type", Handle::newName("/Outlines"));
    for (const PdfExtras::Entry& entry : extras.outline) {
        Handle item = pdf.makeIndirectObject(Handle::newDictionary());
        item.replaceKey("/Title", Handle::newUnicodeString(entry.text));
        Handle destination = Handle::newArray();
        destination.appendItem(pages.at(static_cast<std::size_t>(entry.page)));
        destination.appendItem(Handle::newName("/Fit"));
        item.replaceKey("/Dest", destination);
        open.resize(std::min(static_cast<std::size_t>(entry.level) + 1, open.size()));
        append(open.back(), item);
        open.push_back({item, {}, 0});
    }
    pdf.getRoot().replaceKey("/Outlines", open.front().handle);
    pdf.getRoot().replaceKey("/PageMode", Handle::newName("/UseOutlines"));
}

void setCatalog(QPDF& pdf, const PdfExtras& extras) {
    Handle root = pdf.getRoot();
    root.replaceKey("/Lang", Handle::newString(extras.language));
    root.replaceKey("/ViewerPreferences", Handle::parse("<< /DisplayDocTitle true >>"));
    root.replaceKey("/PageLabels", Handle::parse("<< /Nums [ 0 << /S /D >> ] >>"));
}

class FunctionPipeline : public Pipeline {
public:
    explicit FunctionPipeline(const std::function<void(const char*, std::size_t)>& function)
        : Pipeline("file", nullptr), function_(function) {}
    void write(unsigned char const* data, std::size_t length) override {
        function_(reinterpret_cast<const char*>(data), length);
    }
    void finish() override {}

private:
    const std::function<void(const char*, std::size_t)>& function_;
};

} // namespace

void addExtras(const std::string& pagesFile, const PdfExtras& extras,
               const std::function<void(const char* data, std::size_t size)>& write) {
    try {
        QPDF pdf;
        pdf.processFile(pagesFile.c_str());
        setInformation(pdf, extras);
        setOutline(pdf, extras, pdf.getAllPages());
        setCatalog(pdf, extras);
        FunctionPipeline pipeline(write);
        QPDFWriter writer(pdf);
        writer.setOutputPipeline(&pipeline);
        writer.setObjectStreamMode(qpdf_o_generate);
        writer.setDeterministicID(true);
        writer.write();
    } catch (const QPDFSystemError& error) {
        throw PdfFailure{error.getErrno(), error.what()};
    } catch (const QPDFExc& error) {
        throw PdfFailure{0, error.what()};
    }
}

} // namespace relvane::reports
