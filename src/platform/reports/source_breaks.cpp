#include "reports/source_breaks.h"

#include <algorithm>
#include <array>

#include <QTextBoundaryFinder>

namespace relvane::reports {
namespace {

// What may be parted: any two characters; two words of a literal or two Japanese characters; the sides of an
// operator; items of a list and words of a statement.
enum Quality : unsigned char { Any, Words, Parts, Items };

// What a place gains over the very end of the line, as a share of the line: an item's end that leaves half the line
// empty is as good as a break inside a word.
constexpr std::array<double, 4> gain{0, 0.15, 0.3, 0.5};

bool isOneOf(QChar c, QStringView set) {
    return set.contains(c);
}

// Follows literals and bracketed names along a line.
class Quotation {
public:
    bool inside() const { return closing_ != 0; }
    void pass(QChar c) {
        if (closing_ != 0) {
            closing_ = c.unicode() == closing_ ? u'\0' : closing_;
        } else if (c == u'"' || c == u'\'') {
            closing_ = c.unicode();
        } else if (c == u'[') {
            closing_ = u']';
        }
    }

private:
    char16_t closing_ = 0;
};

Quality qualityBetween(QChar left, QChar right, bool quoted) {
    const bool behindBlank = left == u' ' && right != u' ';
    if (quoted) {
        return behindBlank ? Words : Any;
    }
    if (behindBlank || (isOneOf(left, u",;") && right != u' ')) {
        return Items;
    }
    return isOneOf(left, u"&+*/=<>\\") && !isOneOf(right, u" =>") ? Parts : Any;
}

} // namespace

SourceBreaks::SourceBreaks(QStringView line)
    : line_(line), quality_(static_cast<std::size_t>(line.size()), Any) {
    QTextBoundaryFinder words(QTextBoundaryFinder::Line, line.data(), line.size());
    for (auto at = words.toNextBoundary(); at >= 0 && at < line.size(); at = words.toNextBoundary()) {
        quality_[static_cast<std::size_t>(at)] = Words;
    }
    Quotation quotation;
    for (qsizetype i = 1; i < line.size(); ++i) {
        quotation.pass(line[i - 1]);
        unsigned char& quality = quality_[static_cast<std::size_t>(i)];
        quality = std::max<unsigned char>(quality, qualityBetween(line[i - 1], line[i], quotation.inside()));
    }
}

qsizetype SourceBreaks::after(qsizetype from, qsizetype fitting) const {
    qsizetype best = fitting;
    double bestValue = 1;
    const bool hangs = from + fitting < line_.size() && line_[from + fitting] == u' ';
    for (qsizetype count = 1; count <= fitting + (hangs ? 1 : 0) && from + count < line_.size(); ++count) {
        const unsigned char quality = quality_[static_cast<std::size_t>(from + count)];
        const double value = static_cast<double>(count) / static_cast<double>(fitting) + gain[quality];
        if (quality > Any && value >= bestValue) {
            best = count;
            bestValue = value;
        }
    }
    return from + best;
}

} // namespace relvane::reports
