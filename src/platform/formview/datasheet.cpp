#include "formview/datasheet.h"

#include <algorithm>

#include "formview/colours.h"
#include "formview/window_parts.h"

namespace relvane::formview {
namespace {

using access::DesignObject;
using access::DesignType;

struct Column {
    const DesignObject* control;
    int width; // pixels
};

bool isColumn(const DesignObject& control) {
    constexpr DesignType types[] = {DesignType::TextBox,      DesignType::ComboBox,
                                    DesignType::ListBox,      DesignType::CheckBox,
                                    DesignType::OptionButton, DesignType::ToggleButton,
                                    DesignType::OptionGroup,  DesignType::BoundObjectFrame};
    return std::ranges::count(types, control.type()) > 0 && !control.isInOptionGroup() &&
           !flag(control, u"ColumnHidden") && number(control, u"ColumnWidth", -1) != 0;
}

// In the order that a person gave the columns, then in that of the Tab key.
std::vector<Column> columnsOf(const access::Design& design) {
    constexpr int usualWidth = 96;
    std::vector<Column> columns;
    for (const DesignObject* control : design.controls()) {
        if (isColumn(*control) && control->section()->type() == DesignType::Section) {
            const int stored = number(*control, u"ColumnWidth", -1);
            columns.push_back({control, stored > 0 ? pixelsOfTwips(stored) : usualWidth});
        }
    }
    const auto place = [](const Column& column) {
        const int order = number(*column.control, u"ColumnOrder");
        return std::pair(order > 0 ? order : 0x10000, number(*column.control, u"TabIndex"));
    };
    std::ranges::stable_sort(columns, [&](const Column& a, const Column& b) { return place(a) < place(b); });
    return columns;
}

QString headingOf(const DesignObject& control) {
    const DesignObject* label = control.attachedLabel();
    QString heading = label == nullptr ? QString() : captionOf(qText(text(*label, u"Caption"))).text;
    if (heading.endsWith(u':') || heading.endsWith(u'：')) {
        heading.chop(1);
    }
    return heading.isEmpty() ? qText(control.name()) : heading;
}

QFont sheetFont(const DesignObject& root) {
    constexpr int usualPoints = 10, bold = 600;
    const int points = number(root, u"DatasheetFontHeight");
    Text name = text(root, u"DatasheetFontName");
    return fontOf({.name = name.empty() ? Text(u"Arial") : std::move(name),
                   .points = points > 0 ? points : usualPoints,
                   .bold = number(root, u"DatasheetFontWeight", 400) >= bold,
                   .italic = flag(root, u"DatasheetFontItalic"),
                   .underline = flag(root, u"DatasheetFontUnderline")});
}

int rowHeightOf(const DesignObject& root) {
    constexpr int aroundText = 3;
    const int stored = number(root, u"RowHeight");
    return stored > 0 ? pixelsOfTwips(stored) : QFontMetrics(sheetFont(root)).height() + aroundText;
}

int headingHeightOf(const DesignObject& root) {
    return QFontMetrics(sheetFont(root)).height() + 3;
}

} // namespace

QSize datasheetSize(const access::Design& design, std::size_t rows) {
    int width = 0;
    for (const Column& column : columnsOf(design)) {
        width += column.width;
    }
    return {width, headingHeightOf(design.root()) + static_cast<int>(rows) * rowHeightOf(design.root())};
}

void drawDatasheet(QPainter& painter, QRect body, const access::Design& design, FormTarget& target,
                   RecordInHand record, std::size_t rows) {
    const DesignObject& root = design.root();
    const auto columns = columnsOf(design);
    const QFont font = sheetFont(root);
    const int rowHeight = rowHeightOf(root), headingHeight = headingHeightOf(root);
    const int selector = flag(root, u"RecordSelectors", true) ? selectorWidth : 0;
    const int behaviour = number(root, u"DatasheetGridlinesBehavior", 3);
    enum Gridlines { across = 1, down = 2 };
    const QColor grid = colourOf(number(root, u"DatasheetGridlinesColor", 0xC0C0C0));
    const QColor back = colourOf(number(root, u"DatasheetBackColor", 0xFFFFFF));
    const QColor fore = colourOf(number(root, u"DatasheetForeColor", 0));
    const QColor face = colourOf(ScreenPart::ButtonFace);
    painter.fillRect(body, colourOf(ScreenPart::Workspace));
    if (selector > 0) {
        const QRect corner(body.left(), body.top(), selector, headingHeight);
        painter.fillRect(corner, face);
        drawThinRaised(painter, corner);
    }
    int x = body.left() + selector;
    for (const Column& column : columns) {
        const QRect heading(x, body.top(), column.width, headingHeight);
        painter.fillRect(heading, face);
        drawThinRaised(painter, heading);
        drawText(painter, {headingOf(*column.control), {}}, font, Qt::black,
                 {heading.adjusted(3, 1, -2, -1), HorizontalPlace::Centre, VerticalPlace::Middle, false});
        x += column.width;
    }
    int top = body.top() + headingHeight;
    for (std::size_t row = 0; row < rows && top <= body.bottom(); ++row) {
        record.row = row;
        if (selector > 0) {
            drawRecordSelector(painter, {body.left(), top, selector, rowHeight},
                               row == 0         ? SelectorSign::Current
                               : record.isNew() ? SelectorSign::New
                                                : SelectorSign::None);
        }
        const QColor ground = alternateColour(root, u"DatasheetAlternateBackColor", row).value_or(back);
        x = body.left() + selector;
        for (const Column& column : columns) {
            const QRect cell(x, top, column.width, rowHeight);
            painter.fillRect(cell, ground);
            if ((behaviour & across) != 0) {
                painter.fillRect(cell.left(), cell.bottom(), cell.width(), 1, grid);
            }
            if ((behaviour & down) != 0) {
                painter.fillRect(cell.right(), cell.top(), 1, cell.height(), grid);
            }
            const DesignObject& control = *column.control;
            const bool isCheck = control.type() == DesignType::CheckBox;
            if (isCheck) {
                const Value value = controlValue(control, record);
                bool isTicked = false;
                skipErrors([&] { isTicked = !std::holds_alternative<Null>(value) && toBoolean(value); });
                QRect box(0, 0, 11, 11);
                box.moveCenter(cell.center());
                drawFrame(painter, box, Qt::black, Qt::black);
                for (int i = 0; isTicked && i < 7; ++i) {
                    constexpr int tops[] = {4, 5, 6, 5, 4, 3, 2};
                    painter.fillRect(box.left() + 2 + i, box.top() + tops[i], 1, 2, Qt::black);
                }
            } else if (control.type() != DesignType::BoundObjectFrame) {
                const ShownText shown = control.type() == DesignType::ComboBox
                                            ? shownChoice(control, record, target)
                                            : shownText(control, record);
                const int align = number(control, u"TextAlign");
                drawText(
                    painter, {shown.text, {}}, font, fore,
                    {cell.adjusted(3, 1, -3, -1),
                     horizontalPlace(align, shown.isNumber ? HorizontalPlace::Right : HorizontalPlace::Left),
                     VerticalPlace::Top, false});
            }
            x += column.width;
        }
        top += rowHeight;
    }
}

} // namespace relvane::formview
