#include "formview/designer.h"

#include <algorithm>

#include "formview/colours.h"
#include "formview/control_painter.h"
#include "formview/stored_picture.h"
#include "formview/window_parts.h"

namespace relvane::formview {
namespace {

using access::DesignObject;
using access::DesignType;

constexpr int rulerWidth = 17, barHeight = 16, groundMargin = 24;

constexpr struct {
    DesignType type;
    const char16_t* title;
} titles[] = {
    {DesignType::FormHeader, u"ﾌｫｰﾑ ﾍｯﾀﾞｰ"}, {DesignType::PageHeader, u"ﾍﾟｰｼﾞ ﾍｯﾀﾞｰ"},
    {DesignType::Section, u"詳細"},          {DesignType::PageFooter, u"ﾍﾟｰｼﾞ ﾌｯﾀｰ"},
    {DesignType::FormFooter, u"ﾌｫｰﾑ ﾌｯﾀｰ"},
};

int heightOf(const DesignObject& section) {
    return std::max(0, pixelsOfTwips(number(section, u"Height")));
}

// In centimetres, counted from the corner of the section; a short mark at each half.
void drawRuler(QPainter& painter, QRect box, bool across) {
    constexpr double centimetre = 96 / 2.54;
    painter.fillRect(box, Qt::white);
    painter.save();
    painter.setClipRect(box, Qt::IntersectClip);
    const int length = across ? box.width() : box.height();
    const QFont font = fontOf({u"MS Sans Serif", 6, false, false, false});
    for (int half = 1; half * centimetre / 2 < length; ++half) {
        const int at = static_cast<int>(half * centimetre / 2);
        if (half % 2 == 1) {
            painter.fillRect(across ? QRect(box.left() + at, box.top() + 6, 1, 5)
                                    : QRect(box.left() + 6, box.top() + at, 5, 1),
                             colourOf(ScreenPart::ButtonShadow));
            continue;
        }
        constexpr int reach = 9;
        const QRect place = across ? QRect(box.left() + at - reach, box.top(), 2 * reach, box.height())
                                   : QRect(box.left(), box.top() + at - reach, box.width(), 2 * reach);
        drawText(painter, {QString::number(half / 2), {}}, font, Qt::black,
                 {place, HorizontalPlace::Centre, VerticalPlace::Middle, false});
    }
    painter.restore();
}

void drawSectionBar(QPainter& painter, QRect box, DesignType type) {
    const auto* title = std::ranges::find(titles, type, [](const auto& entry) { return entry.type; });
    painter.fillRect(box, colourOf(ScreenPart::ButtonFace));
    drawThinRaised(painter, box);
    drawArrow(painter, {box.left() + 3, box.top(), 11, box.height()}, Direction::Down, 4, Qt::black);
    if (title != std::end(titles)) {
        drawText(painter, {qText(title->title), {}}, screenFont(), Qt::black,
                 {box.adjusted(18, 1, -2, -1), HorizontalPlace::Left, VerticalPlace::Middle, false});
    }
}

// Dots, as close as the design says, and a line at each inch. Finer grids than 24 to the inch are not shown.
void drawGrid(QPainter& painter, QRect box, const DesignObject& root) {
    constexpr int inch = 96, finest = 24;
    const int across = number(root, u"GridX", 10), down = number(root, u"GridY", 12);
    const QColor dots = colourOf(ScreenPart::ButtonShadow);
    for (int x = inch; x < box.width(); x += inch) {
        painter.fillRect(box.left() + x, box.top(), 1, box.height(), dots);
    }
    for (int y = inch; y < box.height(); y += inch) {
        painter.fillRect(box.left(), box.top() + y, box.width(), 1, dots);
    }
    if (across < 1 || across > finest || down < 1 || down > finest) {
        return;
    }
    QList<QPoint> points;
    for (int row = 1; row * inch / down < box.height(); ++row) {
        for (int column = 1; column * inch / across < box.width(); ++column) {
            points.append({box.left() + column * inch / across, box.top() + row * inch / down});
        }
    }
    painter.setPen(dots);
    painter.drawPoints(points.constData(), static_cast<int>(points.size()));
}

} // namespace

QSize designerSize(const access::Design& design) {
    int height = rulerWidth + groundMargin + scrollBarWidth;
    for (const DesignObject* section : design.sections()) {
        height += barHeight + heightOf(*section);
    }
    return {rulerWidth + pixelsOfTwips(number(design.root(), u"Width")) + groundMargin + scrollBarWidth,
            height};
}

void drawDesigner(QPainter& painter, QRect client, const access::Design& design, FormTarget& target) {
    const DesignObject& root = design.root();
    const QRect ground = client.adjusted(0, 0, -scrollBarWidth, -scrollBarWidth);
    const int left = ground.left() + rulerWidth, width = pixelsOfTwips(number(root, u"Width"));
    painter.fillRect(client, colourOf(ScreenPart::ButtonFace));
    painter.save();
    painter.setClipRect(ground, Qt::IntersectClip);
    painter.fillRect(ground, colourOf(ScreenPart::Workspace));
    drawRuler(painter, {left, ground.top(), ground.right() + 1 - left, rulerWidth - 1}, true);
    int top = ground.top() + rulerWidth;
    painter.fillRect(QRect(ground.left(), top, rulerWidth - 1, ground.height()), Qt::white);
    QRect form(left, top, width, 0);
    std::vector<std::pair<const DesignObject*, QRect>> places;
    for (const DesignObject* section : design.sections()) {
        drawSectionBar(painter, {left, top, ground.right() + 1 - left, barHeight}, section->type());
        const QRect knob(ground.left(), top, rulerWidth - 1, barHeight);
        painter.fillRect(knob, colourOf(ScreenPart::ButtonFace));
        drawThinRaised(painter, knob);
        top += barHeight;
        const QRect place(left, top, width, heightOf(*section));
        drawRuler(painter, {ground.left(), top, rulerWidth - 1, place.height()}, false);
        painter.fillRect(place, colourOf(number(*section, u"BackColor", 0xFFFFFF)));
        places.emplace_back(section, place);
        top += place.height();
    }
    form.setBottom(top - 1);
    const StoredPicture picture = StoredPicture::of(root);
    const auto alignment =
        static_cast<PictureAlignment>(std::clamp(number(root, u"PictureAlignment", 2), 0, 5));
    for (const auto& entry : places) {
        const auto& [section, place] = entry;
        painter.save();
        painter.setClipRect(place, Qt::IntersectClip);
        const QString name = qText(text(root, u"Picture"));
        if (flag(root, u"PictureTiling")) {
            picture.drawTiled(painter, form, alignment, name);
        } else {
            picture.draw(painter, form, static_cast<SizeMode>(number(root, u"PictureSizeMode")), alignment,
                         name);
        }
        drawGrid(painter, place, root);
        Scene scene{.painter = painter, .target = target, .isDesigner = true};
        for (const DesignObject* control : section->children()) {
            drawControl(scene, place.topLeft(), *control);
        }
        painter.restore();
    }
    painter.fillRect(QRect(left + width, ground.top() + rulerWidth + barHeight, 1,
                           top - ground.top() - rulerWidth - barHeight),
                     Qt::black);
    painter.fillRect(QRect(left, top, width + 1, 1), Qt::black);
    const QRect corner(ground.left(), ground.top(), rulerWidth - 1, rulerWidth - 1); // that selects the form
    painter.fillRect(corner, colourOf(ScreenPart::ButtonFace));
    painter.fillRect(corner.adjusted(4, 4, -4, -4), Qt::black);
    painter.restore();
    drawVerticalScrollBar(painter, {ground.right() + 1, client.top(), scrollBarWidth, ground.height()}, 0.9);
    drawHorizontalScrollBar(painter, {client.left(), ground.bottom() + 1, ground.width(), scrollBarWidth},
                            0.9);
}

} // namespace relvane::formview
