#include "reports/report_definition.h"

#include <algorithm>

#include <QJsonDocument>

#include "reports/definition_texts.h"
#include "reports/row_text.h"

namespace relvane::reports {
namespace {

// Reads one definition from the outside in. Field names are collected as templates mention them.
class Parser {
public:
    Parser(const Text& name, const QJsonValue& root) : root_(root, toQString(name)) { report_.name = name; }

    ReportDefinition parse();

private:
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
    DefinitionTexts texts_{report_};
};

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
        counter.when = texts_.conditions(entry, "when");
        if (entry.has("sum")) {
            counter.sumOf = texts_.field(report_.fields, entry.requiredText("sum"));
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
    closing.totals = texts_.textTemplate(node, "totals", report_.fields);
    for (Node& entry : node.list("foot")) {
        Count count;
        count.label = entry.text("label");
        count.counter = texts_.counter(entry.requiredText("counter"), entry.place("counter"));
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
        attribute.label = texts_.textTemplate(entry, "label", fields);
        attribute.text = texts_.textTemplate(entry, "text", fields);
        attribute.wide = entry.flag("wide", false);
        attribute.block = entry.flag("block", false);
        attribute.omitEmpty = entry.flag("omitEmpty", false);
        attribute.wrap = static_cast<Wrap>(entry.choice("wrap", wraps, 0));
        attribute.source = texts_.oneCondition(entry, "source");
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
        column.text = texts_.textTemplate(entry, "text", report_.fields);
        column.again = texts_.textTemplate(entry, "again", report_.fields);
        column.total = texts_.textTemplate(entry, "total", report_.fields);
        column.width = entry.number("width", 0, 4, 400);
        column.share = entry.number("share", 1, 0.1, 100);
        column.align = static_cast<Align>(entry.choice("align", aligns, 0));
        column.wrap = static_cast<Wrap>(entry.choice("wrap", wraps, 0));
        column.grow = entry.flag("grow", true);
        column.faint = entry.flag("faint", false);
        column.bold = entry.flag("bold", false);
        column.ruled = entry.flag("ruled", false);
        column.source = texts_.oneCondition(entry, "source");
        column.accent = texts_.oneCondition(entry, "accent");
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
        group.by.push_back(texts_.field(report_.fields, fromQString(key.toString())));
    }
    if (group.by.empty()) {
        complain(node.place("by"), QStringLiteral("a list of fields is expected"));
    }
    group.when = texts_.conditions(node, "when");
    group.style = static_cast<BarStyle>(node.choice("bar", {"none", "bar", "sub", "line"}, 1));
    group.number = texts_.textTemplate(node, "number", report_.fields);
    group.title = texts_.textTemplate(node, "title", report_.fields);
    group.kind = texts_.textTemplate(node, "kind", report_.fields);
    group.columns = columns(node);
    group.block = attributes(node, report_.fields);
    group.keep = node.number("keep", group.keep, 0, 150);
    group.newPage = node.flag("newPage", false);
    group.repeat = node.flag("repeat", true);
    group.outline = texts_.textTemplate(node, "outline", report_.fields);
    group.closing = closing(node);
    node.done();
    return group;
}

Table Parser::table(Node node) {
    Table table;
    table.when = texts_.conditions(node, "when");
    table.continues = texts_.oneCondition(node, "continues");
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
    placed.when = texts_.conditions(node, "when");
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
    placed.text = texts_.textTemplate(node, "text", report_.fields);
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
    report_.title = texts_.textTemplate(root_, "title", report_.fields);
    report_.inHand = texts_.textTemplate(root_, "inHand", report_.fields);
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
