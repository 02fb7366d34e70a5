#include "reports/bands.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace relvane::reports {
namespace {

using style::cellPadX;
using style::cellPadY;

} // namespace

Bands::Bands(const ReportDefinition& definition, Fonts& fonts, double width)
    : definition_(definition), cells_(fonts), width_(width), attributes_(definition, cells_, width) {
    for (const Table& table : definition.tables) {
        edges_.push_back(edgesOf(table.columns, table.indent * style::mm));
    }
    for (const Group& group : definition.groups) {
        groupEdges_.push_back(edgesOf(group.columns, 0));
    }
}

Bands::Edges Bands::edgesOf(const std::vector<Column>& columns, double indent) const {
    double fixed = indent, shares = 0;
    for (const Column& column : columns) {
        fixed += column.width * style::mm;
        shares += column.width > 0 ? 0 : column.share;
    }
    if (fixed > width_ + 1 || (shares > 0 && (width_ - fixed) / shares < 8 * style::mm)) {
        throw RunTimeError(ErrorNumber::DatabaseDamaged,
                           definition_.name + u": the columns are wider than the page");
    }
    Edges edges{indent};
    for (const Column& column : columns) {
        edges.push_back(edges.back() + (column.width > 0 ? column.width * style::mm
                                                         : (width_ - fixed) * column.share / shares));
    }
    return edges;
}

Block Bands::bar(std::size_t level, const Row& row, bool continued) {
    const Group& group = definition_.groups[level];
    if (!group.columns.empty()) {
        return columnsBar(level, row, continued);
    }
    if (group.style == BarStyle::None) {
        return {};
    }
    const bool main = group.style == BarStyle::Bar;
    const style::TextStyle plainStyle = main ? style::bar : style::table;
    const style::TextStyle nameStyle = main ? style::barName : style::tableBold;
    const QString number = textOf(group.number, row, definition_);
    const QString kind = textOf(group.kind, row, definition_);
    QString title = textOf(group.title, row, definition_);
    if (continued) {
        title += QString::fromUtf16(style::continued);
    }
    const double inset = group.style == BarStyle::Line ? 0 : 2 * cellPadX;
    const double gap = 3 * style::mm;
    const int plainFont = cells_.fonts().number(plainStyle);

    std::vector<Cell> cells;
    double left = inset, right = width_ - inset;
    if (!number.isEmpty()) {
        const double needed = std::max(cells_.fonts().width(plainFont, number) + 2, main ? 8 * style::mm : 0);
        cells.push_back(cells_.cell(plainStyle, number, left, needed, Wrap::Words));
        left += needed + gap / 2;
    }
    if (!kind.isEmpty()) {
        const double needed = std::min(cells_.fonts().width(plainFont, kind) + 2, (right - left) / 2);
        cells.push_back(cells_.cell(plainStyle, kind, right - needed, needed, Wrap::Words, Align::Right));
        right -= needed + gap;
    }
    cells.push_back(cells_.cell(nameStyle, title, left, right - left, Wrap::Words));

    const double pad = main ? 1.3 * cellPadY : cellPadY;
    Block result = cells_.block(cells, pad, pad);
    result.kept = static_cast<int>(result.strips.size());
    if (group.style != BarStyle::Line) {
        for (Strip& strip : result.strips) {
            strip.items.insert(strip.items.begin(), fillItem(0, 0, width_, strip.height,
                                                             main ? style::barGround : style::subGround));
        }
    }
    if (main) {
        Strip& top = result.strips.front();
        top.items.push_back(ruleItem(0, 0, width_, 0, style::medium, 0));
    }
    return result;
}

Block Bands::head(const HeadBlock& head, const Row& row) {
    Block result;
    if (!head.caption.empty()) {
        result = cells_.block({cells_.cell(style::barName, toQString(head.caption), 0, width_, Wrap::Words)},
                              0, cellPadY);
    }
    Block body = attributes_.block(head.block, row);
    const int kept = static_cast<int>(result.strips.size()) + body.kept;
    result.append(std::move(body));
    if (!result.empty()) {
        result.strips.push_back({style::groupGap / 2, {}});
    }
    result.kept = std::min(kept + 1, static_cast<int>(result.strips.size()));
    result.ruled = true;
    return result;
}

// `last` when nothing of the heading stands below.
Block Bands::headingOf(const std::vector<Column>& columns, const Edges& edges, bool last) {
    std::vector<Cell> cells;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        cells.push_back(cells_.cell(style::note, toQString(columns[i].heading), edges[i] + cellPadX,
                                    edges[i + 1] - edges[i] - 2 * cellPadX, Wrap::Words, columns[i].align));
    }
    Block result = cells_.block(cells, cellPadY, cellPadY);
    result.kept = static_cast<int>(result.strips.size());
    for (Strip& strip : result.strips) {
        strip.items.insert(strip.items.begin(),
                           fillItem(0, 0, edges.back(), strip.height, style::headingGround));
    }
    if (!result.empty()) {
        result.strips.front().items.push_back(ruleItem(edges.front(), 0, edges.back(), 0, style::thin));
        if (last) {
            Strip& bottom = result.strips.back();
            bottom.items.push_back(ruleItem(0, bottom.height, edges.back(), bottom.height, style::medium));
        }
    }
    return result;
}

Block Bands::tableHeading(std::size_t table) {
    const Table& definition = definition_.tables[table];
    return definition.heading && definition.within < 0 ? headingOf(definition.columns, edges_[table], true)
                                                       : Block();
}

Block Bands::heading(std::size_t group) {
    const std::vector<Table>& tables = definition_.tables;
    const auto inside = std::find_if(tables.begin(), tables.end(), [&](const Table& table) {
        return table.heading && table.within == static_cast<int>(group);
    });
    Block result = headingOf(definition_.groups[group].columns, groupEdges_[group], inside == tables.end());
    addVerticals(result, groupEdges_[group]);
    if (inside != tables.end()) {
        const Edges& edges = edges_[static_cast<std::size_t>(inside - tables.begin())];
        Block second = headingOf(inside->columns, edges, true);
        addVerticals(second, edges);
        addVerticals(second, {0});
        result.append(std::move(second));
    }
    result.kept = static_cast<int>(result.strips.size());
    return result;
}

// The cell of a column; `pad` is the air left and right of the text.
Cell Bands::columnCell(const Column& column, const Row& row, const QString& text, const Edges& edges,
                       std::size_t index, double pad, Wrap how) {
    const double width = edges[index + 1] - edges[index] - 2 * pad;
    const bool accent = column.accent && holds(*column.accent, row);
    const style::TextStyle& look = accent         ? style::tableAccent
                                   : column.bold  ? style::tableBold
                                   : column.faint ? style::tableFaint
                                                  : style::table;
    const QString shown =
        column.grow ? text : elide(cells_.fonts(), cells_.fonts().number(look), text, width);
    return cells_.cell(look, shown, edges[index] + pad, width, how, column.align);
}

Block Bands::columnsBar(std::size_t level, const Row& row, bool continued) {
    const Group& group = definition_.groups[level];
    const Edges& edges = groupEdges_[level];
    std::vector<Cell> cells;
    for (std::size_t i = 0; i < group.columns.size(); ++i) {
        const Column& column = group.columns[i];
        QString text = textOf(column.text, row, definition_);
        if (continued && i == 0) {
            text += QString::fromUtf16(style::continued);
        }
        cells.push_back(columnCell(column, row, text, edges, i, cellPadX, column.wrap));
    }
    Block result = cells_.block(cells, cellPadY, cellPadY);
    result.kept = static_cast<int>(result.strips.size());
    for (Strip& strip : result.strips) {
        strip.items.insert(strip.items.begin(), fillItem(0, 0, edges.back(), strip.height, style::subGround));
    }
    addVerticals(result, edges);
    Strip& last = result.strips.back();
    result.strips.front().items.push_back(ruleItem(0, 0, edges.back(), 0, style::thin));
    last.items.push_back(ruleItem(0, last.height, edges.back(), last.height, style::thin));
    return result;
}

Block Bands::row(std::size_t table, const Row& row, const Totals& totals, const Row* continuation,
                 Place place) {
    const Table& definition = definition_.tables[table];
    const Edges& edges = edges_[table];
    const bool open = definition.rules == Rules::None;
    std::vector<Cell> cells;
    cells.reserve(definition.columns.size());
    for (std::size_t i = 0; i < definition.columns.size(); ++i) {
        const Column& column = definition.columns[i];
        const bool again = place == Place::Top && !column.again.empty();
        const QString text = textOf(again ? column.again : column.text, row, definition_, &totals);
        cells.push_back(
            columnCell(column, row, text, edges, i, open ? cellPadX / 2 : cellPadX, wrapOf(column, row)));
    }
    const double pad = open ? 0 : cellPadY;
    Block result = cells_.block(cells, pad, pad);
    result.ruled = !open;
    result.kept = result.strips.size() <= style::keptLines ? static_cast<int>(result.strips.size()) : 2;
    if (!open && !result.empty()) {
        Strip& last = result.strips.back();
        for (std::size_t i = 0; i < definition.columns.size(); ++i) {
            if (continuation == nullptr || definition.columns[i].ruled ||
                !textOf(definition.columns[i].text, *continuation, definition_, &totals).isEmpty()) {
                last.items.push_back(ruleItem(edges[i], last.height, edges[i + 1], last.height, style::thin));
            }
        }
    }
    return result;
}

// The label stands over the columns before the first that has a total.
Block Bands::totalsRow(const QString& label, const Row& last, const Totals& totals, bool ofReport) {
    const std::vector<Column>& columns = definition_.tables.front().columns;
    const Edges& edges = edges_.front();
    const auto first =
        static_cast<std::size_t>(std::find_if(columns.begin(), columns.end(),
                                              [](const Column& column) { return !column.total.empty(); }) -
                                 columns.begin());
    const double width = edges[first] - edges.front() - 2 * cellPadX;
    std::vector<Cell> cells{
        cells_.cell(style::tableBold, label, edges.front() + cellPadX, width, Wrap::Words)};
    Edges drawn{edges.front()};
    for (std::size_t i = first; i < columns.size(); ++i) {
        Column column = columns[i];
        column.bold = true;
        column.accent.reset();
        cells.push_back(columnCell(column, last, textOf(column.total, last, definition_, &totals), edges, i,
                                   cellPadX, column.wrap));
        drawn.push_back(edges[i]);
    }
    drawn.push_back(edges.back());
    Block result = cells_.block(cells, cellPadY, cellPadY);
    result.kept = static_cast<int>(result.strips.size());
    for (Strip& strip : result.strips) {
        strip.items.insert(strip.items.begin(),
                           fillItem(edges.front(), 0, edges.back() - edges.front(), strip.height,
                                    ofReport ? style::barGround : style::subGround));
    }
    addVerticals(result, drawn);
    result.strips.front().items.push_back(ruleItem(edges.front(), 0, edges.back(), 0, style::medium));
    Strip& bottom = result.strips.back();
    bottom.items.push_back(ruleItem(edges.front(), bottom.height, edges.back(), bottom.height, style::thin));
    if (ofReport) {
        result.strips.insert(result.strips.begin(), {style::groupGap, {}});
        ++result.kept;
    }
    return result;
}

Block Bands::closing(const Closing& closing, const Row& last, const Totals& totals, bool ofReport) {
    const QString label = textOf(closing.totals, last, definition_, &totals);
    Block result = label.isEmpty() ? Block() : totalsRow(label, last, totals, ofReport);
    Block noted = counts(closing.counts, totals, ofReport);
    result.kept = (result.empty() ? 0 : result.kept) + noted.kept;
    result.append(std::move(noted));
    return result;
}

Block Bands::note(const QString& text) {
    Block result = cells_.block(
        {cells_.cell(style::table, text, cellPadX, width_ - 2 * cellPadX, Wrap::Words)}, cellPadY, cellPadY);
    result.kept = static_cast<int>(result.strips.size());
    return result;
}

Block Bands::counts(const std::vector<Count>& counts, const Totals& totals, bool ofReport) {
    QString text;
    for (const Count& count : counts) {
        const double total = totals[static_cast<std::size_t>(count.counter)];
        if (count.omitZero && total == 0) {
            continue;
        }
        if (!text.isEmpty()) {
            text += QChar(u'、');
        }
        const QString number = formatted(Value(total), count.format);
        text += toQString(count.label) + u' ' + number + u' ' + toQString(count.unit);
    }
    if (text.isEmpty()) {
        return {};
    }
    Block result = cells_.block({cells_.cell(ofReport ? style::tableBold : style::table, text, cellPadX,
                                             width_ - 2 * cellPadX, Wrap::Words, Align::Right)},
                                (ofReport ? 2.2 : 1) * cellPadY, cellPadY);
    result.kept = static_cast<int>(result.strips.size());
    if (ofReport) {
        const double top = cellPadY;
        result.strips.front().items.push_back(ruleItem(0, top, width_, top, style::medium, 0));
    }
    return result;
}

} // namespace relvane::reports
