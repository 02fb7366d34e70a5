#include "formview/control_painter.h"

#include <algorithm>

#include "formview/colours.h"
#include "formview/form_pane.h"
#include "formview/list_painter.h"
#include "formview/stored_picture.h"
#include "formview/window_parts.h"

namespace relvane::formview {
namespace {

using access::DesignObject;
using access::DesignType;

const QColor face = colourOf(ScreenPart::ButtonFace), shadow = colourOf(ScreenPart::ButtonShadow),
             light = colourOf(ScreenPart::ButtonHighlight), grey = colourOf(ScreenPart::GrayText);

// One control at its place.
struct Figure {
    Scene& scene;
    const DesignObject& control;
    QRect box;
    Look look;

    QPainter& painter() const { return scene.painter; }
};

bool isDimmed(const DesignObject& control) {
    return !flag(control, u"Enabled", true) && !flag(control, u"Locked");
}

QColor textColour(const Figure& figure) {
    return !figure.scene.isDesigner && isDimmed(figure.control) ? grey : figure.look.fore;
}

QRect drawGround(const Figure& figure) {
    if (figure.look.isFilled) {
        figure.painter().fillRect(figure.box, figure.look.back);
    }
    return drawEdge(figure.painter(), figure.box, figure.look.effect, figure.look.border);
}

// Texts keep a pixel from the edge, and the margins that later versions have.
QRect textBox(const Figure& figure, const QRect& inside) {
    const auto margin = [&](TextView side) { return pixelsOfTwips(number(figure.control, side)); };
    return inside.adjusted(1 + margin(u"LeftMargin"), margin(u"TopMargin"), -1 - margin(u"RightMargin"), 0);
}

// What the designer writes into a control that shows data.
QString designText(const DesignObject& control) {
    const Text source = text(control, u"ControlSource");
    return source.empty() ? QStringLiteral("非連結") : qText(source);
}

// ---- Texts

void drawLabel(const Figure& figure) {
    const QRect inside = drawGround(figure);
    const DesignObject* owner = figure.control.parent();
    const bool dimmed =
        !figure.scene.isDesigner && owner != nullptr && access::isControl(owner->type()) && isDimmed(*owner);
    drawText(figure.painter(), captionOf(qText(text(figure.control, u"Caption"))), figure.look.font,
             dimmed ? grey : figure.look.fore,
             {textBox(figure, inside), horizontalPlace(figure.look.align, HorizontalPlace::Left)});
}

void drawShownText(const Figure& figure, const QRect& inside, const ShownText& shown) {
    drawText(figure.painter(), {shown.text, {}}, figure.look.font, textColour(figure),
             {textBox(figure, inside),
              horizontalPlace(figure.look.align,
                              shown.isNumber ? HorizontalPlace::Right : HorizontalPlace::Left)});
}

void drawTextBox(const Figure& figure) {
    const QRect inside = drawGround(figure);
    drawShownText(figure, inside,
                  figure.scene.isDesigner ? ShownText{designText(figure.control), false}
                                          : shownText(figure.control, figure.scene.record));
}

void drawComboBox(const Figure& figure) {
    const QRect inside = drawGround(figure);
    const int width = std::min(scrollBarWidth, inside.width());
    const QRect button(inside.right() + 1 - width, inside.top(), width, inside.height());
    drawArrowButton(figure.painter(), button, Direction::Down,
                    figure.scene.isDesigner || flag(figure.control, u"Enabled", true));
    drawShownText(figure, inside.adjusted(0, 0, -width, 0),
                  figure.scene.isDesigner
                      ? ShownText{designText(figure.control), false}
                      : shownChoice(figure.control, figure.scene.record, figure.scene.target));
}

void drawListBox(const Figure& figure) {
    const QRect inside = drawGround(figure);
    if (figure.scene.isDesigner) {
        drawShownText(figure, inside, {designText(figure.control), false});
        return;
    }
    drawList(figure.painter(), inside, listRows(figure.control, figure.scene.target), figure.look.font,
             textColour(figure), controlValue(figure.control, figure.scene.record));
}

// ---- Shapes

void drawRectangle(const Figure& figure) {
    drawGround(figure);
}

void drawLine(const Figure& figure) {
    QPainter& painter = figure.painter();
    const bool falls = !flag(figure.control, u"LineSlant"); // from the upper left corner
    const QRect box = figure.box;
    const QPoint from(box.left(), falls ? box.top() : box.top() + box.height());
    const QPoint to(box.left() + box.width(), falls ? box.top() + box.height() : box.top());
    const bool isStraight = from.x() == to.x() || from.y() == to.y();
    const auto stroke = [&](QPoint shift, QPen pen) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing, !isStraight);
        if (isStraight && pen.style() == Qt::SolidLine) {
            const int width = pen.width(), half = width / 2;
            const QRect bar = from.y() == to.y() ? QRect(from.x(), from.y() - half, box.width(), width)
                                                 : QRect(from.x() - half, from.y(), width, box.height());
            painter.fillRect(bar.translated(shift), pen.color());
        } else {
            painter.setPen(pen);
            painter.drawLine(from + shift, to + shift);
        }
        painter.restore();
    };
    switch (figure.look.effect) {
    case Effect::Flat:
        if (figure.look.border.style != 0) {
            stroke({}, figure.look.border.pen());
        }
        break;
    case Effect::Raised:
        stroke({}, QPen(light, 1));
        stroke({1, 1}, QPen(shadow, 1));
        break;
    default:
        stroke({}, QPen(shadow, 1));
        stroke({1, 1}, QPen(light, 1));
        break;
    }
}

void drawPageBreak(const Figure& figure) {
    if (figure.scene.isDesigner) {
        constexpr int width = 24;
        QPen pen(Qt::black, 2);
        pen.setDashPattern({1, 1});
        figure.painter().setPen(pen);
        figure.painter().drawLine(figure.box.left() + 1, figure.box.top(), figure.box.left() + width,
                                  figure.box.top());
    }
}

// ---- Buttons and choices

void drawButtonFace(const Figure& figure, bool pressed) {
    QPainter& painter = figure.painter();
    QRect box = figure.box;
    painter.fillRect(box, face);
    if (flag(figure.control, u"Default")) {
        drawFrame(painter, box, Qt::black, Qt::black);
        box.adjust(1, 1, -1, -1);
    }
    QRect inside = drawButton(painter, box, pressed);
    if (pressed) {
        inside.translate(1, 1);
    }
    const StoredPicture picture = StoredPicture::of(figure.control);
    if (picture.isThere()) {
        picture.draw(painter, inside, SizeMode::Clip, PictureAlignment::Centre,
                     qText(text(figure.control, u"Picture")));
        return;
    }
    const Caption caption = captionOf(qText(text(figure.control, u"Caption")));
    const TextPlace place{inside, HorizontalPlace::Centre, VerticalPlace::Middle, true};
    if (!figure.scene.isDesigner && !flag(figure.control, u"Enabled", true)) {
        TextPlace relief = place;
        relief.box.translate(1, 1);
        drawText(painter, caption, figure.look.font, light, relief);
        drawText(painter, caption, figure.look.font, shadow, place);
        return;
    }
    drawText(painter, caption, figure.look.font, figure.look.fore, place);
}

void drawCommandButton(const Figure& figure) {
    if (!flag(figure.control, u"Transparent")) {
        drawButtonFace(figure, false);
    } else if (figure.scene.isDesigner) {
        drawFrame(figure.painter(), figure.box, shadow, shadow);
    }
}

enum class Choice { Off, On, Unknown };

// Of a choice in an option group the group has the value; it is chosen when its own number is that.
Choice choiceOf(const Figure& figure) {
    if (figure.scene.isDesigner) {
        return Choice::Off;
    }
    const DesignObject& control = figure.control;
    if (control.isInOptionGroup()) {
        const Value value = controlValue(*control.parent(), figure.scene.record);
        const Value own = std::int64_t{number(control, u"OptionValue")};
        return !std::holds_alternative<Null>(value) && compareValues(value, own) == 0 ? Choice::On
                                                                                      : Choice::Off;
    }
    const Value value = controlValue(control, figure.scene.record);
    if (std::holds_alternative<Null>(value)) {
        const bool isBound = !text(control, u"ControlSource").empty();
        return isBound && figure.scene.record.records != nullptr && flag(control, u"TripleState")
                   ? Choice::Unknown
                   : Choice::Off;
    }
    Choice choice = Choice::Off;
    skipErrors([&] { choice = toBoolean(value) ? Choice::On : Choice::Off; });
    return choice;
}

void drawToggleButton(const Figure& figure) {
    drawButtonFace(figure, choiceOf(figure) == Choice::On);
}

void drawTick(QPainter& painter, QPoint corner, QColor colour) {
    constexpr int tops[] = {2, 3, 4, 3, 2, 1, 0}; // of seven columns, each three high
    for (int x = 0; x < 7; ++x) {
        painter.fillRect(corner.x() + x, corner.y() + tops[x], 1, 3, colour);
    }
}

// The square or disc of a choice, in the upper left of its place.
QRect choiceBox(const Figure& figure, int size) {
    return {figure.box.left() + 1, figure.box.top(), size, size};
}

void drawCheckBox(const Figure& figure) {
    constexpr int size = 13;
    QPainter& painter = figure.painter();
    const Choice choice = choiceOf(figure);
    const QRect box = choiceBox(figure, size);
    const bool isDim = choice == Choice::Unknown || (!figure.scene.isDesigner && isDimmed(figure.control));
    painter.fillRect(box, isDim ? face : QColor(Qt::white));
    switch (figure.look.effect) {
    case Effect::Flat:
    case Effect::Shadowed:
        drawFrame(painter, box, figure.look.border.colour, figure.look.border.colour);
        break;
    case Effect::Raised:
        drawEdge(painter, box, Effect::Raised, {});
        break;
    case Effect::Etched:
        drawEdge(painter, box, Effect::Etched, {});
        break;
    default:
        drawSunken(painter, box);
        break;
    }
    if (choice != Choice::Off) {
        drawTick(painter, box.topLeft() + QPoint(3, 3), isDim ? shadow : QColor(Qt::black));
    }
}

void drawOptionButton(const Figure& figure) {
    constexpr int size = 12;
    QPainter& painter = figure.painter();
    const QRect box = choiceBox(figure, size);
    const bool isDim = !figure.scene.isDesigner && isDimmed(figure.control);
    const QRectF outer = QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), inner = outer.adjusted(1, 1, -1, -1);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDim ? face : QColor(Qt::white));
    painter.drawEllipse(outer);
    painter.setBrush(Qt::NoBrush);
    constexpr int sixteenths = 16, from = 45 * sixteenths, half = 180 * sixteenths;
    const auto rim = [&](const QRectF& at, QColor topLeft, QColor bottomRight) {
        painter.setPen(topLeft);
        painter.drawArc(at, from, half);
        painter.setPen(bottomRight);
        painter.drawArc(at, from + half, half);
    };
    if (figure.look.effect == Effect::Flat || figure.look.effect == Effect::Shadowed) {
        rim(outer, figure.look.border.colour, figure.look.border.colour);
    } else if (figure.look.effect == Effect::Raised) {
        rim(outer, light, Qt::black);
        rim(inner, colourOf(ScreenPart::Light), shadow);
    } else {
        rim(outer, shadow, light);
        rim(inner, Qt::black, colourOf(ScreenPart::Light));
    }
    if (choiceOf(figure) == Choice::On) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isDim ? shadow : QColor(Qt::black));
        painter.drawEllipse(QRectF(box).adjusted(4, 4, -4, -4));
    }
    painter.restore();
}

void drawOptionGroup(const Figure& figure) {
    drawGround(figure);
}

// ---- Pictures and objects

void drawImage(const Figure& figure) {
    const QRect inside = drawGround(figure);
    const QString name = qText(text(figure.control, u"Picture"));
    const StoredPicture picture = StoredPicture::of(figure.control);
    const auto alignment =
        static_cast<PictureAlignment>(std::clamp(number(figure.control, u"PictureAlignment", 2), 0, 5));
    const auto mode = static_cast<SizeMode>(number(figure.control, u"SizeMode"));
    if (flag(figure.control, u"PictureTiling")) {
        picture.drawTiled(figure.painter(), inside, alignment, name);
    } else {
        picture.draw(figure.painter(), inside, mode, alignment, name);
    }
}

// Frames of objects put their picture into the upper left corner.
void drawObject(const Figure& figure, const StoredPicture& picture) {
    const QRect inside = drawGround(figure);
    const Text kind = text(figure.control, u"OLEClass").empty() ? text(figure.control, u"Class")
                                                                : text(figure.control, u"OLEClass");
    if (picture.isThere()) {
        picture.draw(figure.painter(), inside, static_cast<SizeMode>(number(figure.control, u"SizeMode")),
                     PictureAlignment::TopLeft, qText(kind));
        return;
    }
    drawFrame(figure.painter(), inside, shadow, shadow);
    drawText(figure.painter(), {qText(kind.empty() ? figure.control.name() : kind), {}}, screenFont(), grey,
             {inside.adjusted(3, 3, -3, -3), HorizontalPlace::Centre, VerticalPlace::Middle});
}

void drawObjectFrame(const Figure& figure) {
    drawObject(figure, StoredPicture::ofObject(figure.control.bytes(u"OleData")));
}

void drawBoundObject(const Figure& figure) {
    if (figure.scene.isDesigner) {
        drawShownText(figure, drawGround(figure), {designText(figure.control), false});
        return;
    }
    const QRect inside = drawGround(figure);
    const Value value = controlValue(figure.control, figure.scene.record);
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        StoredPicture::ofField(*bytes).draw(figure.painter(), inside,
                                            static_cast<SizeMode>(number(figure.control, u"SizeMode")),
                                            PictureAlignment::TopLeft, qText(figure.control.name()));
    }
}

// ---- Forms within forms, pages

void drawSubform(const Figure& figure) {
    const QRect inside = drawEdge(figure.painter(), figure.box, figure.look.effect, figure.look.border);
    if (figure.scene.isDesigner) {
        figure.painter().fillRect(inside, Qt::white);
        drawText(figure.painter(), {qText(formOf(figure.control)), {}}, screenFont(), Qt::black,
                 {inside.adjusted(2, 2, -2, -2)});
        return;
    }
    drawSubformInside(figure.scene, figure.control, inside);
}

void drawTab(const Figure& figure) {
    QPainter& painter = figure.painter();
    std::vector<const DesignObject*> pages;
    for (const DesignObject* child : figure.control.children()) {
        if (child->type() == DesignType::Page &&
            (figure.scene.isDesigner || flag(*child, u"Visible", true))) {
            pages.push_back(child);
        }
    }
    const QFontMetrics metrics(figure.look.font);
    constexpr int aroundText = 12, aboveText = 6;
    int height = metrics.height() + aboveText;
    if (!pages.empty()) { // the pages say where their tabs end
        const int stored = boxOf(*pages.front()).top() - boxOf(figure.control).top();
        height = stored > metrics.height() && stored < 3 * metrics.height() ? stored - 4 : height;
    }
    constexpr int noTabs = 2; // style of a control that is a stack of pages alone
    const int style = number(figure.control, u"Style");
    if (style == noTabs) {
        height = 0;
    }
    const QRect body = figure.box.adjusted(0, height, 0, 0);
    painter.fillRect(body, face);
    drawButton(painter, body);
    int x = figure.box.left() + 2;
    const DesignObject* front = frontPage(figure.control);
    for (const DesignObject* page : style == noTabs ? std::vector<const DesignObject*>() : pages) {
        const Text stored = text(*page, u"Caption");
        const Caption caption = captionOf(qText(stored.empty() ? page->name() : stored));
        const int stated = pixelsOfTwips(number(figure.control, u"TabFixedWidth"));
        const int width = stated > 0 ? stated : metrics.horizontalAdvance(caption.text) + aroundText;
        const bool isFront = page == front;
        const QRect tab = isFront ? QRect(x - 2, figure.box.top(), width + 4, height + 2)
                                  : QRect(x, figure.box.top() + 2, width, height - 2);
        painter.fillRect(tab.adjusted(1, 1, -1, 0), face);
        painter.fillRect(tab.left() + 2, tab.top(), tab.width() - 4, 1, light);
        painter.fillRect(tab.left() + 1, tab.top() + 1, 1, 1, light);
        painter.fillRect(tab.left(), tab.top() + 2, 1, tab.height() - 2, light);
        painter.fillRect(tab.right(), tab.top() + 2, 1, tab.height() - 2, Qt::black);
        painter.fillRect(tab.right() - 1, tab.top() + 1, 1, 1, Qt::black);
        painter.fillRect(tab.right() - 1, tab.top() + 2, 1, tab.height() - 2, shadow);
        drawText(painter, caption, figure.look.font, Qt::black,
                 {tab, HorizontalPlace::Centre, VerticalPlace::Middle, false});
        x += width;
    }
}

void drawNothing(const Figure&) {}

struct Painter {
    DesignType type;
    void (*draw)(const Figure&);
};
constexpr Painter painters[] = {
    {DesignType::Label, drawLabel},
    {DesignType::Rectangle, drawRectangle},
    {DesignType::Line, drawLine},
    {DesignType::Image, drawImage},
    {DesignType::CommandButton, drawCommandButton},
    {DesignType::OptionButton, drawOptionButton},
    {DesignType::CheckBox, drawCheckBox},
    {DesignType::OptionGroup, drawOptionGroup},
    {DesignType::BoundObjectFrame, drawBoundObject},
    {DesignType::TextBox, drawTextBox},
    {DesignType::ListBox, drawListBox},
    {DesignType::ComboBox, drawComboBox},
    {DesignType::Subform, drawSubform},
    {DesignType::Chart, drawObjectFrame},
    {DesignType::UnboundObjectFrame, drawObjectFrame},
    {DesignType::PageBreak, drawPageBreak},
    {DesignType::CustomControl, drawObjectFrame},
    {DesignType::ToggleButton, drawToggleButton},
    {DesignType::Tab, drawTab},
    {DesignType::Page, drawNothing},
};

bool isShown(const Scene& scene, const DesignObject& control) {
    constexpr int onPaper = 1;
    return scene.isDesigner ||
           (flag(control, u"Visible", true) && number(control, u"DisplayWhen") != onPaper);
}

} // namespace

const DesignObject* frontPage(const DesignObject& tab) {
    const auto found = std::ranges::find_if(tab.children(), [](const DesignObject* child) {
        return child->type() == DesignType::Page && flag(*child, u"Visible", true);
    });
    return found == tab.children().end() ? nullptr : *found;
}

void drawControl(Scene& scene, QPoint origin, const DesignObject& control) {
    if (!isShown(scene, control)) {
        return;
    }
    const QRect box = boxOf(control).translated(origin);
    constexpr int beside = 8; // for shadows and wide lines
    const QRectF around = QRectF(box.normalized()).adjusted(-beside, -beside, beside, beside);
    const auto* painter = std::ranges::find(painters, control.type(), &Painter::type);
    if (painter != std::end(painters) && around.intersects(scene.painter.clipBoundingRect())) {
        painter->draw({scene, control, box, lookOf(control)});
    }
    const DesignObject* front = control.type() == DesignType::Tab ? frontPage(control) : nullptr;
    for (const DesignObject* child : control.children()) {
        if (child->type() != DesignType::Page || child == front) {
            drawControl(scene, origin, *child);
        }
    }
}

} // namespace relvane::formview
