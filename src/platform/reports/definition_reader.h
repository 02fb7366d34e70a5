// JSON read strictly: every key must be one that was asked for, and every complaint says where it stands.
#pragma once

#include <set>

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include "platform/text.h"

namespace relvane::reports {

// Error 3049 with the place and the reason.
[[noreturn]] void complain(const QString& where, const QString& reason);

// An object of the definition at a place ("groups[0]"). After all keys were asked for, `done` refuses the rest.
class Node {
public:
    Node(QJsonValue value, QString where);

    bool has(const QString& key) const { return object_.contains(key); }
    const QString& where() const { return where_; }
    QStringList keys() const { return object_.keys(); }

    Text text(const QString& key, const Text& otherwise = {});
    Text requiredText(const QString& key);
    double number(const QString& key, double otherwise, double least, double most);
    bool flag(const QString& key, bool otherwise);
    Node child(const QString& key); // must be there
    std::vector<Node> list(const QString& key);
    std::vector<double> numbers(const QString& key, int count);
    QJsonValue value(const QString& key);

    // One of a set of words; the position in the set.
    int choice(const QString& key, std::initializer_list<const char*> words, int otherwise);

    void done() const;
    QString place(const QString& key) const;

private:
    QJsonObject object_;
    QString where_;
    std::set<QString> asked_;
};

} // namespace relvane::reports
