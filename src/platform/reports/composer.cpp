#include "reports/composer.h"

#include <algorithm>

namespace relvane::reports {

namespace {
constexpr double tolerance = 0.5;
constexpr std::int64_t rowsKept = 9; // at most, that belong to a row and stay on its page
} // namespace

Composer::Composer(const ReportDefinition& definition, Bands& bands, Rows& rows,
                   std::vector<std::optional<Row>> heads, const Body& body)
    : definition_(definition),
      bands_(bands),
      rows_(rows),
      steps_(definition, bands, rows, std::move(heads)),
      body_(body) {
    Position start;
    start.totals.assign(definition.groups.size() + 1, Totals(definition.counters.size(), 0.0));
    countHeight_ = bands.note(QStringLiteral(" ")).height();
    seek(start);
}

void Composer::seek(const Position& position) {
    position_ = position;
    atEnd_ = false;
    steps_.make(position_.row, position_.totals);
}

// ---- How much room a step asks for

namespace {

// What of a block must be placed at once, from a strip on.
double keptHeight(const Block& block, std::size_t from) {
    const auto kept = static_cast<std::size_t>(block.kept);
    return block.height(from, from < kept ? kept - from : 1);
}

} // namespace

// The counts behind that row, when it is the last of a group.
double Composer::closingHeight(std::int64_t row) const {
    const Row* current = rows_.at(row);
    const Row* next = rows_.at(row + 1);
    const std::size_t change = next == nullptr ? 0 : steps_.firstChange(*current, *next);
    double sum = 0;
    for (std::size_t level = change; level < definition_.groups.size(); ++level) {
        sum += definition_.groups[level].closing.lines() * countHeight_;
    }
    return next == nullptr ? sum + 1.5 * definition_.closing.lines() * countHeight_ : sum;
}

// What stays on the page of the row at hand: the rows that belong to it, when they are few; else the last row of its
// group, so that this one does not stand alone on the next page; and the counts behind it.
double Composer::followingHeight() const {
    std::int64_t last = position_.row;
    const Row* row = rows_.at(last);
    if (!steps_.continuesOne()) {
        while (last < position_.row + rowsKept && steps_.continuation(*row, last + 1) != nullptr) {
            row = rows_.at(++last);
        }
        if (steps_.continuation(*row, last + 1) != nullptr) {
            last = position_.row + 1; // too many: the first two
        }
    }
    row = rows_.at(last);
    if (const Row* next = steps_.neighbour(*row, last + 1);
        next != nullptr && steps_.neighbour(*next, last + 2) == nullptr) {
        ++last;
    }
    double sum = 0;
    for (std::int64_t number = position_.row + 1; number <= last; ++number) {
        const Block block = bands_.row(static_cast<std::size_t>(steps_.table()), *rows_.at(number),
                                       steps_.totals().back(), nullptr);
        sum += keptHeight(block, 0);
        if (static_cast<std::size_t>(block.kept) < block.strips.size()) {
            return sum; // it may be cut
        }
    }
    return sum + closingHeight(last);
}

// A group that prints columns has their heading above the first bar of a page and of the group around it.
bool Composer::asksForHeading(std::size_t level) const {
    return !definition_.groups[level].columns.empty();
}

double Composer::required(std::size_t index, bool tableOpen, bool headingOpen) const {
    const Step& step = steps_[index];
    const std::size_t from = index == position_.step ? position_.strip : 0;
    const double kept = keptHeight(step.block, from);
    const bool whole = from + static_cast<std::size_t>(step.block.kept) >= step.block.strips.size();
    switch (step.kind) {
    case Step::Kind::Open: {
        const bool headed = asksForHeading(step.level);
        double sum = kept;
        if (headed && !headingOpen) {
            sum += bands_.heading(step.level).height();
        }
        if (whole && index + 1 < steps_.size()) {
            const bool nothing = step.block.empty();
            sum += gapBefore(steps_[index + 1]) +
                   required(index + 1, tableOpen && nothing, headed || (headingOpen && nothing));
        } else if (whole) {
            sum += closingHeight(position_.row); // nothing but this bar shows the row
        }
        return from == 0 ? std::max(sum, definition_.groups[step.level].keep * style::mm) : sum;
    }
    case Step::Kind::Row: {
        const bool open = tableOpen && openTable_ == steps_.table();
        const double heading =
            open ? 0 : bands_.tableHeading(static_cast<std::size_t>(steps_.table())).height();
        return whole && from == 0 ? kept + heading + followingHeight() : kept + heading;
    }
    default:
        return kept;
    }
}

double Composer::gapBefore(const Step& step) const {
    if (step.kind != Step::Kind::Open || step.block.empty()) {
        return 0;
    }
    if (asksForHeading(step.level)) {
        return style::groupGap / 2;
    }
    switch (definition_.groups[step.level].style) {
    case BarStyle::Bar:
        return style::groupGap;
    case BarStyle::Sub:
    case BarStyle::Line:
        return style::groupGap / 2;
    case BarStyle::None:
        break;
    }
    return 0;
}

// ---- Filling a page

void Composer::compose(Page& page, std::vector<OutlineEntry>* outline, int pageNumber) {
    page_ = &page;
    outline_ = outline;
    pageNumber_ = pageNumber;
    pageFresh_ = true;
    wantsPage_ = false;
    firstRow_ = lastRow_ = -1;
    for (int column = 0; column < body_.columns && !atEnd_ && !wantsPage_; ++column) {
        x_ = body_.left + column * (body_.width + style::columnGap);
        beginColumn();
        while (!atEnd_ && placeStep()) {
        }
        closeTable();
    }
    if (body_.columns > 1) {
        const double middle = body_.left + body_.width + style::columnGap / 2;
        page.items.push_back(ruleItem(middle, body_.top, middle, body_.bottom, style::thin));
    }
    if (lastRow_ >= 0) {
        page.lastInHand = textOf(definition_.inHand, *rows_.at(lastRow_), definition_);
    }
}

void Composer::place(Block block) {
    for (Strip& strip : block.strips) {
        const double height = strip.height;
        page_->add(std::move(strip), x_, y_);
        y_ += height;
    }
}

// Repeats what the top of a column needs to be understood: the bars of the groups that go on, with the heading of
// their columns; and in a row that continues one on the column before, the texts that say of what.
void Composer::beginColumn() {
    y_ = body_.top;
    columnFresh_ = true;
    openTable_ = -1;
    headingOpen_ = false;
    if (position_.step >= steps_.size() ||
        (position_.row == 0 && position_.step == 0 && position_.strip == 0)) {
        return;
    }
    const Step& step = steps_[position_.step];
    std::size_t open = 0;
    std::int64_t row = position_.row;
    switch (step.kind) {
    case Step::Kind::Close:
        open = step.level + 1;
        --row;
        break;
    case Step::Kind::Open:
        open = step.level + (position_.strip > 0 ? 1 : 0);
        break;
    case Step::Kind::Row:
        open = definition_.groups.size();
        break;
    default:
        break;
    }
    for (std::size_t level = 0; level < open; ++level) {
        const Group& group = definition_.groups[level];
        const Row& shown = *rows_.at(row);
        if (group.repeat && holds(group.when, shown)) {
            if (asksForHeading(level)) {
                place(bands_.heading(level));
                headingOpen_ = true;
            }
            place(bands_.bar(level, shown, true));
        }
    }
    if (step.kind == Step::Kind::Row && position_.strip == 0) {
        steps_.repeatContinued();
    }
}

void Composer::remember(const Step& step) {
    if (step.kind != Step::Kind::Row && step.kind != Step::Kind::Open) {
        return;
    }
    if (firstRow_ < 0) {
        firstRow_ = position_.row;
        page_->firstInHand = textOf(definition_.inHand, *rows_.at(firstRow_), definition_);
    }
    lastRow_ = position_.row;
    if (step.kind == Step::Kind::Open && position_.strip == 0 && outline_ != nullptr) {
        const Group& group = definition_.groups[step.level];
        if (!group.outline.empty()) {
            const auto above =
                std::count_if(definition_.groups.begin(),
                              definition_.groups.begin() + static_cast<std::ptrdiff_t>(step.level),
                              [](const Group& outer) { return !outer.outline.empty(); });
            const QString text = textOf(group.outline, *rows_.at(position_.row), definition_);
            outline_->push_back({static_cast<int>(above), fromQString(text), pageNumber_});
        }
    }
}

bool Composer::placeStep() {
    if (position_.step == steps_.size()) {
        if (rows_.at(position_.row) == nullptr) {
            atEnd_ = true;
            return true;
        }
        position_.totals = steps_.totals();
        position_.step = 0;
        position_.strip = 0;
        ++position_.row;
        steps_.make(position_.row, position_.totals);
        return true;
    }
    Step& step = steps_[position_.step];
    if (step.kind == Step::Kind::Open && position_.strip == 0 && definition_.groups[step.level].newPage &&
        !pageFresh_) {
        wantsPage_ = true;
        return false;
    }
    const double gap = columnFresh_ || position_.strip > 0 ? 0 : gapBefore(step);
    const bool tableStays = step.kind == Step::Kind::Row || step.block.empty();
    if (!columnFresh_ &&
        y_ + gap + required(position_.step, tableStays || step.kind == Step::Kind::Open, headingOpen_) >
            body_.bottom + tolerance) {
        if (!step.block.empty() || step.kind == Step::Kind::Open) {
            return false;
        }
    }
    remember(step);
    if (step.block.empty()) {
        ++position_.step;
        return true;
    }
    if (!tableStays || (step.kind == Step::Kind::Row && openTable_ != steps_.table())) {
        closeTable();
    }
    y_ += gap;
    return placeStrips(step);
}

bool Composer::placeStrips(Step& step) {
    std::vector<Strip>& strips = step.block.strips;
    const std::size_t from = position_.strip;
    double left = 0, right = bands_.width();
    if (step.kind == Step::Kind::Row) {
        const auto table = static_cast<std::size_t>(steps_.table());
        left = bands_.edges(table).front();
        right = bands_.edges(table).back();
        if (openTable_ != steps_.table()) {
            openTable(step);
        }
        y_ += from > 0 && step.block.ruled ? style::cellPadY : 0;
    } else if (from > 0 && step.block.ruled) {
        page_->items.push_back(ruleItem(x_, y_, x_ + right, y_, style::thin));
    } else if (step.kind == Step::Kind::Open) {
        const bool headed = asksForHeading(step.level);
        if (headed && !headingOpen_) {
            place(bands_.heading(step.level));
        }
        headingOpen_ = headed;
    }

    std::size_t count = 0;
    double height = 0;
    while (from + count < strips.size() &&
           (y_ + height + strips[from + count].height <= body_.bottom + tolerance ||
            (columnFresh_ && count == 0))) {
        height += strips[from + count].height;
        ++count;
    }
    if (from + count + 1 == strips.size() && count > 2) {
        --count; // no single last line on the next page
    }
    for (std::size_t i = from; i < from + count; ++i) {
        const double stripHeight = strips[i].height;
        page_->add(std::move(strips[i]), x_, y_);
        strips[i].height = stripHeight;
        y_ += stripHeight;
    }
    columnFresh_ = pageFresh_ = columnFresh_ && count == 0;
    position_.strip += count;
    if (position_.strip < strips.size()) {
        if (step.block.ruled && count > 0) {
            page_->items.push_back(
                ruleItem(x_ + left, y_, x_ + right, y_, style::thin, style::ruleInk, true));
        }
        return false;
    }
    ++position_.step;
    position_.strip = 0;
    return true;
}

void Composer::openTable(const Step& step) {
    openTable_ = steps_.table();
    tableTop_ = y_;
    const auto table = static_cast<std::size_t>(openTable_);
    const Table& definition = definition_.tables[table];
    if (Block heading = bands_.tableHeading(table); !heading.empty()) {
        place(std::move(heading));
    } else if (!step.block.ruled) {
        y_ += style::cellPadY; // a little air below a bar
    } else if (definition.within < 0) {
        const std::vector<double>& edges = bands_.edges(table);
        page_->items.push_back(ruleItem(x_ + edges.front(), y_, x_ + edges.back(), y_, style::thin));
    }
}

// Draws the vertical rules of the table down to here.
void Composer::closeTable() {
    if (openTable_ >= 0) {
        const auto table = static_cast<std::size_t>(openTable_);
        if (definition_.tables[table].rules == Rules::Grid) {
            for (const double edge : bands_.edges(table)) {
                page_->items.push_back(ruleItem(x_ + edge, tableTop_, x_ + edge, y_, style::thin));
            }
        }
    }
    openTable_ = -1;
}

} // namespace relvane::reports
