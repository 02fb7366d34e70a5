#include "formview/metafile_player.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <vector>

#include <QFontMetricsF>
#include <QPainterPath>
#include <QPolygonF>
#include <QRegion>

#include "access/old_metafile.h"
#include "access/stored_bitmap.h"
#include "formview/metafile_modes.h"
#include "formview/metafile_objects.h"
#include "formview/metafile_text.h"
#include "formview/picture_image.h"

namespace relvane::formview {
namespace {

using jet::ByteSpan;

// ---- Numbers of the drawing functions' parameters

enum BackgroundMode { opaqueBackground = 2 };
enum FillMode { windingFill = 2 };

namespace textAlign {
constexpr unsigned updatePosition = 1, right = 2, centre = 6, bottom = 8, baseline = 24;
}
namespace textOption {
constexpr unsigned opaque = 2, clipped = 4;
}

struct State {
    int mapMode = anisotropic;
    QPointF origin;      // of the window, in its units
    QSizeF extent{0, 0}; // of the window; 0 as long as nothing has set it
    QPointF position;    // in its units
    MetafilePen pen{QPen(Qt::black), 0};
    QBrush brush{Qt::white};
    MetafileFont font;
    QColor textColour = Qt::black, background = Qt::white;
    bool isOpaque = true, fillsByWinding = false;
    unsigned textAlignment = 0;
    int extraWidth = 0; // behind each letter
    Mode mode = QPainter::CompositionMode_SourceOver;
    std::optional<QRegion> clip; // on the painter
};

class Player {
public:
    Player(QPainter& painter, QRect box, const access::PictureData& metafile)
        : painter_(painter), box_(box), metafile_(metafile) {
        state_.mapMode = metafile.mappingMode == 0 ? anisotropic : metafile.mappingMode;
    }

    void play(const access::MetafileRecord& record);
    bool hasDrawnEnough() const { return work_ > mostWork; }

private:
    using Function = void (Player::*)(const ByteSpan& parameters);
    struct Entry {
        std::uint16_t function;
        Function play;
    };
    static const Entry entries[];

    // ---- From the units of the metafile to the painter

    QSizeF extent() const {
        if (!state_.extent.isEmpty() || state_.extent.width() < 0 || state_.extent.height() < 0) {
            return state_.extent;
        }
        const QSizeF size(std::max(metafile_.width, 1), std::max(metafile_.height, 1));
        if (state_.mapMode < 1 || state_.mapMode >= isotropic) {
            return size;
        }
        const double units = unitsByMode[state_.mapMode];
        constexpr int pixels = 1;
        return {size.width() * units, (state_.mapMode == pixels ? 1 : -1) * size.height() * units};
    }
    double scaleX() const { return box_.width() / extent().width(); }
    double scaleY() const { return box_.height() / extent().height(); }
    double scale() const { return (std::abs(scaleX()) + std::abs(scaleY())) / 2; }

    // Far outside is as good as further outside, and the painter does not like to go there.
    QPointF mapped(QPointF point) const {
        const auto inReach = [](double at) { return std::isfinite(at) ? std::clamp(at, -1e5, 1e5) : 0.0; };
        return {inReach(box_.left() + (point.x() - state_.origin.x()) * scaleX()),
                inReach(box_.top() + (point.y() - state_.origin.y()) * scaleY())};
    }
    QRectF mapped(QPointF one, QPointF other) const {
        return QRectF(mapped(one), mapped(other)).normalized();
    }

    // ---- Parameters: a point is stored as y, x, but x, y in the lists of points

    static QPointF pointAt(const ByteSpan& parameters, std::size_t at) {
        return {static_cast<double>(parameters.i16(at + 2)), static_cast<double>(parameters.i16(at))};
    }
    static QPointF listedPoint(const ByteSpan& parameters, std::size_t at) {
        return {static_cast<double>(parameters.i16(at)), static_cast<double>(parameters.i16(at + 2))};
    }
    // A box is stored as bottom, right, top, left.
    QRectF boxAt(const ByteSpan& parameters, std::size_t at) const {
        return mapped(pointAt(parameters, at + 4), pointAt(parameters, at));
    }
    QPolygonF points(const ByteSpan& parameters, std::size_t at, std::size_t count) const {
        const ByteSpan list = parameters.part(at, 4 * count);
        QPolygonF polygon;
        for (std::size_t i = 0; i < count; ++i) {
            polygon << mapped(listedPoint(list, 4 * i));
        }
        return polygon;
    }

    // ---- Drawing

    // What a metafile may have drawn: as much as some hundred times the whole picture.
    static constexpr std::int64_t mostWork = 1'000'000'000;
    void charge(double pixels) { work_ += static_cast<std::int64_t>(std::min(pixels, 1e9)) + 100; }
    void chargeBox(const QRectF& box) {
        const QRectF seen = box.intersected(QRectF(box_));
        charge(seen.width() * seen.height());
    }

    QPen pen() const {
        QPen pen = state_.pen.pen;
        pen.setWidthF(std::clamp(std::abs(state_.pen.width * scale()), 1.0, 10'000.0));
        return pen;
    }
    void prepare() {
        painter_.setPen(pen());
        painter_.setBrush(state_.brush);
        painter_.setCompositionMode(state_.mode);
    }
    void drawPolygons(const std::vector<QPolygonF>& polygons);
    void drawArc(const ByteSpan& parameters, void (QPainter::*draw)(const QRectF&, int, int));
    void drawText(QPointF at, std::span<const std::uint8_t> bytes, const ByteSpan& widths);
    void drawBitmap(const Picture* bitmap, std::uint32_t operation, const QRectF& source,
                    const QRectF& target);
    void applyClip();
    void clipTo(const QRegion& region) {
        state_.clip = region;
        charge(1000.0 * region.rectCount());
        applyClip();
    }
    const QRegion currentClip() const { return state_.clip.value_or(QRegion(box_)); }

    // ---- The functions

    void ignore(const ByteSpan&) {}
    void setBackground(const ByteSpan& p) { state_.background = readColour(p, 0); }
    void setBackgroundMode(const ByteSpan& p) { state_.isOpaque = p.u16(0) == opaqueBackground; }
    void setMapMode(const ByteSpan& p) { state_.mapMode = p.u16(0); }
    void setPenMode(const ByteSpan& p) {
        const std::size_t number = p.u16(0);
        state_.mode = number >= 1 && number <= std::size(penModes) ? penModes[number - 1]
                                                                   : QPainter::CompositionMode_SourceOver;
    }
    void setFillMode(const ByteSpan& p) { state_.fillsByWinding = p.u16(0) == windingFill; }
    void setExtraWidth(const ByteSpan& p) { state_.extraWidth = p.i16(0); }
    void setTextColour(const ByteSpan& p) { state_.textColour = readColour(p, 0); }
    void setTextAlignment(const ByteSpan& p) { state_.textAlignment = p.u16(0); }
    void setWindowOrigin(const ByteSpan& p) { state_.origin = pointAt(p, 0); }
    void setWindowExtent(const ByteSpan& p) {
        const QPointF corner = pointAt(p, 0);
        if (corner.x() != 0 && corner.y() != 0) {
            state_.extent = {corner.x(), corner.y()};
        }
    }
    void moveWindowOrigin(const ByteSpan& p) { state_.origin += pointAt(p, 0); }
    void scaleWindowExtent(const ByteSpan& p);
    void moveTo(const ByteSpan& p) { state_.position = pointAt(p, 0); }
    void lineTo(const ByteSpan& p);
    void setPixel(const ByteSpan& p);
    void rectangle(const ByteSpan& p);
    void roundRectangle(const ByteSpan& p);
    void ellipse(const ByteSpan& p);
    void arc(const ByteSpan& p) { drawArc(p, &QPainter::drawArc); }
    void pie(const ByteSpan& p) { drawArc(p, &QPainter::drawPie); }
    void chord(const ByteSpan& p) { drawArc(p, &QPainter::drawChord); }
    void polygon(const ByteSpan& p) { drawPolygons({points(p, 2, p.u16(0))}); }
    void polyPolygon(const ByteSpan& p);
    void polyline(const ByteSpan& p);
    void textOut(const ByteSpan& p);
    void extendedTextOut(const ByteSpan& p);
    void patternBlock(const ByteSpan& p);
    void bitBlock(const ByteSpan& p);
    void stretchedBlock(const ByteSpan& p);
    void stretchedBitmap(const ByteSpan& p);
    void bitmapToDevice(const ByteSpan& p);
    void fillRegion(const ByteSpan& p);
    void frameRegion(const ByteSpan& p);
    void paintRegion(const ByteSpan& p);
    void invertRegion(const ByteSpan& p);
    void fill(std::size_t region, const QBrush& brush, Mode mode);
    void selectClipRegion(const ByteSpan& p);
    void moveClip(const ByteSpan& p);
    void intersectClip(const ByteSpan& p) { clipTo(currentClip().intersected(boxAt(p, 0).toAlignedRect())); }
    void excludeClip(const ByteSpan& p) { clipTo(currentClip().subtracted(boxAt(p, 0).toAlignedRect())); }
    void save(const ByteSpan&);
    void restore(const ByteSpan& p);
    void createPen(const ByteSpan& p) { objects_.add(readPen(p)); }
    void createBrush(const ByteSpan& p) { objects_.add(readBrush(p)); }
    void createPatternBrush(const ByteSpan& p) { objects_.add(readPatternBrush(p)); }
    void createDevicePattern(const ByteSpan&) { objects_.add(QBrush(Qt::gray)); }
    void createFont(const ByteSpan& p) { objects_.add(readFont(p)); }
    void createPalette(const ByteSpan&) { objects_.add(MetafilePalette()); }
    void createRegion(const ByteSpan& p) { objects_.add(readRegion(p)); }
    void select(const ByteSpan& p);
    void remove(const ByteSpan& p) { objects_.remove(p.u16(0)); }

    QPainter& painter_;
    QRect box_;
    const access::PictureData& metafile_;
    State state_;
    std::vector<State> saved_;
    MetafileObjects objects_;
    std::int64_t work_ = 0;
};

constexpr Player::Entry Player::entries[] = {
    {0x001E, &Player::save},
    {0x00F7, &Player::createPalette},
    {0x0102, &Player::setBackgroundMode},
    {0x0103, &Player::setMapMode},
    {0x0104, &Player::setPenMode},
    {0x0106, &Player::setFillMode},
    {0x0108, &Player::setExtraWidth},
    {0x0127, &Player::restore},
    {0x012A, &Player::invertRegion},
    {0x012B, &Player::paintRegion},
    {0x012C, &Player::selectClipRegion},
    {0x012D, &Player::select},
    {0x012E, &Player::setTextAlignment},
    {0x0142, &Player::createPatternBrush},
    {0x01F0, &Player::remove},
    {0x01F9, &Player::createDevicePattern},
    {0x0201, &Player::setBackground},
    {0x0209, &Player::setTextColour},
    {0x020B, &Player::setWindowOrigin},
    {0x020C, &Player::setWindowExtent},
    {0x020F, &Player::moveWindowOrigin},
    {0x0213, &Player::lineTo},
    {0x0214, &Player::moveTo},
    {0x0220, &Player::moveClip},
    {0x0228, &Player::fillRegion},
    {0x02FA, &Player::createPen},
    {0x02FB, &Player::createFont},
    {0x02FC, &Player::createBrush},
    {0x0324, &Player::polygon},
    {0x0325, &Player::polyline},
    {0x0410, &Player::scaleWindowExtent},
    {0x0415, &Player::excludeClip},
    {0x0416, &Player::intersectClip},
    {0x0418, &Player::ellipse},
    {0x041B, &Player::rectangle},
    {0x041F, &Player::setPixel},
    {0x0429, &Player::frameRegion},
    {0x0521, &Player::textOut},
    {0x0538, &Player::polyPolygon},
    {0x061C, &Player::roundRectangle},
    {0x061D, &Player::patternBlock},
    {0x06FF, &Player::createRegion},
    {0x0817, &Player::arc},
    {0x081A, &Player::pie},
    {0x0830, &Player::chord},
    {0x0940, &Player::bitBlock},
    {0x0A32, &Player::extendedTextOut},
    {0x0B41, &Player::stretchedBlock},
    {0x0D33, &Player::bitmapToDevice},
    {0x0F43, &Player::stretchedBitmap},
};

void Player::play(const access::MetafileRecord& record) {
    const auto* entry = std::ranges::lower_bound(entries, record.function, {}, &Entry::function);
    if (entry == std::end(entries) || entry->function != record.function) {
        return;
    }
    charge(0);
    try {
        (this->*entry->play)(ByteSpan(record.parameters, 0));
    } catch (const RunTimeError&) { // too short for its function: one stroke less
    }
}

// ---- The window

void Player::scaleWindowExtent(const ByteSpan& p) {
    const QSizeF now = extent();
    const double yDivisor = p.i16(0), yFactor = p.i16(2), xDivisor = p.i16(4), xFactor = p.i16(6);
    if (yDivisor * yFactor * xDivisor * xFactor != 0) {
        const auto inReach = [](double length) {
            return std::copysign(std::clamp(std::abs(length), 1.0, 1e6), length);
        };
        state_.extent = {inReach(now.width() * xFactor / xDivisor),
                         inReach(now.height() * yFactor / yDivisor)};
    }
}

void Player::save(const ByteSpan&) {
    constexpr std::size_t most = 1000;
    if (saved_.size() < most) {
        saved_.push_back(state_);
    }
}

// A negative number counts from the last one back.
void Player::restore(const ByteSpan& p) {
    const int number = p.i16(0);
    const std::ptrdiff_t kept = number < 0 ? static_cast<std::ptrdiff_t>(saved_.size()) + number : number - 1;
    if (kept < 0 || kept >= static_cast<std::ptrdiff_t>(saved_.size())) {
        return;
    }
    state_ = saved_[static_cast<std::size_t>(kept)];
    saved_.resize(static_cast<std::size_t>(kept));
    applyClip();
}

void Player::select(const ByteSpan& p) {
    const MetafileObject& object = objects_.at(p.u16(0));
    if (const auto* pen = std::get_if<MetafilePen>(&object)) {
        state_.pen = *pen;
    } else if (const auto* brush = std::get_if<QBrush>(&object)) {
        state_.brush = *brush;
    } else if (const auto* font = std::get_if<MetafileFont>(&object)) {
        state_.font = *font;
    }
}

// ---- Clipping. The painter's own clip, which the caller has set, stays below it.

void Player::applyClip() {
    painter_.restore();
    painter_.save();
    if (state_.clip) {
        painter_.setClipRegion(*state_.clip, Qt::IntersectClip);
    }
}

void Player::selectClipRegion(const ByteSpan& p) {
    if (const auto* region = std::get_if<QRect>(&objects_.at(p.u16(0)))) {
        clipTo(mapped(region->topLeft(), region->bottomRight()).toAlignedRect());
    } else {
        state_.clip.reset();
        applyClip();
    }
}

void Player::moveClip(const ByteSpan& p) {
    const QPointF way = pointAt(p, 0);
    const QRegion moved =
        currentClip().translated(static_cast<int>(way.x() * scaleX()), static_cast<int>(way.y() * scaleY()));
    clipTo(moved.intersected(box_));
}

// ---- Lines and shapes

void Player::lineTo(const ByteSpan& p) {
    const QPointF end = pointAt(p, 0);
    prepare();
    const QPointF from = mapped(state_.position), to = mapped(end);
    charge(4096.0 * painter_.pen().widthF());
    painter_.drawLine(from, to);
    state_.position = end;
}

void Player::setPixel(const ByteSpan& p) {
    painter_.setCompositionMode(state_.mode);
    painter_.fillRect(QRectF(mapped(pointAt(p, 4)), QSizeF(1, 1)), readColour(p, 0));
}

void Player::rectangle(const ByteSpan& p) {
    const QRectF box = boxAt(p, 0);
    prepare();
    chargeBox(box);
    painter_.drawRect(box);
}

void Player::roundRectangle(const ByteSpan& p) {
    const QRectF box = boxAt(p, 4);
    const QPointF corner = pointAt(p, 0);
    prepare();
    chargeBox(box);
    painter_.drawRoundedRect(box, std::abs(corner.x() * scaleX()) / 2, std::abs(corner.y() * scaleY()) / 2);
}

void Player::ellipse(const ByteSpan& p) {
    const QRectF box = boxAt(p, 0);
    prepare();
    chargeBox(box);
    painter_.drawEllipse(box);
}

// From the ray through one point against the clock to the ray through the other.
void Player::drawArc(const ByteSpan& p, void (QPainter::*draw)(const QRectF&, int, int)) {
    const QRectF box = boxAt(p, 8);
    const auto angle = [&](QPointF point) {
        const QPointF way = mapped(point) - box.center();
        const double x = way.x() / std::max(box.width(), 1.0), y = way.y() / std::max(box.height(), 1.0);
        constexpr double sixteenths = 16 * 180 / 3.14159265358979;
        return static_cast<int>(std::lround(std::atan2(-y, x) * sixteenths));
    };
    constexpr int circle = 360 * 16;
    const int start = angle(pointAt(p, 4));
    const int span = (angle(pointAt(p, 0)) - start + circle) % circle;
    prepare();
    chargeBox(box);
    (painter_.*draw)(box, start, span == 0 ? circle : span);
}

void Player::drawPolygons(const std::vector<QPolygonF>& polygons) {
    QPainterPath path;
    path.setFillRule(state_.fillsByWinding ? Qt::WindingFill : Qt::OddEvenFill);
    for (const QPolygonF& each : polygons) {
        path.addPolygon(each);
        path.closeSubpath();
    }
    prepare();
    chargeBox(path.boundingRect());
    // Each side of it crosses the lines of the picture.
    charge(static_cast<double>(path.elementCount()) * std::min(box_.height(), 1000));
    painter_.drawPath(path);
}

void Player::polyPolygon(const ByteSpan& p) {
    const std::size_t count = p.u16(0);
    std::vector<QPolygonF> polygons;
    for (std::size_t i = 0, at = 2 + 2 * count; i < count; ++i) {
        const std::size_t corners = p.u16(2 + 2 * i);
        polygons.push_back(points(p, at, corners));
        at += 4 * corners;
    }
    drawPolygons(polygons);
}

void Player::polyline(const ByteSpan& p) {
    const QPolygonF line = points(p, 2, p.u16(0));
    prepare();
    charge(static_cast<double>(line.size()) * 1000 * painter_.pen().widthF());
    painter_.drawPolyline(line);
}

// ---- Regions

void Player::fill(std::size_t region, const QBrush& brush, Mode mode) {
    const auto* box = std::get_if<QRect>(&objects_.at(region));
    if (box == nullptr) {
        return;
    }
    const QRectF target = mapped(box->topLeft(), box->bottomRight());
    chargeBox(target);
    painter_.setCompositionMode(mode);
    painter_.fillRect(target, brush);
}

void Player::fillRegion(const ByteSpan& p) {
    if (const auto* brush = std::get_if<QBrush>(&objects_.at(p.u16(2)))) {
        fill(p.u16(0), *brush, state_.mode);
    }
}

void Player::frameRegion(const ByteSpan& p) {
    const auto* box = std::get_if<QRect>(&objects_.at(p.u16(0)));
    const auto* brush = std::get_if<QBrush>(&objects_.at(p.u16(2)));
    if (box == nullptr || brush == nullptr) {
        return;
    }
    const QRectF target = mapped(box->topLeft(), box->bottomRight());
    const QPointF thickness = pointAt(p, 4);
    const double width = std::abs(thickness.x() * scaleX()), height = std::abs(thickness.y() * scaleY());
    painter_.setCompositionMode(state_.mode);
    chargeBox(target);
    for (const QRectF& side : {QRectF(target.left(), target.top(), target.width(), height),
                               QRectF(target.left(), target.bottom() - height, target.width(), height),
                               QRectF(target.left(), target.top(), width, target.height()),
                               QRectF(target.right() - width, target.top(), width, target.height())}) {
        painter_.fillRect(side, *brush);
    }
}

void Player::paintRegion(const ByteSpan& p) {
    fill(p.u16(0), state_.brush, state_.mode);
}

void Player::invertRegion(const ByteSpan& p) {
    fill(p.u16(0), Qt::black, QPainter::RasterOp_NotDestination);
}

// ---- Texts

void Player::textOut(const ByteSpan& p) {
    const std::size_t length = p.u16(0), padded = length + length % 2;
    drawText(pointAt(p, 2 + padded), p.part(2, length).bytes(), {});
}

void Player::extendedTextOut(const ByteSpan& p) {
    const std::size_t length = p.u16(4), padded = length + length % 2;
    const unsigned options = p.u16(6);
    const bool hasBox = (options & (textOption::opaque | textOption::clipped)) != 0;
    const std::size_t textAt = hasBox ? 16 : 8;
    const auto text = p.part(textAt, length).bytes();
    QRectF box;
    if (hasBox) {
        box = mapped(listedPoint(p, 8), listedPoint(p, 12));
    }
    if ((options & textOption::opaque) != 0) {
        painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
        chargeBox(box);
        painter_.fillRect(box, state_.background);
    }
    // The way to the next letter, one for each byte, may be left out.
    const ByteSpan rest = p.from(std::min(p.size(), textAt + padded));
    const ByteSpan widths = rest.size() >= 2 * length ? rest : ByteSpan();
    if ((options & textOption::clipped) == 0) {
        drawText(pointAt(p, 0), text, widths);
        return;
    }
    const std::optional<QRegion> before = state_.clip;
    clipTo(currentClip().intersected(box.toAlignedRect()));
    drawText(pointAt(p, 0), text, widths);
    state_.clip = before;
    applyClip();
}

void Player::drawText(QPointF at, std::span<const std::uint8_t> bytes, const ByteSpan& widths) {
    const bool goesOn = (state_.textAlignment & textAlign::updatePosition) != 0;
    const QPointF start = goesOn ? state_.position : at;
    const QFont font = fontOnPainter(state_.font, scaleX(), scaleY());
    const QFontMetricsF metrics(font);
    const std::vector<Letter> letters = lettersOf(bytes, state_.font.codePage);
    // Where each letter stands on the line, and the line's end.
    std::vector<double> places{0};
    for (std::size_t i = 0; i < letters.size(); ++i) {
        double width = metrics.horizontalAdvance(letters[i].text) + state_.extraWidth * std::abs(scaleX());
        if (widths.size() > 0) {
            const std::size_t end = i + 1 < letters.size() ? letters[i + 1].at : bytes.size();
            width = 0;
            for (std::size_t byte = letters[i].at; byte < end; ++byte) {
                width += widths.i16(2 * byte) * std::abs(scaleX());
            }
        }
        places.push_back(places.back() + width);
    }
    charge(static_cast<double>(letters.size()) * metrics.height() * metrics.height());

    const double length = places.back();
    const unsigned sideways = state_.textAlignment & textAlign::centre;
    const unsigned upwards = state_.textAlignment & textAlign::baseline;
    const double left = sideways == textAlign::centre  ? -length / 2
                        : sideways == textAlign::right ? -length
                                                       : 0;
    const double line = upwards == textAlign::baseline ? 0
                        : upwards == textAlign::bottom ? -metrics.descent()
                                                       : metrics.ascent();
    painter_.save();
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter_.translate(mapped(start));
    painter_.rotate(-state_.font.tenthsOfDegree / 10.0);
    if (state_.isOpaque) {
        painter_.fillRect(QRectF(left, line - metrics.ascent(), length, metrics.height()), state_.background);
    }
    painter_.setFont(font);
    painter_.setPen(state_.textColour);
    for (std::size_t i = 0; i < letters.size(); ++i) {
        painter_.drawText(QPointF(left + places[i], line), letters[i].text);
    }
    painter_.restore();
    if (goesOn) {
        state_.position.rx() += length / scaleX();
    }
}

// ---- Bitmaps

void Player::drawBitmap(const Picture* bitmap, std::uint32_t operation, const QRectF& source,
                        const QRectF& target) {
    chargeBox(target);
    painter_.setCompositionMode(bitmapMode(operation));
    if (bitmap != nullptr) {
        charge(static_cast<double>(bitmap->pixels.size()));
        painter_.drawImage(target, imageOf(*bitmap), source.normalized());
    } else {
        painter_.fillRect(target, state_.brush);
    }
}

void Player::patternBlock(const ByteSpan& p) {
    const QPointF size = pointAt(p, 4), corner = pointAt(p, 8);
    drawBitmap(nullptr, p.u32(0), {}, mapped(corner, corner + size));
}

// Without a bitmap a word that says nothing stands before the target.
void Player::bitBlock(const ByteSpan& p) {
    constexpr std::size_t sizeWithout = 18;
    const bool hasBitmap = p.size() > sizeWithout;
    const std::size_t at = hasBitmap ? 8 : 10;
    const QPointF from = pointAt(p, 4), size = pointAt(p, at), corner = pointAt(p, at + 4);
    const auto bitmap = hasBitmap ? access::readBitmap(p.from(at + 8).bytes()) : std::nullopt;
    if (bitmap || !hasBitmap) {
        drawBitmap(bitmap ? &*bitmap : nullptr, p.u32(0), {from, from + size}, mapped(corner, corner + size));
    }
}

void Player::stretchedBlock(const ByteSpan& p) {
    constexpr std::size_t sizeWithout = 22;
    const bool hasBitmap = p.size() > sizeWithout;
    const std::size_t at = hasBitmap ? 12 : 14;
    const QPointF sourceSize = pointAt(p, 4), from = pointAt(p, 8), size = pointAt(p, at),
                  corner = pointAt(p, at + 4);
    const auto bitmap = hasBitmap ? access::readBitmap(p.from(at + 8).bytes()) : std::nullopt;
    if (bitmap || !hasBitmap) {
        drawBitmap(bitmap ? &*bitmap : nullptr, p.u32(0), {from, from + sourceSize},
                   mapped(corner, corner + size));
    }
}

// The lines of a bitmap are counted from its lower edge here.
void Player::stretchedBitmap(const ByteSpan& p) {
    const QPointF sourceSize = pointAt(p, 6), from = pointAt(p, 10), size = pointAt(p, 14),
                  corner = pointAt(p, 18);
    if (const auto bitmap = access::readBitmap(p.from(22).bytes())) {
        const QPointF top(from.x(), bitmap->height - from.y() - sourceSize.y());
        drawBitmap(&*bitmap, p.u32(0), {top, top + sourceSize}, mapped(corner, corner + size));
    }
}

void Player::bitmapToDevice(const ByteSpan& p) {
    const QPointF from = pointAt(p, 6), size = pointAt(p, 10), corner = pointAt(p, 14);
    if (const auto bitmap = access::readBitmap(p.from(18).bytes())) {
        const QPointF top(from.x(), bitmap->height - from.y() - size.y());
        drawBitmap(&*bitmap, 0, {top, top + size}, mapped(corner, corner + size));
    }
}

} // namespace

bool playMetafile(QPainter& painter, QRect box, const access::PictureData& metafile) {
    const auto records = access::readOldMetafile(metafile.data);
    if (!records || box.isEmpty()) {
        return false;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save(); // restored by each change of the clip
    Player player(painter, box, metafile);
    for (const access::MetafileRecord& record : *records) {
        player.play(record);
        if (player.hasDrawnEnough()) {
            break;
        }
    }
    painter.restore();
    painter.restore();
    return true;
}

} // namespace relvane::formview
