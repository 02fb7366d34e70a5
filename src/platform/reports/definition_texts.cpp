#include "reports/definition_texts.h"

#include <array>

#include "reports/row_text.h"

namespace relvane::reports {
namespace {

constexpr std::array<std::pair<TextView, Format>, 9> formats{{
    {u"plain", Format::Plain},
    {u"count", Format::Count},
    {u"size", Format::Size},
    {u"date", Format::Date},
    {u"time", Format::Time},
    {u"longdate", Format::LongDate},
    {u"tally", Format::Tally},
    {u"mark", Format::Mark},
    {u"yesno", Format::YesNo},
}};

} // namespace

Format formatNamed(TextView name, const QString& where) {
    const int known = indexOf(formats, name, [](const auto& entry) { return entry.first; });
    if (known < 0) {
        complain(where, QStringLiteral("\"%1\" is no format").arg(toQString(name)));
    }
    return formats[static_cast<std::size_t>(known)].second;
}

int DefinitionTexts::field(FieldNames& fields, TextView name) {
    const int known = indexOf(fields, name, [](const Text& entry) { return TextView(entry); });
    if (known >= 0) {
        return known;
    }
    fields.emplace_back(name);
    return static_cast<int>(fields.size() - 1);
}

int DefinitionTexts::counter(TextView name, const QString& where) const {
    const int known =
        indexOf(report_.counters, name, [](const Counter& entry) { return TextView(entry.name); });
    if (known < 0) {
        complain(where, QStringLiteral("there is no counter \"%1\"").arg(toQString(name)));
    }
    return known;
}

Piece DefinitionTexts::piece(TextView inside, const QString& where, FieldNames& fields) {
    Piece piece;
    if (const std::size_t mark = inside.find(u':'); mark != TextView::npos) {
        piece.format = formatNamed(inside.substr(mark + 1), where);
        inside = inside.substr(0, mark);
    }
    if (inside.starts_with(u'#')) {
        piece.kind = Piece::Kind::Counter;
        piece.index = counter(inside.substr(1), where);
        return piece;
    }
    piece.kind = Piece::Kind::Field;
    if (const std::size_t mark = inside.find(u'|'); mark != TextView::npos) {
        const TextView name = inside.substr(mark + 1);
        piece.words = indexOf(report_.words, name, [](const Words& entry) { return TextView(entry.name); });
        if (piece.words < 0) {
            complain(where, QStringLiteral("\"%1\" is no table of words").arg(toQString(name)));
        }
        inside = inside.substr(0, mark);
    }
    if (inside.empty()) {
        complain(where, QStringLiteral("a field's name is missing between the brackets"));
    }
    piece.index = field(fields, inside);
    return piece;
}

Template DefinitionTexts::textTemplate(Node& node, const QString& key, FieldNames& fields) {
    const Text text = node.text(key);
    Template pieces;
    Text literal;
    const auto flush = [&] {
        if (!literal.empty()) {
            Piece piece;
            piece.literal = std::move(literal);
            pieces.push_back(std::move(piece));
            literal.clear();
        }
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'[') {
            literal += text[i];
        } else if (i + 1 < text.size() && text[i + 1] == u'[') {
            literal += text[i++];
        } else {
            const std::size_t end = text.find(u']', i);
            if (end == Text::npos) {
                complain(node.place(key), QStringLiteral("a bracket is not closed"));
            }
            flush();
            pieces.push_back(piece(TextView(text).substr(i + 1, end - i - 1), node.place(key), fields));
            i = end;
        }
    }
    flush();
    return pieces;
}

// "FieldNo": the field has a value. {"Class": "Table"}: the field has this value.
Condition DefinitionTexts::condition(const QJsonValue& value, const QString& where) {
    Condition condition;
    if (value.isString()) {
        condition.field = field(report_.fields, fromQString(value.toString()));
        condition.filled = true;
        return condition;
    }
    const QJsonObject pair = value.toObject();
    if (pair.size() != 1 || !pair.begin().value().isString()) {
        complain(where, QStringLiteral("a field, or a field with its value, is expected"));
    }
    condition.field = field(report_.fields, fromQString(pair.begin().key()));
    condition.value = fromQString(pair.begin().value().toString());
    return condition;
}

std::optional<Condition> DefinitionTexts::oneCondition(Node& node, const QString& key) {
    return node.has(key) ? std::optional(condition(node.value(key), node.place(key))) : std::nullopt;
}

// One condition, or a list of them.
Conditions DefinitionTexts::conditions(Node& node, const QString& key) {
    Conditions conditions;
    if (node.has(key)) {
        const QJsonValue value = node.value(key);
        const QJsonArray list = value.isArray() ? value.toArray() : QJsonArray{value};
        for (const QJsonValue& entry : list) {
            conditions.push_back(condition(entry, node.place(key)));
        }
    }
    return conditions;
}

} // namespace relvane::reports
