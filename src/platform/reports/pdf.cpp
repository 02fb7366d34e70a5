#include "reports/pdf.h"

#include <QDateTime>
#include <QPainter>
#include <QPdfWriter>

#include "platform/runtime_error.h"
#include "reports/output_file.h"
#include "reports/pdf_extras.h"
#include "reports/row_text.h"
#include "reports/style.h"

namespace relvane::reports {
namespace {

constexpr int twipsPerInch = 1440;
constexpr int pagesBetweenChecks = 50;
constexpr char language[] = "ja";

void drawPages(const ReportDocument& document, OutputFile& file) {
    QPdfWriter writer(&file);
    writer.setPdfVersion(QPagedPaintDevice::PdfVersion_1_6);
    writer.setResolution(twipsPerInch);
    const QSizeF size = document.pageSize(0);
    const bool lying = size.width() > size.height();
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                     lying ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
    writer.setTitle(toQString(document.title()));
    QPainter painter(&writer);
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0) {
            writer.newPage();
        }
        document.paint(painter, page);
        if (page % pagesBetweenChecks == 0) {
            file.check(); // no use in drawing on, when the disk is full
        }
    }
    painter.end();
    file.check();
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

// Title, author and date once more, as readers of metadata packets want them.
std::string metadataOf(const ReportDocument& document, const QDateTime& date) {
    return QStringLiteral("<?xpacket begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
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
             toQString(fromUtf8(language)), QString::fromUtf16(style::productLine),
             date.toOffsetFromUtc(date.offsetFromUtc()).toString(Qt::ISODate))
        .toStdString();
}

PdfExtras extrasOf(const ReportDocument& document) {
    const QDateTime date = moment(document.printedAt());
    PdfExtras extras;
    extras.title = toUtf8(document.title());
    extras.author = toUtf8(document.author());
    extras.creator = toUtf8(style::productLine);
    extras.language = language;
    extras.date = pdfDate(date);
    extras.metadata = metadataOf(document, date);
    for (const OutlineEntry& entry : document.outline()) {
        extras.outline.push_back({entry.level, toUtf8(entry.text), entry.page});
    }
    if (extras.outline.empty()) {
        extras.outline.push_back({0, extras.title, 0});
    }
    return extras;
}

} // namespace

void writePdf(const ReportDocument& document, const Text& path) {
    OutputFile pages(path, u".pages");
    drawPages(document, pages);
    OutputFile whole(path, u".part");
    try {
        addExtras(pages.nativeName(), extrasOf(document),
                  [&](const char* data, std::size_t size) { whole.write(data, static_cast<qint64>(size)); });
    } catch (const PdfFailure& failure) {
        if (failure.systemError == 0) {
            throw RunTimeError(ErrorNumber::FileAccess, fromUtf8(failure.reason));
        }
        whole.fail(failure.systemError);
    }
    whole.renameTo(path);
}

} // namespace relvane::reports
