#include "reports/definition_reader.h"

#include "platform/runtime_error.h"
#include "reports/row_text.h"

namespace relvane::reports {

void complain(const QString& where, const QString& reason) {
    throw RunTimeError(ErrorNumber::DatabaseDamaged, fromQString(where + QStringLiteral(": ") + reason));
}

Node::Node(QJsonValue value, QString where) : object_(value.toObject()), where_(std::move(where)) {
    if (!value.isObject()) {
        complain(where_, QStringLiteral("an object is expected"));
    }
}

QString Node::place(const QString& key) const {
    return where_ + u'.' + key;
}

QJsonValue Node::value(const QString& key) {
    asked_.insert(key);
    return object_.value(key);
}

Text Node::text(const QString& key, const Text& otherwise) {
    const QJsonValue found = value(key);
    if (found.isUndefined()) {
        return otherwise;
    }
    if (!found.isString()) {
        complain(place(key), QStringLiteral("a text is expected"));
    }
    return fromQString(found.toString());
}

Text Node::requiredText(const QString& key) {
    const Text found = text(key);
    if (found.empty()) {
        complain(place(key), QStringLiteral("is missing"));
    }
    return found;
}

double Node::number(const QString& key, double otherwise, double least, double most) {
    const QJsonValue found = value(key);
    if (found.isUndefined()) {
        return otherwise;
    }
    const double number = found.toDouble();
    if (!found.isDouble() || !(number >= least && number <= most)) {
        complain(place(key), QStringLiteral("a number from %1 to %2 is expected").arg(least).arg(most));
    }
    return number;
}

bool Node::flag(const QString& key, bool otherwise) {
    const QJsonValue found = value(key);
    if (found.isUndefined()) {
        return otherwise;
    }
    if (!found.isBool()) {
        complain(place(key), QStringLiteral("true or false is expected"));
    }
    return found.toBool();
}

Node Node::child(const QString& key) {
    return {value(key), place(key)};
}

std::vector<Node> Node::list(const QString& key) {
    std::vector<Node> nodes;
    const QJsonValue found = value(key);
    if (found.isUndefined()) {
        return nodes;
    }
    if (!found.isArray()) {
        complain(place(key), QStringLiteral("a list is expected"));
    }
    const QJsonArray entries = found.toArray();
    for (qsizetype i = 0; i < entries.size(); ++i) {
        nodes.emplace_back(entries[i], place(key) + QStringLiteral("[%1]").arg(i));
    }
    return nodes;
}

std::vector<double> Node::numbers(const QString& key, int count) {
    const QJsonArray entries = value(key).toArray();
    std::vector<double> numbers;
    for (const QJsonValue& entry : entries) {
        const double number = entry.toDouble(-1);
        if (!entry.isDouble() || !(number >= 0 && number <= 1000)) {
            complain(place(key), QStringLiteral("numbers from 0 to 1000 are expected"));
        }
        numbers.push_back(number);
    }
    if (entries.size() != count) {
        complain(place(key), QStringLiteral("%1 numbers are expected").arg(count));
    }
    return numbers;
}

int Node::choice(const QString& key, std::initializer_list<const char*> words, int otherwise) {
    if (!has(key)) {
        return otherwise;
    }
    const QString found = value(key).toString();
    int position = 0;
    QString known;
    for (const char* word : words) {
        if (found == QLatin1String(word)) {
            return position;
        }
        known += (position++ > 0 ? QStringLiteral(", ") : QString()) + QLatin1String(word);
    }
    complain(place(key), QStringLiteral("one of %1 is expected").arg(known));
}

void Node::done() const {
    for (const QString& key : object_.keys()) {
        if (!asked_.contains(key)) {
            complain(where_ + u'.' + key, QStringLiteral("is not known"));
        }
    }
}

} // namespace relvane::reports
