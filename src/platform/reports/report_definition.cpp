#include "reports/report_definition.h"

#include <algorithm>
#include <array>

#include <QJsonDocument>

#include "reports/definition_reader.h"
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

template <class Entries, class NameOf>
int indexOf(const Entries& entries, TextView name, NameOf nameOf) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (equalsIgnoringCase(nameOf(entries[i]), name)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

Format formatNamed(TextView name, const QString& where) {
    const int known = indexOf(formats, name, [](const auto& entry) { return entry.first; });
    if (known < 0) {
        complain(where, QStringLiteral("\"%1\" is no format").arg(toQString(name)));
    }
    return formats[static_cast<std::size_t>(known)].second;
}

// Reads one definition from the outside in. Field names are collected as templates mention them.
class Parser {
public:
    Parser(const Text& name, const QJsonValue& root) : root_(root, toQString(name)) { report_.name = name; }

    ReportDefinition parse();

private:
    int field(FieldNames& fields, TextView name) {
        const int known = indexOf(fields, name, [](const Text& entry) { return TextView(entry); });
        if (known >= 0) {
            return known;
        }
        fields.emplace_back(name);
        return static_cast<int>(fields.size() - 1);
    }
    int counter(TextView name, const QString& where) const {
        const int known =
            indexOf(report_.counters, name, [](const Counter& entry) { return TextView(entry.name); });
        if (known < 0) {
            complain(where, QStringLiteral("there is no counter \"%1\"").arg(toQString(name)));
        }
        return known;
    }

    Template textTemplate(Node& node, const QString& key, FieldNames& fields);
    Piece piece(TextView inside, const QString& where, FieldNames& fields);
    Condition condition(const QJsonValue& value, const QString& where);
    std::optional<Condition> oneCondition(Node& node, const QString& key);
    Conditions conditions(Node& node, const QString& key);

    void parseWords();
    void parseCounterNames();
    void parseCounters();
    void parseSort();
    Closing closing(Node& node);
    std::vector<Column> columns(Node& node);
    AttributeBlock attributes(Node& node, FieldNames& fields);
    Group group(Node node);
    Table table(Node node);
    Placed placed(Node node);

    Node root_;
    ReportDefinition report_;
};

// ---- Texts with fields

Piece Parser::piece(TextView inside, const QString& where, FieldNames& fields) {
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

Template Parser::textTemplate(Node& node, const QString& key, FieldNames& fields) {
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
Condition Parser::condition(const QJsonValue& value, const QString& where) {
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

std::optional<Condition> Parser::oneCondition(Node& node, const QString& key) {
    return node.has(key) ? std::optional(condition(node.value(key), node.place(key))) : std::nullopt;
}

// One condition, or a list of them.
Conditions Parser::conditions(Node& node, const QString& key) {
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

// ---- Parts

void Parser::parseWords() {
    if (!root_.has("words")) {
        return;
    }
    Node node = root_.child("words");
    for (const QString& name : node.keys()) {
        Words words;
        words.name = fromQString(name);
        Node entries = node.child(name);
        for (const QString& code : entries.keys()) {
            const Text word = entries.text(code);
            if (code == u'*') {
                words.otherwise = word;
            } else {
                words.entries.emplace_back(fromQString(code), word);
            }
        }
        report_.words.push_back(std::move(words));
    }
}

// The names first: templates and counts speak of counters that count groups, and those of groups.
void Parser::parseCounterNames() {
    if (!root_.has("counters")) {
        return;
    }
    const Node node = root_.child("counters");
    for (const QString& name : node.keys()) {
        Counter counter;
        counter.name = fromQString(name);
        report_.counters.push_back(std::move(counter));
    }
}

void Parser::parseCounters() {
    if (report_.counters.empty()) {
        return;
    }
    Node node = root_.child("counters");
    for (Counter& counter : report_.counters) {
        Node entry = node.child(toQString(counter.name));
        counter.when = conditions(entry, "when");
        if (entry.has("sum")) {
            counter.sumOf = field(report_.fields, entry.requiredText("sum"));
        }
        if (entry.has("groups")) {
            counter.groupsOf = indexOf(report_.groups, entry.requiredText("groups"),
                                       [](const Group& group) { return TextView(group.name); });
            if (counter.groupsOf < 0) {
                complain(entry.place("groups"), QStringLiteral("there is no such group"));
            }
        }
        entry.done();
    }
}

void Parser::parseSort() {
    const QJsonValue value = root_.value("sort");
    if (!value.isUndefined() && !value.isArray()) {
        complain(root_.place("sort"), QStringLiteral("a list is expected"));
    }
    for (const QJsonValue& entry : value.toArray()) {
        SortKey key;
        if (entry.isString()) {
            key.field = fromQString(entry.toString());
        } else {
            Node node(entry, root_.place("sort"));
            key.field = node.requiredText("field");
            key.descending = node.flag("descending", false);
            key.collation = node.flag("kana", false) ? Collation::Kana : Collation::CodeUnits;
            node.done();
        }
        report_.sort.push_back(std::move(key));
    }
}

Closing Parser::closing(Node& node) {
    Closing closing;
    closing.totals = textTemplate(node, "totals", report_.fields);
    for (Node& entry : node.list("foot")) {
        Count count;
        count.label = entry.text("label");
        count.counter = counter(entry.requiredText("counter"), entry.place("counter"));
        count.unit = entry.text("unit", u"件");
        if (entry.has("format")) {
            count.format = formatNamed(entry.requiredText("format"), entry.place("format"));
        }
        count.omitZero = entry.flag("omitZero", false);
        entry.done();
        closing.counts.push_back(std::move(count));
    }
    return closing;
}

constexpr std::initializer_list<const char*> wraps{"words", "characters", "source"};
constexpr std::initializer_list<const char*> aligns{"left", "center", "right"};

AttributeBlock Parser::attributes(Node& node, FieldNames& fields) {
    AttributeBlock block;
    block.labelWidth = node.number("labelWidth", block.labelWidth, 5, 100);
    for (Node& entry : node.list("attributes")) {
        Attribute attribute;
        attribute.label = textTemplate(entry, "label", fields);
        attribute.text = textTemplate(entry, "text", fields);
        attribute.wide = entry.flag("wide", false);
        attribute.block = entry.flag("block", false);
        attribute.omitEmpty = entry.flag("omitEmpty", false);
        attribute.wrap = static_cast<Wrap>(entry.choice("wrap", wraps, 0));
        attribute.source = oneCondition(entry, "source");
        entry.done();
        block.attributes.push_back(std::move(attribute));
    }
    return block;
}

std::vector<Column> Parser::columns(Node& node) {
    std::vector<Column> columns;
    for (Node& entry : node.list("columns")) {
        Column column;
        column.heading = entry.text("heading");
        column.text = textTemplate(entry, "text", report_.fields);
        column.again = textTemplate(entry, "again", report_.fields);
        column.total = textTemplate(entry, "total", report_.fields);
        column.width = entry.number("width", 0, 4, 400);
        column.share = entry.number("share", 1, 0.1, 100);
        column.align = static_cast<Align>(entry.choice("align", aligns, 0));
        column.wrap = static_cast<Wrap>(entry.choice("wrap", wraps, 0));
        column.grow = entry.flag("grow", true);
        column.faint = entry.flag("faint", false);
        column.bold = entry.flag("bold", false);
        column.source = oneCondition(entry, "source");
        entry.done();
        columns.push_back(std::move(column));
    }
    return columns;
}

Group Parser::group(Node node) {
    Group group;
    group.name = node.requiredText("name");
    const QJsonArray by = node.value("by").toArray();
    for (const QJsonValue& key : by) {
        group.by.push_back(field(report_.fields, fromQString(key.toString())));
    }
    if (group.by.empty()) {
        complain(node.place("by"), QStringLiteral("a list of fields is expected"));
    }
    group.when = conditions(node, "when");
    group.style = static_cast<BarStyle>(node.choice("bar", {"none", "bar", "sub", "line"}, 1));
    group.number = textTemplate(node, "number", report_.fields);
    group.title = textTemplate(node, "title", report_.fields);
    group.kind = textTemplate(node, "kind", report_.fields);
    group.columns = columns(node);
    group.block = attributes(node, report_.fields);
    group.keep = node.number("keep", group.keep, 0, 150);
    group.newPage = node.flag("newPage", false);
    group.repeat = node.flag("repeat", true);
    group.outline = textTemplate(node, "outline", report_.fields);
    group.closing = closing(node);
    node.done();
    return group;
}

Table Parser::table(Node node) {
    Table table;
    table.when = conditions(node, "when");
    table.continues = oneCondition(node, "continues");
    table.heading = node.flag("heading", true);
    table.rules = static_cast<Rules>(node.choice("rules", {"grid", "rows", "none"}, 0));
    table.emptyText = node.text("emptyText");
    if (node.has("within")) {
        table.within = indexOf(report_.groups, node.requiredText("within"),
                               [](const Group& group) { return TextView(group.name); });
        if (table.within < 0 || report_.groups[static_cast<std::size_t>(table.within)].columns.empty()) {
            complain(node.place("within"), QStringLiteral("there is no such group with columns"));
        }
    }
    table.indent = node.number("indent", 0, 0, 100);
    table.columns = columns(node);
    if (table.columns.empty()) {
        complain(node.place("columns"), QStringLiteral("a list of columns is expected"));
    }
    node.done();
    return table;
}

Placed Parser::placed(Node node) {
    Placed placed;
    placed.when = conditions(node, "when");
    placed.pen = node.number("pen", placed.pen, 0, 10);
    placed.dashed = node.flag("dashed", false);
    if (node.has("line")) {
        const std::vector<double> ends = node.numbers("line", 4);
        placed.kind = Placed::Kind::Line;
        placed.x = ends[0];
        placed.y = ends[1];
        placed.width = ends[2] - ends[0];
        placed.height = ends[3] - ends[1];
        node.done();
        return placed;
    }
    const QString place = node.has("box") ? "box" : "at";
    const std::vector<double> box = node.numbers(place, 4);
    placed.x = box[0];
    placed.y = box[1];
    placed.width = box[2];
    placed.height = box[3];
    if (node.has("box")) {
        placed.kind = Placed::Kind::Box;
        placed.fill = node.number("fill", 0, 0, 1);
        node.done();
        return placed;
    }
    placed.text = textTemplate(node, "text", report_.fields);
    placed.points = node.number("points", placed.points, 4, 120);
    placed.minPoints = node.number("minPoints", std::min(placed.points, placed.minPoints), 4, placed.points);
    placed.bold = node.flag("bold", false);
    placed.vertical = node.flag("vertical", false);
    placed.align = static_cast<Align>(node.choice("align", aligns, 0));
    placed.verticalAlign =
        static_cast<VerticalAlign>(node.choice("verticalAlign", {"top", "middle", "bottom"}, 0));
    placed.wrap = static_cast<Wrap>(node.choice("wrap", wraps, 0));
    node.done();
    return placed;
}

ReportDefinition Parser::parse() {
    parseWords();
    parseCounterNames();
    report_.source = root_.requiredText("source");
    report_.orientation = static_cast<Orientation>(root_.choice("page", {"upright", "lying"}, 0));
    report_.columns = static_cast<int>(root_.number("columns", 1, 1, 2));
    parseSort();
    for (Node& node : root_.list("heads")) {
        HeadBlock head;
        head.caption = node.text("caption");
        head.source = node.requiredText("source");
        head.block = attributes(node, head.fields);
        node.done();
        report_.heads.push_back(std::move(head));
    }
    for (Node& node : root_.list("groups")) {
        report_.groups.push_back(group(node));
    }
    parseCounters();
    for (Node& node : root_.list("tables")) {
        report_.tables.push_back(table(node));
    }
    for (Node& node : root_.list("placed")) {
        report_.placed.push_back(placed(node));
    }
    report_.title = textTemplate(root_, "title", report_.fields);
    report_.inHand = textTemplate(root_, "inHand", report_.fields);
    report_.closing = closing(root_);
    root_.done();
    if (report_.tables.empty() == report_.placed.empty()) {
        complain(root_.where(), QStringLiteral("either tables or placed fields are expected"));
    }
    return std::move(report_);
}

} // namespace

ReportDefinition parseDefinition(const Text& name, const Text& json) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(toUtf8(json)), &error);
    if (document.isNull()) {
        complain(toQString(name),
                 QStringLiteral("no JSON, at byte %1: %2").arg(error.offset).arg(error.errorString()));
    }
    return Parser(name, document.object()).parse();
}

} // namespace relvane::reports
