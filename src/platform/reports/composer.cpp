#include "reports/composer.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime_error.h"

namespace relvane::reports {

namespace {
constexpr double tolerance = 0.5;
constexpr std::int64_t rowsKept = 3; // that belong to a row and stay on its page
} // namespace

Composer::Composer(const ReportDefinition& definition, Bands& bands, Rows& rows,
                   std::vector<std::optional<Row>> heads, const Body& body)
    : definition_(definition), bands_(bands), rows_(rows), heads_(std::move(heads)), body_(body) {
    Position start;
    start.totals.assign(definition.groups.size() + 1, Totals(definition.counters.size(), 0.0));
    countHeight_ = bands.note(QStringLiteral(" ")).height();
    seek(start);
}

void Composer::seek(const Position& position) {
    position_ = position;
    atEnd_ = false;
    prepare();
}

// ---- What a row leads to

std::size_t Composer::firstChange(const Row& left, const Row& right) const {
    std::size_t level = 0;
    for (; level < definition_.groups.size(); ++level) {
        for (const int field : definition_.groups[level].by) {
            const auto index = static_cast<std::size_t>(field);
            if (!(left[index] == right[index])) {
                return level;
            }
        }
    }
    return level;
}

int Composer::tableFor(const Row& row) const {
    for (std::size_t i = 0; i < definition_.tables.size(); ++i) {
        if (holds(definition_.tables[i].when, row)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

// The row of that number when it stands in the same table as the row before it.
const Row* Composer::neighbour(const Row& row, std::int64_t number) const {
    const Row* next = rows_.at(number);
    const bool same =
        next != nullptr && firstChange(row, *next) == definition_.groups.size() && tableFor(*next) == table_;
    return same ? next : nullptr;
}

// The same when it also belongs to the row before it.
const Row* Composer::continuation(const Row& row, std::int64_t number) const {
    const auto& continues = definition_.tables[static_cast<std::size_t>(table_)].continues;
    const Row* next = continues ? neighbour(row, number) : nullptr;
    return next != nullptr && holds(*continues, *next) ? next : nullptr;
}

void Composer::prepare() {
    steps_.clear();
    after_ = position_.totals;
    table_ = -1;
    const Row* previous = position_.row > 0 ? rows_.at(position_.row - 1) : nullptr;
    addSteps(previous, rows_.at(position_.row));
}

void Composer::addSteps(const Row* previous, const Row* current) {
    const std::size_t levels = definition_.groups.size();
    if (previous == nullptr) {
        for (std::size_t i = 0; i < heads_.size(); ++i) {
            if (heads_[i]) {
                steps_.push_back({Kind::Head, i, bands_.head(definition_.heads[i], *heads_[i])});
            }
        }
        if (current == nullptr) {
            steps_.push_back({Kind::Empty, 0, bands_.note(QString::fromUtf16(style::nothingToShow))});
            return;
        }
    }
    const std::size_t change =
        previous == nullptr || current == nullptr ? 0 : firstChange(*previous, *current);
    if (previous != nullptr) {
        for (std::size_t level = levels; level-- > change;) {
            steps_.push_back({Kind::Close, level,
                              bands_.counts(definition_.groups[level].foot, after_[level + 1], false)});
        }
    }
    if (current == nullptr) {
        steps_.push_back({Kind::Foot, 0, bands_.counts(definition_.foot, after_[0], true)});
        return;
    }
    for (std::size_t level = change; level < levels; ++level) {
        addOpen(level, *current);
    }
    addRow(*current);
}

void Composer::addOpen(std::size_t level, const Row& row) {
    std::fill(after_[level + 1].begin(), after_[level + 1].end(), 0.0);
    for (std::size_t i = 0; i < definition_.counters.size(); ++i) {
        if (definition_.counters[i].groupsOf == static_cast<int>(level)) {
            for (std::size_t scope = 0; scope <= level; ++scope) {
                after_[scope][i] += 1;
            }
        }
    }
    const Group& group = definition_.groups[level];
    Block block = bands_.bar(group, row, false);
    Block attributes = bands_.attributes(group.block, row);
    block.ruled = attributes.ruled;
    block.kept += attributes.empty() ? 0 : attributes.kept;
    block.append(std::move(attributes));
    block.kept = std::min(block.kept, static_cast<int>(block.strips.size()));
    steps_.push_back({Kind::Open, level, std::move(block)});
}

void Composer::addRow(const Row& row) {
    table_ = tableFor(row);
    if (table_ < 0) {
        const auto said = std::find_if(definition_.tables.begin(), definition_.tables.end(),
                                       [](const Table& table) { return !table.emptyText.empty(); });
        if (said != definition_.tables.end()) {
            steps_.push_back({Kind::Empty, 0, bands_.note(toQString(said->emptyText))});
        }
        return;
    }
    for (std::size_t i = 0; i < definition_.counters.size(); ++i) {
        const Counter& counter = definition_.counters[i];
        if (counter.groupsOf >= 0 || !holds(counter.when, row)) {
            continue;
        }
        double amount = 1;
        if (counter.sumOf >= 0) {
            const Value& value = row[static_cast<std::size_t>(counter.sumOf)];
            amount = 0;
            if (!std::holds_alternative<Null>(value)) {
                skipErrors([&] { amount = toDouble(value); }); // a text where a number is usual adds nothing
            }
        }
        for (Totals& scope : after_) {
            scope[i] += amount;
        }
    }
    steps_.push_back({Kind::Row, 0,
                      bands_.row(static_cast<std::size_t>(table_), row, after_.back(),
                                 continuation(row, position_.row + 1))});
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
    const std::size_t change = next == nullptr ? 0 : firstChange(*current, *next);
    double sum = 0;
    for (std::size_t level = change; level < definition_.groups.size(); ++level) {
        sum += definition_.groups[level].foot.empty() ? 0 : countHeight_;
    }
    return next == nullptr && !definition_.foot.empty() ? sum + 1.5 * countHeight_ : sum;
}

// What stays on the page of the row at hand: the next rows that belong to it, or the last row of its group, so that this
// one does not stand alone on the next page; and the counts behind it.
double Composer::followingHeight() const {
    double sum = 0;
    std::int64_t last = position_.row;
    const Row* row = rows_.at(last);
    while (last < position_.row + rowsKept) {
        const Row* next = neighbour(*row, last + 1);
        const bool stays = next != nullptr &&
                           (continuation(*row, last + 1) != nullptr || neighbour(*next, last + 2) == nullptr);
        if (!stays) {
            break;
        }
        const Block block = bands_.row(static_cast<std::size_t>(table_), *next, after_.back(), nullptr);
        sum += keptHeight(block, 0);
        if (static_cast<std::size_t>(block.kept) < block.strips.size()) {
            return sum; // it may be cut
        }
        row = next;
        ++last;
    }
    return sum + closingHeight(last);
}

double Composer::required(std::size_t index, bool tableOpen) const {
    const Step& step = steps_[index];
    const std::size_t from = index == position_.step ? position_.strip : 0;
    const double kept = keptHeight(step.block, from);
    const bool whole = from + static_cast<std::size_t>(step.block.kept) >= step.block.strips.size();
    switch (step.kind) {
    case Kind::Open: {
        double sum = kept;
        if (whole && index + 1 < steps_.size()) {
            sum += gapBefore(steps_[index + 1]) + required(index + 1, tableOpen && step.block.empty());
        }
        return from == 0 ? std::max(sum, definition_.groups[step.level].keep * style::mm) : sum;
    }
    case Kind::Row: {
        const bool heading = definition_.tables[static_cast<std::size_t>(table_)].heading &&
                             !(tableOpen && openTable_ == table_);
        const double sum = kept + (heading ? bands_.heading(static_cast<std::size_t>(table_)).height() : 0);
        return whole && from == 0 ? sum + followingHeight() : sum;
    }
    default:
        return kept;
    }
}

double Composer::gapBefore(const Step& step) const {
    if (step.kind != Kind::Open || step.block.empty()) {
        return 0;
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

// Repeats the bars of the groups that go on.
void Composer::beginColumn() {
    y_ = body_.top;
    columnFresh_ = true;
    openTable_ = -1;
    if (position_.step >= steps_.size()) {
        return;
    }
    const Step& step = steps_[position_.step];
    std::size_t open = 0;
    std::int64_t row = position_.row;
    switch (step.kind) {
    case Kind::Close:
        open = step.level + 1;
        --row;
        break;
    case Kind::Open:
        open = step.level + (position_.strip > 0 ? 1 : 0);
        break;
    case Kind::Row:
        open = definition_.groups.size();
        break;
    default:
        break;
    }
    if (position_.row == 0 && position_.step == 0 && position_.strip == 0) {
        open = 0;
    }
    for (std::size_t level = 0; level < open; ++level) {
        const Group& group = definition_.groups[level];
        if (group.repeat) {
            for (Strip& strip : bands_.bar(group, *rows_.at(row), true).strips) {
                const double height = strip.height;
                page_->add(std::move(strip), x_, y_);
                y_ += height;
            }
        }
    }
}

void Composer::remember(const Step& step) {
    if (step.kind != Kind::Row && step.kind != Kind::Open) {
        return;
    }
    if (firstRow_ < 0) {
        firstRow_ = position_.row;
        page_->firstInHand = textOf(definition_.inHand, *rows_.at(firstRow_), definition_);
    }
    lastRow_ = position_.row;
    if (step.kind == Kind::Open && position_.strip == 0 && outline_ != nullptr) {
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
        position_.totals = after_;
        position_.step = 0;
        position_.strip = 0;
        ++position_.row;
        prepare();
        return true;
    }
    Step& step = steps_[position_.step];
    if (step.kind == Kind::Open && position_.strip == 0 && definition_.groups[step.level].newPage &&
        !pageFresh_) {
        wantsPage_ = true;
        return false;
    }
    const double gap = columnFresh_ || position_.strip > 0 ? 0 : gapBefore(step);
    const bool tableStays = step.kind == Kind::Row || step.block.empty();
    if (!columnFresh_ && y_ + gap + required(position_.step, tableStays || step.kind == Kind::Open) >
                             body_.bottom + tolerance) {
        if (!step.block.empty() || step.kind == Kind::Open) {
            return false;
        }
    }
    remember(step);
    if (step.block.empty()) {
        ++position_.step;
        return true;
    }
    if (!tableStays || (step.kind == Kind::Row && openTable_ != table_)) {
        closeTable();
    }
    y_ += gap;
    return placeStrips(step);
}

bool Composer::placeStrips(Step& step) {
    std::vector<Strip>& strips = step.block.strips;
    const std::size_t from = position_.strip;
    double right = bands_.width();
    if (step.kind == Kind::Row) {
        const auto table = static_cast<std::size_t>(table_);
        right = bands_.edges(table).back();
        if (openTable_ != table_) {
            openTable_ = table_;
            tableTop_ = y_;
            if (definition_.tables[table].heading) {
                for (Strip& strip : bands_.heading(table).strips) {
                    const double height = strip.height;
                    page_->add(std::move(strip), x_, y_);
                    y_ += height;
                }
            } else if (step.block.ruled) {
                page_->items.push_back(ruleItem(x_, y_, x_ + right, y_, style::thin));
            } else {
                y_ += style::cellPadY; // a little air below a bar
            }
        }
        y_ += from > 0 && step.block.ruled ? style::cellPadY : 0;
    } else if (from > 0 && step.block.ruled) {
        page_->items.push_back(ruleItem(x_, y_, x_ + right, y_, style::thin));
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
            page_->items.push_back(ruleItem(x_, y_, x_ + right, y_, style::thin, style::ruleInk, true));
        }
        return false;
    }
    ++position_.step;
    position_.strip = 0;
    return true;
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
