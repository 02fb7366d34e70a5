#include "reports/attributes.h"

#include <algorithm>

namespace relvane::reports {

using style::cellPadX;
using style::cellPadY;

namespace {
constexpr std::size_t uncutBlock = 24; // strips; a longer attribute block may be cut
} // namespace

void Attributes::addPair(Block& target, const std::vector<Shown>& pair, double labelWidth) {
    const double half = width_ / 2;
    std::vector<Cell> cells;
    std::vector<double> edges{0};
    for (std::size_t i = 0; i < pair.size(); ++i) {
        const double left = i == 0 ? 0 : half;
        const double right =
            pair.size() == 1 || i == 1 ? width_ : half; // one that stands alone takes the line
        cells.push_back(
            cells_.cell(style::note, pair[i].label, left + cellPadX, labelWidth - 2 * cellPadX, Wrap::Words));
        cells.push_back(cells_.cell(style::table, pair[i].text, left + labelWidth + cellPadX,
                                    right - left - labelWidth - 2 * cellPadX, pair[i].wrap));
        edges.push_back(left + labelWidth);
        edges.push_back(right);
    }
    Block lines = cells_.block(cells, cellPadY, cellPadY);
    for (Strip& strip : lines.strips) {
        std::vector<Item> grounds;
        for (std::size_t i = 0; i < pair.size(); ++i) {
            grounds.push_back(fillItem(i == 0 ? 0 : half, 0, labelWidth, strip.height, style::labelGround));
        }
        for (const double edge : edges) {
            grounds.push_back(ruleItem(edge, 0, edge, strip.height, style::thin));
        }
        strip.items.insert(strip.items.begin(), grounds.begin(), grounds.end());
    }
    Strip& last = lines.strips.back();
    last.items.push_back(ruleItem(0, last.height, edges.back(), last.height, style::thin));
    target.append(std::move(lines));
}

// The label over the whole width, the text below it.
void Attributes::addTextBlock(Block& target, const Shown& shown) {
    const double inset = 2 * cellPadX;
    Block label =
        cells_.block({cells_.cell(style::note, shown.label, cellPadX, width_ - 2 * cellPadX, Wrap::Words)},
                     cellPadY, cellPadY);
    for (Strip& strip : label.strips) {
        strip.items.insert(strip.items.begin(), fillItem(0, 0, width_, strip.height, style::labelGround));
    }
    Strip& under = label.strips.back();
    under.items.push_back(ruleItem(0, under.height, width_, under.height, style::thin));

    Block lines = cells_.block({cells_.cell(style::table, shown.text, inset, width_ - 2 * inset, shown.wrap)},
                               1.5 * cellPadY, 1.5 * cellPadY);
    Strip& last = lines.strips.back();
    last.items.push_back(ruleItem(0, last.height, width_, last.height, style::thin));
    label.append(std::move(lines));
    for (Strip& strip : label.strips) {
        for (const double edge : {0.0, width_}) {
            strip.items.push_back(ruleItem(edge, 0, edge, strip.height, style::thin));
        }
    }
    target.append(std::move(label));
}

Block Attributes::block(const AttributeBlock& attributes, const Row& row) {
    Block result;
    std::vector<Shown> pair;
    std::size_t kept = 0; // strips up to the first long text and its first lines
    const double labelWidth = std::min(attributes.labelWidth * style::mm, width_ / 4);
    const auto flush = [&] {
        if (pair.empty()) {
            return;
        }
        const std::size_t before = result.strips.size();
        if (pair.front().block) {
            addTextBlock(result, pair.front());
        } else {
            addPair(result, pair, labelWidth);
        }
        if (kept == before) {
            kept = std::min(result.strips.size(), before + style::keptLines);
        }
        pair.clear();
    };
    for (const Attribute& attribute : attributes.attributes) {
        QString text = textOf(attribute.text, row, definition_);
        if (attribute.omitEmpty && text.isEmpty()) {
            continue;
        }
        const bool whole = attribute.wide || attribute.block;
        if (whole) {
            flush();
        }
        pair.push_back({textOf(attribute.label, row, definition_), std::move(text), wrapOf(attribute, row),
                        attribute.block});
        if (whole || pair.size() == 2) {
            flush();
        }
    }
    flush();
    result.ruled = true;
    if (!result.empty()) {
        Strip& top = result.strips.front();
        top.items.push_back(ruleItem(0, 0, width_, 0, style::thin));
        const std::size_t all = result.strips.size();
        result.kept = static_cast<int>(all <= uncutBlock ? all : std::min(kept, uncutBlock));
    }
    return result;
}

} // namespace relvane::reports
