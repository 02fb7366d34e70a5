#include "formview/metafile_objects.h"

#include <algorithm>
#include <array>

#include "access/stored_bitmap.h"
#include "formview/picture_image.h"

namespace relvane::formview {
namespace {

using jet::ByteSpan;

constexpr std::array penStyles{
    Qt::SolidLine,      Qt::DashLine, Qt::DotLine,  Qt::DashDotLine,
    Qt::DashDotDotLine, Qt::NoPen,    Qt::SolidLine}; // the last lies inside of its frame

constexpr std::array hatches{Qt::HorPattern,   Qt::VerPattern,   Qt::FDiagPattern,
                             Qt::BDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};

constexpr struct {
    std::uint8_t charset;
    int codePage;
} codePages[] = {{0, 1252},   {128, 932},  {129, 949},  {134, 936},  {136, 950}, {161, 1253}, {162, 1254},
                 {177, 1255}, {178, 1256}, {186, 1257}, {204, 1251}, {222, 874}, {238, 1250}};

// What a charset that names no page stands for is up to the system: a Japanese one here.
int codePageOf(std::uint8_t charset) {
    const auto* found =
        std::ranges::find_if(codePages, [&](const auto& each) { return each.charset == charset; });
    return found == std::end(codePages) ? japaneseCodePage : found->codePage;
}

} // namespace

QColor readColour(const ByteSpan& parameters, std::size_t at) {
    return {parameters.u8(at), parameters.u8(at + 1), parameters.u8(at + 2)};
}

MetafilePen readPen(const ByteSpan& parameters) {
    constexpr unsigned styleBits = 0x0F;
    const std::size_t style = parameters.u16(0) & styleBits;
    MetafilePen made{QPen(readColour(parameters, 6)), parameters.i16(2)};
    made.pen.setStyle(style < penStyles.size() ? penStyles[style] : Qt::SolidLine);
    made.pen.setCapStyle(Qt::RoundCap);
    made.pen.setJoinStyle(Qt::RoundJoin);
    return made;
}

QBrush readBrush(const ByteSpan& parameters) {
    enum { solid = 0, hollow = 1, hatched = 2 };
    const unsigned style = parameters.u16(0);
    const QColor colour = readColour(parameters, 2);
    if (style == hollow) {
        return {Qt::NoBrush};
    }
    const std::size_t hatch = parameters.u16(6);
    return {colour, style == hatched && hatch < hatches.size() ? hatches[hatch] : Qt::SolidPattern};
}

QBrush readPatternBrush(const ByteSpan& parameters) {
    constexpr std::size_t bitmapAt = 4;
    const auto pattern = access::readBitmap(parameters.from(bitmapAt).bytes());
    return pattern ? QBrush(imageOf(*pattern)) : QBrush(Qt::gray);
}

MetafileFont readFont(const ByteSpan& parameters) {
    constexpr int boldFrom = 600;
    constexpr std::size_t nameAt = 18;
    MetafileFont font;
    font.height = parameters.i16(0);
    font.averageWidth = parameters.i16(2);
    font.tenthsOfDegree = parameters.i16(4);
    font.struckOut = parameters.u8(12) != 0;
    font.codePage = codePageOf(parameters.u8(13));
    font.face.bold = parameters.i16(8) >= boldFrom;
    font.face.italic = parameters.u8(10) != 0;
    font.face.underline = parameters.u8(11) != 0;
    const auto name = parameters.from(nameAt).bytes();
    font.face.name = decode(name.first(static_cast<std::size_t>(std::ranges::find(name, 0) - name.begin())),
                            font.codePage);
    return font;
}

QRect readRegion(const ByteSpan& parameters) {
    constexpr std::size_t boxAt = 14;
    const auto side = [&](std::size_t number) { return parameters.i16(boxAt + 2 * number); };
    return {QPoint(side(0), side(1)), QPoint(side(2), side(3))};
}

void MetafileObjects::add(MetafileObject object) {
    if (free_.empty()) {
        objects_.push_back(std::move(object));
        return;
    }
    objects_[free_.top()] = std::move(object);
    free_.pop();
}

void MetafileObjects::remove(std::size_t number) {
    if (number < objects_.size() && !std::holds_alternative<std::monostate>(objects_[number])) {
        objects_[number] = std::monostate();
        free_.push(number);
    }
}

const MetafileObject& MetafileObjects::at(std::size_t number) const {
    static const MetafileObject none;
    return number < objects_.size() ? objects_[number] : none;
}

} // namespace relvane::formview
