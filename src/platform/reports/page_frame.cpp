#include "reports/page_frame.h"

#include <algorithm>

namespace relvane::reports {
namespace {

constexpr double titleShare = 0.55;      // of the head, at most, for the title
constexpr std::size_t mostHeadLines = 4; // of the title and of the file line

// Leaves so many lines as a head may have, and a sign where there were more.
void limit(std::vector<TextLine>& lines) {
    if (lines.size() > mostHeadLines) {
        lines.resize(mostHeadLines);
        lines.back().text.chop(1);
        lines.back().text += QChar(style::cutSign);
    }
}

} // namespace

double sheetWidth(const ReportDefinition& definition) {
    return definition.orientation == Orientation::Lying ? style::sheetLong : style::sheetShort;
}

double sheetHeight(const ReportDefinition& definition) {
    return definition.orientation == Orientation::Lying ? style::sheetShort : style::sheetLong;
}

PageFrame::PageFrame(const ReportDefinition& definition, Fonts& fonts, const QString& title,
                     const QString& fileLine, const DateTime& printed)
    : fonts_(fonts) {
    const bool lying = definition.orientation == Orientation::Lying;
    left_ = lying ? style::margin : style::bindingMargin;
    right_ = sheetWidth(definition) - style::margin;
    footTop_ = sheetHeight(definition) - style::margin - style::footHeight;

    // Title on the left, the lines on the right; both begin at the top and end on the double rule.
    const int titleFont = fonts.number(style::title), lineFont = fonts.number(style::note);
    title_ = wrap(fonts, titleFont, title, width() * titleShare, Wrap::Words);
    limit(title_);
    double titleWidth = 0;
    for (const TextLine& line : title_) {
        titleWidth = std::max(titleWidth, fonts.width(titleFont, line.text));
    }
    if (!fileLine.isEmpty()) {
        right_lines_ =
            wrap(fonts, lineFont, fileLine, width() - titleWidth - 6 * style::mm, Wrap::Characters);
        limit(right_lines_);
    }
    right_lines_.push_back({formatted(Value(printed), Format::Time).left(16)});
    const double linesHeight = (static_cast<double>(right_lines_.size()) + 1) * fonts.pitch(lineFont);
    const double titleHeight = static_cast<double>(title_.size()) * fonts.pitch(titleFont);
    const double top = lying ? style::bindingMargin : style::margin;
    const double height = std::max(linesHeight, titleHeight);
    titleTop_ = top + height - titleHeight;
    linesTop_ = top + height - linesHeight;
    ruleTop_ = top + height + 1.2 * style::mm;
    bodyTop_ = ruleTop_ + style::headGap;
}

void PageFrame::add(Page& page, int number, int count) const {
    const auto addLine = [&](const style::TextStyle& textStyle, Align align, double top,
                             const QString& text) {
        const int font = fonts_.number(textStyle);
        const double textWidth = fonts_.width(font, text);
        page.items.push_back(
            textItem(fonts_, font, textStyle.ink, alignedX(align, left_, width(), textWidth), top, text));
    };
    double top = titleTop_;
    for (const TextLine& line : title_) {
        addLine(style::title, Align::Left, top, line.text);
        top += fonts_.pitch(fonts_.number(style::title));
    }
    const double pitch = fonts_.pitch(fonts_.number(style::note));
    top = linesTop_;
    for (const TextLine& line : right_lines_) {
        addLine(style::note, Align::Right, top, line.text);
        top += pitch;
    }
    addLine(style::note, Align::Right, top, QString::fromUtf16(u"頁 %1 / %2").arg(number).arg(count));
    page.items.push_back(ruleItem(left_, ruleTop_, right_, ruleTop_, style::thick, 0));
    page.items.push_back(ruleItem(left_, ruleTop_ + 2.2 * style::point, right_, ruleTop_ + 2.2 * style::point,
                                  style::thin, 0));

    page.items.push_back(ruleItem(left_, footTop_, right_, footTop_, style::thin));
    const double footText = footTop_ + 1.2 * style::mm;
    const QString product = QString::fromUtf16(style::productLine);
    addLine(style::product, Align::Right, footText, product);
    const int font = fonts_.number(style::note);
    const double room = width() - fonts_.width(fonts_.number(style::product), product) - 8 * style::mm;
    QString inHand = elide(fonts_, font, page.firstInHand, room);
    if (page.firstInHand != page.lastInHand && !page.lastInHand.isEmpty()) {
        const QString dash = QString::fromUtf16(u" ～ ");
        const QString whole = page.firstInHand + dash + page.lastInHand;
        const double half = (room - fonts_.width(font, dash)) / 2;
        inHand = fonts_.width(font, whole) <= room ? elide(fonts_, font, whole, room)
                                                   : elide(fonts_, font, page.firstInHand, half) + dash +
                                                         elide(fonts_, font, page.lastInHand, half);
    }
    addLine(style::note, Align::Left, footText, inHand);
}

} // namespace relvane::reports
