#include "reports/row_text.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime_error.h"
#include "reports/style.h"

namespace relvane::reports {
namespace {

constexpr std::size_t windowRows = 16;
constexpr std::int64_t rowsBehind = 2; // read too, when a cursor is opened in the middle

std::optional<DateTime> asDate(const Value& value) {
    if (const auto* date = std::get_if<DateTime>(&value)) {
        return *date;
    }
    if (const auto* text = std::get_if<Text>(&value)) {
        return DateTime::fromText(*text);
    }
    return std::nullopt;
}

QString dateText(const DateTime& date, Format format) {
    if (format == Format::LongDate) {
        return QString::fromUtf16(u"%1年%2月%3日").arg(date.year).arg(date.month).arg(date.day);
    }
    const QString day = QStringLiteral("%1/%2/%3")
                            .arg(date.year, 4, 10, QChar(u'0'))
                            .arg(date.month, 2, 10, QChar(u'0'))
                            .arg(date.day, 2, 10, QChar(u'0'));
    if (format == Format::Date) {
        return day;
    }
    return day + QStringLiteral(" %1:%2:%3")
                     .arg(date.hour, 2, 10, QChar(u'0'))
                     .arg(date.minute, 2, 10, QChar(u'0'))
                     .arg(date.second, 2, 10, QChar(u'0'));
}

QString numberText(double number, int decimals) {
    QString digits = QString::number(std::fabs(number), 'f', decimals);
    const qsizetype point = digits.indexOf(u'.');
    for (qsizetype i = (point < 0 ? digits.size() : point) - 3; i > 0; i -= 3) {
        digits.insert(i, u',');
    }
    return number < 0 ? u'-' + digits : digits;
}

// Paper shows no blank that does not break: lines may wrap there, and who searches the text finds it.
QString plain(const Value& value) {
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        return QString::fromLatin1(
            QByteArray(reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size()))
                .toHex());
    }
    return toQString(toText(value)).replace(QChar::Nbsp, QChar::Space);
}

} // namespace

QString toQString(TextView text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

Text fromQString(const QString& text) {
    return text.toStdU16String();
}

QString formatted(const Value& value, Format format) {
    if (std::holds_alternative<Null>(value)) {
        return {};
    }
    if (format == Format::Automatic) {
        format = std::holds_alternative<bool>(value)       ? Format::Mark
                 : std::holds_alternative<DateTime>(value) ? Format::Time
                                                           : Format::Plain;
    }
    // A value that the format does not fit ("?" where a number is usual) is printed as it is.
    try {
        switch (format) {
        case Format::Count:
            return numberText(toDouble(value), 0);
        case Format::Size:
            return numberText(toDouble(value), 1);
        case Format::Tally: {
            const double number = toDouble(value);
            return number == 0 ? QString() : numberText(number, 0);
        }
        case Format::Mark:
            return toBoolean(value) ? QString(QChar(style::tick)) : QString();
        case Format::YesNo:
            return toBoolean(value) ? QString::fromUtf16(u"はい") : QString::fromUtf16(u"いいえ");
        case Format::Date:
        case Format::Time:
        case Format::LongDate:
            if (const auto date = asDate(value)) {
                return dateText(*date, format);
            }
            break;
        case Format::Automatic:
        case Format::Plain:
            break;
        }
    } catch (const RunTimeError&) {
    }
    return plain(value);
}

QString textOf(const Template& text, const Row& row, const ReportDefinition& definition,
               const Totals* totals) {
    QString result;
    for (const Piece& piece : text) {
        const auto index = static_cast<std::size_t>(piece.index);
        switch (piece.kind) {
        case Piece::Kind::Literal:
            result += toQString(piece.literal);
            break;
        case Piece::Kind::Counter:
            if (totals != nullptr) {
                result += formatted(Value((*totals)[index]),
                                    piece.format == Format::Automatic ? Format::Count : piece.format);
            }
            break;
        case Piece::Kind::Field:
            if (piece.words < 0) {
                result += formatted(row[index], piece.format);
                break;
            }
            const Words& words = definition.words[static_cast<std::size_t>(piece.words)];
            const Text code = std::holds_alternative<Bytes>(row[index]) ? Text() : toText(row[index]);
            const auto known = std::find_if(words.entries.begin(), words.entries.end(),
                                            [&](const auto& entry) { return entry.first == code; });
            result += known != words.entries.end() ? toQString(known->second)
                      : words.otherwise            ? toQString(*words.otherwise)
                                                   : formatted(row[index], piece.format);
            break;
        }
    }
    return result;
}

bool holds(const Condition& condition, const Row& row) {
    const Value& value = row[static_cast<std::size_t>(condition.field)];
    if (std::holds_alternative<Null>(value) || std::holds_alternative<Bytes>(value)) {
        return false;
    }
    return condition.filled ? !isEmptyText(value) : toText(value) == condition.value;
}

bool holds(const Conditions& conditions, const Row& row) {
    return std::all_of(conditions.begin(), conditions.end(),
                       [&](const Condition& condition) { return holds(condition, row); });
}

Rows::Rows(std::shared_ptr<RowStore> store, Text source, std::vector<SortKey> sort, FieldNames fields)
    : store_(std::move(store)),
      source_(std::move(source)),
      sort_(std::move(sort)),
      fields_(std::move(fields)) {}

void Rows::openAt(std::int64_t number) {
    window_.clear();
    first_ = std::max<std::int64_t>(0, number - rowsBehind);
    cursor_ = store_->OpenSorted(source_, sort_, first_);
    positions_.clear();
    for (const Text& name : fields_) {
        int position = 0;
        while (position < cursor_->FieldCount() && !equalsIgnoringCase(cursor_->FieldName(position), name)) {
            ++position;
        }
        if (position == cursor_->FieldCount()) {
            throw RunTimeError(ErrorNumber::ItemNotInCollection, source_ + u"." + name);
        }
        positions_.push_back(position);
    }
}

const Row* Rows::at(std::int64_t number) {
    const auto behind = [&] { return first_ + static_cast<std::int64_t>(window_.size()); };
    if (end_ >= 0 && number >= end_) {
        cursor_.reset();
        return nullptr;
    }
    const bool inWindow = number >= first_ && number < behind();
    if (!inWindow && (cursor_ == nullptr || number < first_ ||
                      number > behind() + static_cast<std::int64_t>(windowRows))) {
        openAt(number);
    }
    while (number >= behind()) {
        if (cursor_->EOF_()) {
            end_ = behind();
            cursor_.reset();
            return nullptr;
        }
        Row row;
        row.reserve(positions_.size());
        for (const int position : positions_) {
            row.push_back(cursor_->Field(position));
        }
        cursor_->MoveNext();
        window_.push_back(std::move(row));
        if (window_.size() > windowRows) {
            window_.pop_front();
            ++first_;
        }
    }
    return &window_[static_cast<std::size_t>(number - first_)];
}

} // namespace relvane::reports
