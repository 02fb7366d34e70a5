#include "formview/design_values.h"

#include <algorithm>

#include "formview/colours.h"

namespace relvane::formview {
namespace {

using access::DesignObject;
using access::DesignType;

// Types whose back is that of a window unless they say otherwise; those of the others lets the section through.
bool isOpaque(DesignType type) {
    return type == DesignType::ListBox || type == DesignType::ComboBox || type == DesignType::TextBox;
}

QColor colour(const DesignObject& object, TextView property, QColor otherwise) {
    const auto value = object.value(property);
    const auto* stored = value ? std::get_if<std::int64_t>(&*value) : nullptr;
    return stored == nullptr ? otherwise : colourOf(static_cast<std::int32_t>(*stored));
}

} // namespace

int pixelsOfTwips(int twips) {
    const int half = twips < 0 ? -twipsAPixel / 2 : twipsAPixel / 2;
    return (twips + half) / twipsAPixel;
}

QString qText(TextView text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

int number(const DesignObject& object, TextView property, int otherwise) {
    const auto value = object.value(property);
    const auto* stored = value ? std::get_if<std::int64_t>(&*value) : nullptr;
    return stored == nullptr ? otherwise : static_cast<int>(*stored);
}

bool flag(const DesignObject& object, TextView property, bool otherwise) {
    const auto value = object.value(property);
    const auto* stored = value ? std::get_if<bool>(&*value) : nullptr;
    return stored == nullptr ? otherwise : *stored;
}

Text text(const DesignObject& object, TextView property) {
    const auto value = object.value(property);
    const auto* stored = value ? std::get_if<Text>(&*value) : nullptr;
    return stored == nullptr ? Text() : *stored;
}

QRect boxOf(const DesignObject& control) {
    const int left = number(control, u"Left"), top = number(control, u"Top");
    const int x = pixelsOfTwips(left), y = pixelsOfTwips(top);
    return {x, y, pixelsOfTwips(left + number(control, u"Width")) - x,
            pixelsOfTwips(top + number(control, u"Height")) - y};
}

Look lookOf(const DesignObject& control) {
    constexpr int solid = 1, bold = 600;
    Look look;
    const int effect = number(control, u"SpecialEffect");
    look.effect = effect > 0 && effect <= static_cast<int>(Effect::Chiselled) ? static_cast<Effect>(effect)
                                                                              : Effect::Flat;
    look.border.style = number(control, u"BorderStyle");
    look.border.points = number(control, u"BorderWidth");
    look.border.colour = colour(control, u"BorderColor", Qt::black);
    look.isFilled = number(control, u"BackStyle", isOpaque(control.type()) ? solid : 0) != 0;
    look.back = colour(control, u"BackColor", Qt::white);
    look.fore = colour(control, u"ForeColor", Qt::black);
    look.align = number(control, u"TextAlign");
    const int points = number(control, u"FontSize");
    look.font = fontOf({.name = text(control, u"FontName"),
                        .points = points > 0 ? points : Face().points,
                        .bold = number(control, u"FontWeight", 400) >= bold,
                        .italic = flag(control, u"FontItalic"),
                        .underline = flag(control, u"FontUnderline")});
    return look;
}

std::optional<QColor> alternateColour(const DesignObject& object, TextView property, std::size_t row) {
    const auto value = object.value(property);
    const auto* stored = value ? std::get_if<std::int64_t>(&*value) : nullptr;
    return stored == nullptr || row % 2 == 0 ? std::nullopt
                                             : std::optional(colourOf(static_cast<std::int32_t>(*stored)));
}

HorizontalPlace horizontalPlace(int align, HorizontalPlace general) {
    constexpr HorizontalPlace places[] = {HorizontalPlace::Left, HorizontalPlace::Centre,
                                          HorizontalPlace::Right, HorizontalPlace::Spread};
    return align >= 1 && align <= 4 ? places[align - 1] : general;
}

} // namespace relvane::formview
