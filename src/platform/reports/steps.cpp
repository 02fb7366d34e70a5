#include "reports/steps.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace relvane::reports {

Steps::Steps(const ReportDefinition& definition, Bands& bands, Rows& rows,
             std::vector<std::optional<Row>> heads)
    : definition_(definition), bands_(bands), rows_(rows), heads_(std::move(heads)) {}

std::size_t Steps::firstChange(const Row& left, const Row& right) const {
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

int Steps::tableFor(const Row& row) const {
    for (std::size_t i = 0; i < definition_.tables.size(); ++i) {
        if (holds(definition_.tables[i].when, row)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

const Row* Steps::neighbour(const Row& row, std::int64_t number) const {
    const Row* next = rows_.at(number);
    const bool same =
        next != nullptr && firstChange(row, *next) == definition_.groups.size() && tableFor(*next) == table_;
    return same ? next : nullptr;
}

const Row* Steps::continuation(const Row& row, std::int64_t number) const {
    const auto& continues = definition_.tables[static_cast<std::size_t>(table_)].continues;
    const Row* next = continues ? neighbour(row, number) : nullptr;
    return next != nullptr && holds(*continues, *next) ? next : nullptr;
}

void Steps::make(std::int64_t row, const std::vector<Totals>& before) {
    steps_.clear();
    row_ = row;
    totals_ = before;
    table_ = -1;
    const Row* previous = row > 0 ? rows_.at(row - 1) : nullptr;
    const Row* current = rows_.at(row);
    const std::size_t levels = definition_.groups.size();
    if (previous == nullptr) {
        for (std::size_t i = 0; i < heads_.size(); ++i) {
            if (heads_[i]) {
                steps_.push_back({Step::Kind::Head, i, bands_.head(definition_.heads[i], *heads_[i])});
            }
        }
        if (current == nullptr) {
            steps_.push_back({Step::Kind::Empty, 0, bands_.note(toQString(definition_.nothing))});
            return;
        }
    }
    const std::size_t change =
        previous == nullptr || current == nullptr ? 0 : firstChange(*previous, *current);
    if (previous != nullptr) {
        for (std::size_t level = levels; level-- > change;) {
            steps_.push_back(
                {Step::Kind::Close, level,
                 bands_.closing(definition_.groups[level].closing, *previous, totals_[level + 1], false)});
        }
    }
    if (current == nullptr) {
        steps_.push_back(
            {Step::Kind::Foot, 0, bands_.closing(definition_.closing, *previous, totals_[0], true)});
        return;
    }
    for (std::size_t level = change; level < levels; ++level) {
        addOpen(level, *current);
    }
    addRow(*current);
}

void Steps::addOpen(std::size_t level, const Row& row) {
    std::fill(totals_[level + 1].begin(), totals_[level + 1].end(), 0.0);
    const Group& group = definition_.groups[level];
    if (!holds(group.when, row)) {
        return;
    }
    for (std::size_t i = 0; i < definition_.counters.size(); ++i) {
        if (definition_.counters[i].groupsOf == static_cast<int>(level)) {
            for (std::size_t scope = 0; scope <= level; ++scope) {
                totals_[scope][i] += 1;
            }
        }
    }
    Block block = bands_.bar(level, row, false);
    Block attributes = bands_.attributes(group.block, row);
    block.ruled = block.ruled || attributes.ruled;
    block.kept += attributes.empty() ? 0 : attributes.kept;
    block.append(std::move(attributes));
    block.kept = std::min(block.kept, static_cast<int>(block.strips.size()));
    steps_.push_back({Step::Kind::Open, level, std::move(block)});
}

void Steps::addRow(const Row& row) {
    table_ = tableFor(row);
    if (table_ < 0) {
        const auto said = std::find_if(definition_.tables.begin(), definition_.tables.end(),
                                       [](const Table& table) { return !table.emptyText.empty(); });
        const bool shown =
            std::any_of(definition_.groups.begin(), definition_.groups.end(),
                        [&](const Group& group) { return !group.columns.empty() && holds(group.when, row); });
        if (shown) {
            count(row);
        } else if (said != definition_.tables.end()) {
            steps_.push_back({Step::Kind::Empty, 0, bands_.note(toQString(said->emptyText))});
        }
        return;
    }
    count(row);
    steps_.push_back({Step::Kind::Row, 0, rowBlock(row, Bands::Place::Anywhere)});
}

void Steps::count(const Row& row) {
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
        for (Totals& scope : totals_) {
            scope[i] += amount;
        }
    }
}

Block Steps::rowBlock(const Row& row, Bands::Place place) const {
    return bands_.row(static_cast<std::size_t>(table_), row, totals_.back(), continuation(row, row_ + 1),
                      place);
}

bool Steps::continuesOne() const {
    const Row* row = table_ >= 0 ? rows_.at(row_) : nullptr;
    if (row == nullptr) {
        return false;
    }
    const auto& continues = definition_.tables[static_cast<std::size_t>(table_)].continues;
    return continues && holds(*continues, *row);
}

void Steps::repeatContinued() {
    if (continuesOne()) {
        steps_.back().block = rowBlock(*rows_.at(row_), Bands::Place::Top);
    }
}

} // namespace relvane::reports
