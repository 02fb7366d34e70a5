#include "sqlite/cursor.h"

#include <atomic>
#include <limits>

namespace relvane::sqlite {
namespace {

constexpr int rowsAtOnce = 128;

// "ORDER BY" of the keys; rows equal in all of them keep their stored order.
std::string orderOf(const Columns& columns, std::span<const SortKey> keys) {
    std::string order = " ORDER BY ";
    for (const SortKey& key : keys) {
        const Column& column = columns[positionOf(columns, key.field)];
        const std::string field = identifier(toUtf8(column.name));
        const std::string direction = key.descending ? " DESC, " : ", ";
        if (column.kind == Kind::Text || column.kind == Kind::Any) {
            if (key.collation == Collation::Kana) {
                order += "rv_kana(" + field + ")" + direction;
            }
            order += "rv_code_units(" + field + ")" + direction;
        } else {
            order += field + direction;
        }
    }
    return order + "rowid";
}

} // namespace

Cursor::Cursor(std::shared_ptr<Connection> connection, RowSource source)
    : connection_(std::move(connection)),
      source_(std::move(source)),
      rows_("main." + identifier(source_.name)),
      columns_(columnsOf(*connection_, source_.name)),
      readOnly_(source_.isView) {
    newRow_.resize(columns_.size());
    if (source_.isView) {
        copyRowsOfView();
    }
}

Cursor::Cursor(std::shared_ptr<Connection> connection, RowSource source, std::span<const SortKey> keys,
               std::int64_t skip)
    : Cursor(std::move(connection), std::move(source)) {
    readOnly_ = true;
    order_.emplace();
    Statement sorted(*connection_,
                     "SELECT rowid FROM " + rows_ + orderOf(columns_, keys) + " LIMIT -1 OFFSET ?1");
    sorted.bind(1, skip);
    while (sorted.step()) {
        order_->push_back(sorted.number(0));
    }
}

Cursor::~Cursor() {
    if (!closed_) {
        release();
        connection_->commitQuietly();
    }
}

void Cursor::copyRowsOfView() {
    static std::atomic<unsigned> count = 0;
    rows_ = "temp." + identifier("RvRows" + std::to_string(++count));
    connection_->execute("CREATE TEMP TABLE " + rows_ + " AS SELECT * FROM " + identifier(source_.name));
}

void Cursor::refuseClosed() const {
    if (closed_) {
        throw RunTimeError(ErrorNumber::ObjectInvalid);
    }
}

void Cursor::refuseReadOnly() const {
    refuseClosed();
    if (readOnly_) {
        throw RunTimeError(ErrorNumber::DatabaseReadOnly, fromUtf8(source_.name));
    }
}

void Cursor::AddNew() {
    refuseReadOnly();
    written_.assign(columns_.size(), false);
    writing_ = true;
    lastCollected_ = columns_.size();
}

void Cursor::Collect(TextView field, const Value& value) {
    refuseReadOnly();
    const std::size_t position = positionOf(columns_, field, lastCollected_ + 1);
    lastCollected_ = position;
    if (!writing_) {
        throw RunTimeError(ErrorNumber::UpdateWithoutAddNew);
    }
    const Text* text = std::get_if<Text>(&value);
    if (text != nullptr && columns_[position].kind == Kind::Text) {
        newRow_[position] = *text; // into the memory of the row before: most values are texts
    } else {
        newRow_[position] = converted(columns_[position].kind, value);
    }
    written_[position] = true;
}

void Cursor::Update() {
    refuseReadOnly();
    if (!writing_) {
        throw RunTimeError(ErrorNumber::UpdateWithoutAddNew);
    }
    if (!insert_) {
        std::string parameters;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            parameters += i == 0 ? "?" : ", ?";
        }
        insert_ = Statement(*connection_, "INSERT INTO " + rows_ + " VALUES (" + parameters + ")");
    }
    connection_->beginWriting();
    for (std::size_t i = 0; i < newRow_.size(); ++i) {
        bindValue(insert_, static_cast<int>(i + 1), valueToWrite(i));
    }
    insert_.step();
    writing_ = false;
}

bool Cursor::EOF_() const {
    refuseClosed();
    return currentRow() == nullptr;
}

void Cursor::MoveFirst() {
    refuseClosed();
    fetched_.clear();
    current_ = 0;
    nextInOrder_ = 0;
    lastRowNumber_ = 0;
    complete_ = false;
    if (currentRow() == nullptr) {
        throw RunTimeError(ErrorNumber::NoCurrentRecord);
    }
}

void Cursor::MoveNext() {
    refuseClosed();
    if (currentRow() == nullptr) {
        throw RunTimeError(ErrorNumber::NoCurrentRecord);
    }
    ++current_;
}

int Cursor::FieldCount() const {
    refuseClosed();
    return static_cast<int>(columns_.size());
}

Text Cursor::FieldName(int position) const {
    refuseClosed();
    if (position < 0 || position >= FieldCount()) {
        throw RunTimeError(ErrorNumber::ItemNotInCollection);
    }
    return columns_[static_cast<std::size_t>(position)].name;
}

Value Cursor::Field(TextView name) const {
    refuseClosed();
    lastAsked_ = positionOf(columns_, name, lastAsked_ + 1);
    return valueAt(lastAsked_);
}

Value Cursor::Field(int position) const {
    refuseClosed();
    if (position < 0 || position >= FieldCount()) {
        throw RunTimeError(ErrorNumber::ItemNotInCollection);
    }
    return valueAt(static_cast<std::size_t>(position));
}

void Cursor::Close() {
    if (!closed_) {
        release();
        connection_->commit();
    }
}

// Statements first: a table is not dropped while one of them is on it.
void Cursor::release() {
    closed_ = true;
    writing_ = false;
    fetched_.clear();
    insert_ = {};
    select_ = {};
    if (source_.isView) {
        skipErrors([this] { connection_->execute("DROP TABLE " + rows_); });
    }
}

const Value& Cursor::valueToWrite(std::size_t position) const {
    return written_[position] ? newRow_[position] : columns_[position].defaultValue;
}

const Value& Cursor::valueAt(std::size_t position) const {
    if (writing_) {
        return valueToWrite(position);
    }
    const Row* row = currentRow();
    if (row == nullptr) {
        throw RunTimeError(ErrorNumber::NoCurrentRecord);
    }
    return (*row)[position];
}

const Cursor::Row* Cursor::currentRow() const {
    if (current_ >= fetched_.size() && !complete_) {
        fetch();
    }
    return current_ < fetched_.size() ? &fetched_[current_] : nullptr;
}

void Cursor::fetch() const {
    if (!select_) {
        select_ = Statement(*connection_, "SELECT rowid, * FROM " + rows_ +
                                              (order_ ? " WHERE rowid = ?1"
                                                      : " WHERE rowid > ?1 ORDER BY rowid LIMIT " +
                                                            std::to_string(rowsAtOnce)));
    }
    fetched_.clear();
    current_ = 0;
    if (!order_) {
        select_.bind(1, lastRowNumber_);
        fetchRow(select_);
        complete_ = fetched_.empty();
        return;
    }
    // One transaction for the handful, so that the file is locked once and not for each row. A row that was deleted
    // since the cursor was opened is passed over.
    const ReadTransaction together(*connection_);
    while (fetched_.size() < rowsAtOnce && nextInOrder_ < order_->size()) {
        select_.bind(1, (*order_)[nextInOrder_++]);
        fetchRow(select_);
    }
    complete_ = nextInOrder_ == order_->size();
}

void Cursor::fetchRow(Statement& statement) const {
    while (statement.step()) {
        Row& row = fetched_.emplace_back();
        row.reserve(columns_.size());
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            row.push_back(valueOf(statement, static_cast<int>(i + 1), columns_[i].kind));
        }
        lastRowNumber_ = statement.number(0);
    }
}

} // namespace relvane::sqlite
