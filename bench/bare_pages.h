// The bare way to a PDF file: the texts of some pages as the engine sets them, drawn over and over on the same page
// writer by a loop that does nothing else.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include <QPainter>
#include <QPdfWriter>

#include "reports/composer.h"
#include "reports/page_frame.h"

namespace relvane::bench {

class BarePages {
public:
    // Takes the texts of the first pages of a report.
    BarePages(const std::shared_ptr<RowStore>& store, const reports::ReportDefinition& report,
              const DateTime& now)
        : lying_(report.orientation == reports::Orientation::Lying) {
        reports::Rows rows(store, report.source, report.sort, report.fields);
        const reports::PageFrame frame(report, fonts_, QStringLiteral("一覧"), {}, now);
        const double width =
            (frame.width() - (report.columns - 1) * reports::style::columnGap) / report.columns;
        reports::Bands bands(report, fonts_, width);
        reports::Composer composer(
            report, bands, rows, {},
            {frame.left(), frame.bodyTop(), frame.bodyBottom(), width, report.columns});
        for (Texts& texts : samples_) {
            reports::Page page;
            composer.compose(page, nullptr, 0);
            frame.add(page, 1, 1);
            std::copy_if(page.items.begin(), page.items.end(), std::back_inserter(texts),
                         [](const auto& item) { return item.kind == reports::Item::Kind::Text; });
        }
    }

    void draw(int pages, const std::string& path) const {
        QPdfWriter writer(QString::fromStdString(path));
        writer.setResolution(1440);
        writer.setPageLayout(QPageLayout(
            QPageSize(QPageSize::A4), lying_ ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
        QPainter painter(&writer);
        for (int number = 0; number < pages; ++number) {
            if (number > 0) {
                writer.newPage();
            }
            int font = -1;
            for (const reports::Item& item : samples_[static_cast<std::size_t>(number) % samples_.size()]) {
                if (font != item.font) {
                    painter.setFont(fonts_.font(item.font));
                    font = item.font;
                }
                painter.drawText(QPointF(item.box.x(), item.box.y() + item.baseline), item.text);
            }
        }
        painter.end();
    }

private:
    using Texts = std::vector<reports::Item>;

    bool lying_;
    reports::Fonts fonts_;
    std::vector<Texts> samples_ = std::vector<Texts>(20);
};

} // namespace relvane::bench
