#include "reports/pdf_extras.h"

#include <cerrno>

#include <QDateTime>
#include <QString>

#define POINTERHOLDER_TRANSITION 4
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFSystemError.hh>
#include <qpdf/QPDFWriter.hh>

#include "platform/runtime_error.h"
#include "reports/row_text.h"
#include "reports/style.h"

namespace relvane::reports {
namespace {

using Handle = QPDFObjectHandle;

constexpr char language[] = "ja";

Handle unicode(const Text& text) {
    return Handle::newUnicodeString(toUtf8(text));
}

QDateTime moment(const DateTime& date) {
    return {QDate(date.year, date.month, date.day), QTime(date.hour, date.minute, date.second)};
}

// D:20261120160509+09'00'
std::string pdfDate(const QDateTime& date) {
    const int minutes = date.offsetFromUtc() / 60;
    const QString zone = QStringLiteral("%1%2'%3'")
                             .arg(QChar(minutes < 0 ? u'-' : u'+'))
                             .arg(qAbs(minutes) / 60, 2, 10, QChar(u'0'))
                             .arg(qAbs(minutes) % 60, 2, 10, QChar(u'0'));
    return (date.toString(QStringLiteral("'D:'yyyyMMddHHmmss")) + zone).toStdString();
}

void setInformation(QPDF& pdf, const ReportDocument& document) {
    const QDateTime date = moment(document.printedAt());
    Handle information = pdf.getTrailer().getKey("/Info");
    if (!information.isDictionary()) {
        information = pdf.makeIndirectObject(Handle::newDictionary());
        pdf.getTrailer().replaceKey("/Info", information);
    }
    information.replaceKey("/Title", unicode(document.title()));
    information.replaceKey("/Author", unicode(document.author()));
    information.replaceKey("/Creator", unicode(style::productLine));
    information.replaceKey("/CreationDate", Handle::newString(pdfDate(date)));
    information.replaceKey("/ModDate", Handle::newString(pdfDate(date)));

    // The same once more as readers of metadata packets want it.
    const QString packet =
        QStringLiteral("<?xpacket begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
                       "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
                       "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
                       "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\""
                       " xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\">"
                       "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">%1</rdf:li></rdf:Alt></dc:title>"
                       "<dc:creator><rdf:Seq><rdf:li>%2</rdf:li></rdf:Seq></dc:creator>"
                       "<dc:language><rdf:Bag><rdf:li>%3</rdf:li></rdf:Bag></dc:language>"
                       "<xmp:CreatorTool>%4</xmp:CreatorTool>"
                       "<xmp:CreateDate>%5</xmp:CreateDate><xmp:ModifyDate>%5</xmp:ModifyDate>"
                       "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"w\"?>")
            .arg(toQString(document.title()).toHtmlEscaped(), toQString(document.author()).toHtmlEscaped(),
                 QLatin1String(language), QString::fromUtf16(style::productLine),
                 date.toOffsetFromUtc(date.offsetFromUtc()).toString(Qt::ISODate));
    Handle metadata = Handle::newStream(&pdf, packet.toStdString());
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

void setOutline(QPDF& pdf, const ReportDocument& document, const std::vector<Handle>& pages) {
    std::vector<OutlineEntry> entries = document.outline();
    if (entries.empty()) {
        entries.push_back({0, document.title(), 0});
    }
    std::vector<Node> open{{pdf.makeIndirectObject(Handle::newDictionary()), {}, 0}};
    open.front().handle.replaceKey("/Type", Handle::newName("/Outlines"));
    for (const OutlineEntry& entry : entries) {
        Handle item = pdf.makeIndirectObject(Handle::newDictionary());
        item.replaceKey("/Title", unicode(entry.text));
        Handle destination = Handle::newArray();
        destination.appendItem(pages.at(static_cast<std::size_t>(entry.page)));
        destination.appendItem(Handle::newName("/Fit"));
        item.replaceKey("/Dest", destination);
        const auto depth = std::min(static_cast<std::size_t>(entry.level) + 1, open.size());
        open.resize(depth);
        append(open.back(), item);
        open.push_back({item, {}, 0});
    }
    pdf.getRoot().replaceKey("/Outlines", open.front().handle);
    pdf.getRoot().replaceKey("/PageMode", Handle::newName("/UseOutlines"));
}

void setCatalog(QPDF& pdf) {
    Handle root = pdf.getRoot();
    root.replaceKey("/Lang", Handle::newString(language));
    root.replaceKey("/ViewerPreferences", Handle::parse("<< /DisplayDocTitle true >>"));
    root.replaceKey("/PageLabels", Handle::parse("<< /Nums [ 0 << /S /D >> ] >>"));
}

// Hands what the library writes to the file; the file remembers a failure.
class FilePipeline : public Pipeline {
public:
    explicit FilePipeline(OutputFile& file) : Pipeline("file", nullptr), file_(file) {}
    void write(unsigned char const* data, std::size_t length) override {
        file_.write(reinterpret_cast<const char*>(data), static_cast<qint64>(length));
    }
    void finish() override {}

private:
    OutputFile& file_;
};

} // namespace

void writeWithExtras(const ReportDocument& document, const OutputFile& pages, OutputFile& whole) {
    try {
        QPDF pdf;
        pdf.processFile(pages.nativeName().c_str());
        setInformation(pdf, document);
        setOutline(pdf, document, pdf.getAllPages());
        setCatalog(pdf);
        FilePipeline pipeline(whole);
        QPDFWriter writer(pdf);
        writer.setOutputPipeline(&pipeline);
        writer.setObjectStreamMode(qpdf_o_generate);
        writer.setDeterministicID(true);
        writer.write();
        whole.check();
    } catch (const QPDFSystemError& error) {
        whole.fail(error.getErrno());
        whole.check();
    } catch (const QPDFExc& error) {
        throw RunTimeError(ErrorNumber::FileAccess, fromUtf8(error.what()));
    }
}

} // namespace relvane::reports
