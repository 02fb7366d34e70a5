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

QPageLayout layoutOf(const QSizeF& size) {
    const bool lying = size.width() > size.height();
    return {QPageSize(QPageSize::A4), lying ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()};
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

// All but the outline.
PdfExtras extrasOf(const ReportDocument& document) {
    const QDateTime date = moment(document.printedAt());
    PdfExtras extras;
    extras.title = toUtf8(document.title());
    extras.author = toUtf8(document.author());
    extras.creator = toUtf8(style::productLine);
    extras.language = language;
    extras.date = pdfDate(date);
    extras.metadata = metadataOf(document, date);
    return extras;
}

} // namespace

// Pages of any number of reports in the making.
class BoundPdf::Pages {
public:
    explicit Pages(const Text& path) : path_(path), file_(path, u".pages"), writer_(&file_) {
        writer_.setPdfVersion(QPagedPaintDevice::PdfVersion_1_6);
        writer_.setResolution(twipsPerInch);
    }

    int pageCount() const { return pageCount_; }
    PdfExtras extras;

    void draw(const ReportDocument& document) {
        if (!painter_.isActive()) {
            writer_.setPageLayout(layoutOf(document.pageSize(0)));
            writer_.setTitle(toQString(document.title()));
            extras = extrasOf(document);
            painter_.begin(&writer_);
        }
        for (int page = 0; page < document.pageCount(); ++page) {
            if (pageCount_++ > 0) {
                writer_.setPageLayout(layoutOf(document.pageSize(page)));
                writer_.newPage();
            }
            document.paint(painter_, page);
            if (page % pagesBetweenChecks == 0) {
                file_.check(); // no use in drawing on, when the disk is full
            }
        }
    }

    void finish() {
        painter_.end();
        file_.check();
        OutputFile whole(path_, u".part");
        try {
            addExtras(file_.nativeName(), extras, [&](const char* data, std::size_t size) {
                whole.write(data, static_cast<qint64>(size));
            });
        } catch (const PdfFailure& failure) {
            if (failure.systemError == 0) {
                throw RunTimeError(ErrorNumber::FileAccess, fromUtf8(failure.reason));
            }
            whole.fail(failure.systemError);
        }
        whole.renameTo(path_);
    }

private:
    Text path_;
    OutputFile file_;
    QPdfWriter writer_;
    QPainter painter_;
    int pageCount_ = 0;
};

BoundPdf::BoundPdf(const Text& path) : pages_(std::make_unique<Pages>(path)) {}
BoundPdf::BoundPdf(BoundPdf&&) noexcept = default;
BoundPdf::~BoundPdf() = default;

void BoundPdf::add(const ReportDocument& document, const Text& chapter) {
    const int first = pages_->pageCount();
    pages_->draw(document);
    auto& outline = pages_->extras.outline;
    const int level = chapter.empty() ? 0 : 1;
    if (!chapter.empty() || document.outline().empty()) { // every page is reached from the outline
        outline.push_back({0, toUtf8(chapter.empty() ? document.title() : chapter), first});
    }
    for (const OutlineEntry& entry : document.outline()) {
        outline.push_back({entry.level + level, toUtf8(entry.text), first + entry.page});
    }
}

void BoundPdf::finish() {
    pages_->finish();
}

void writePdf(const ReportDocument& document, const Text& path) {
    BoundPdf file(path);
    file.add(document, {});
    file.finish();
}

} // namespace relvane::reports
