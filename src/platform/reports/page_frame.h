// Head and foot of the pages of a list report.
#pragma once

#include "reports/page.h"
#include "reports/row_text.h"

namespace relvane::reports {

class PageFrame {
public:
    // `fileLine` may be empty: then the head has no such line.
    PageFrame(const ReportDefinition& definition, Fonts& fonts, const QString& title, const QString& fileLine,
              const DateTime& printed);

    // Where the body of a page stands.
    double left() const { return left_; }
    double width() const { return right_ - left_; }
    double bodyTop() const { return bodyTop_; }
    double bodyBottom() const { return footTop_ - style::mm; }

    void add(Page& page, int number, int count) const;

private:
    Fonts& fonts_;
    double left_, right_, footTop_;
    double bodyTop_ = 0, ruleTop_ = 0;
    std::vector<TextLine> title_, right_lines_;
    double titleTop_ = 0, linesTop_ = 0;
};

// The sheet as it is held.
double sheetWidth(const ReportDefinition& definition);
double sheetHeight(const ReportDefinition& definition);

} // namespace relvane::reports
