#include "jet/query_fields.h"

#include <algorithm>

#include "jet/query_names.h"
#include "jet/query_parts.h"
#include "jet/query_select.h"
#include "jet/query_types.h"
#include "platform/runtime_error.h"

namespace relvane::jet {
namespace {

constexpr int maximumDepth = 50;           // of queries on queries, as in Access
constexpr std::size_t maximumFields = 255; // of one result
constexpr std::size_t firstUnnamed = 1000; // Jet calls an expression without a name Expr1000 and so on

// The words that a column may consist of without naming a field.
constexpr TextView constants[] = {u"Null", u"True", u"False", u"Yes", u"No", u"On", u"Off"};

bool isConstant(const std::vector<Token>& tokens) {
    return std::ranges::any_of(constants, [&tokens](TextView word) { return tokens.front().isWord(word); }) &&
           tokens.size() == 2;
}

// One more level of nesting for as long as it lives.
class Nesting {
public:
    explicit Nesting(int& depth) : depth_(depth) {
        if (depth_ == maximumDepth) {
            throwDamagedQuery(u"queries nested too deep");
        }
        ++depth_;
    }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& depth_;
};

std::shared_ptr<const FieldOrigin> untraceable() {
    static const auto origin = [] {
        FieldOrigin lost;
        lost.size = untraceableSize;
        return std::make_shared<const FieldOrigin>(std::move(lost));
    }();
    return origin;
}

std::shared_ptr<const FieldOrigin> valueOf(int type, Text expression) {
    FieldOrigin origin;
    origin.type = type;
    origin.size = sizeOfType(type);
    origin.expression = std::move(expression);
    return std::make_shared<const FieldOrigin>(std::move(origin));
}

// The names behind In in the column heading of a crosstab: one field each.
std::vector<Text> fixedHeadings(TextView heading) {
    const std::vector<Token> tokens = sqlTokens(heading);
    TokenReader reader(tokens), list(tokens);
    bool found = false;
    while (!reader.atEnd()) {
        if (reader.take().isSign(u"(")) {
            reader.skipParentheses();
        } else if (reader.position()[-1].isWord(u"In") && reader.takeSign(u"(")) {
            list = reader;
            found = true;
            reader.skipParentheses();
        }
    }
    std::vector<Text> names;
    while (found && !list.atEnd() && !list.peek().isSign(u")")) {
        Text name;
        while (!list.atEnd() && !list.peek().isSign(u",") && !list.peek().isSign(u")")) {
            name += list.take().value();
        }
        names.push_back(std::move(name));
        list.takeSign(u",");
    }
    return names;
}

} // namespace

// A table or query with its fields.
struct QueryFieldResolver::Source {
    int height = 0; // levels of queries below and with it, 0 for a table
    std::vector<QueryField> fields;
    std::unordered_map<Text, std::size_t> places; // by nameKey

    const QueryField* find(TextView name) const {
        const auto found = places.find(nameKey(name));
        return found == places.end() ? nullptr : &fields[found->second];
    }
    void indexNames() {
        for (std::size_t place = 0; place < fields.size(); ++place) {
            places.emplace(nameKey(fields[place].name), place);
        }
    }
};

// One selection while its outputs are worked out.
class QueryFieldResolver::Scope : public ExpressionScope {
public:
    Scope(QueryFieldResolver& resolver, const Selection& selection)
        : resolver_(resolver), selection_(selection) {
        for (const SelectSource& source : selection.sources) {
            members_.push_back({source.knownAs(), nameKey(source.knownAs()), sourceOf(source)});
            height_ = std::max(height_, members_.back().source->height);
        }
    }

    // The outputs of the selection. Names that occur twice are told apart by their sources.
    std::vector<QueryField> outputs() {
        for (const SelectColumn& column : selection_.columns) {
            addColumn(column);
            ++position_;
        }
        if (selection_.allFields) {
            addAllFields(u"");
        }
        return named();
    }

    // The outputs of a crosstab: row headings, then a field for each fixed column heading.
    std::vector<QueryField> crosstabOutputs(const QueryParts& parts) {
        const QueryRow* value = nullptr;
        const QueryRow* heading = nullptr;
        for (const QueryRow* row : parts.of(QueryPart::Column)) {
            const int role = flagOf(*row);
            if (role == crosstabRole::rowHeading) {
                addColumn({Text(textOf(row->expression)), withoutBrackets(textOf(row->name1))});
                ++position_;
            } else {
                (role == crosstabRole::value ? value : heading) = row;
            }
        }
        if (value != nullptr && heading != nullptr) {
            const auto origin = originOf(Text(textOf(value->expression)));
            for (Text& name : fixedHeadings(textOf(heading->expression))) {
                add({std::move(name), origin}, {});
            }
        }
        return named();
    }

    int height() const { return height_; }

    std::optional<int> typeOfField(TextView table, TextView field) override {
        const Found found = find(table, field);
        return found.field == nullptr ? std::nullopt : std::optional(found.field->origin->type);
    }

    std::optional<int> typeOfParameter(TextView name) override {
        for (const SelectParameter& parameter : selection_.parameters) {
            if (nameKey(parameter.name) == nameKey(name)) {
                return parameter.type;
            }
        }
        return std::nullopt;
    }

    std::optional<int> typeOfSubquery(TextView statement) override {
        const SourcePointer source = subquery(statement);
        height_ = std::max(height_, source->height);
        return source->fields.empty() ? std::nullopt : std::optional(source->fields.front().origin->type);
    }

private:
    struct Member {
        Text knownAs, key;
        SourcePointer source;
    };
    struct Output {
        QueryField field;
        Text member; // that it comes from; empty for an expression and for a field with an alias
    };
    struct Found {
        const Member* member = nullptr;
        const QueryField* field = nullptr;
    };

    SourcePointer sourceOf(const SelectSource& source) {
        if (!source.subquery.empty()) {
            return subquery(source.subquery);
        }
        static const auto elsewhere = std::make_shared<const Source>();
        return selection_.otherDatabase ? elsewhere : resolver_.source(source.name);
    }

    SourcePointer subquery(TextView statement) {
        const Nesting nesting(resolver_.depth_);
        const Selection selection = selectionOfText(statement);
        Scope scope(resolver_, selection);
        Source source;
        source.fields = scope.outputs();
        source.height = scope.height() + 1;
        source.indexNames();
        return std::make_shared<const Source>(std::move(source));
    }

    Found find(TextView table, TextView field) const {
        const Text key = nameKey(table);
        for (const Member& member : members_) {
            if (table.empty() || member.key == key) {
                if (const QueryField* found = member.source->find(field)) {
                    return {&member, found};
                }
            }
        }
        return {};
    }

    void add(QueryField field, Text member) {
        if (outputs_.size() == maximumFields) {
            throw RunTimeError(ErrorNumber::TooManyFields);
        }
        outputs_.push_back({std::move(field), std::move(member)});
    }

    void addAllFields(TextView table) {
        const Text key = nameKey(table);
        for (const Member& member : members_) {
            if (table.empty() || member.key == key) {
                for (const QueryField& field : member.source->fields) {
                    add(field, member.knownAs);
                }
            }
        }
    }

    void addColumn(const SelectColumn& column) {
        const std::vector<Token> tokens = sqlTokens(column.expression);
        const auto path = isConstant(tokens) ? std::nullopt : fieldPath(tokens);
        if (!path) {
            const Text unnamed = u"Expr" + toText(static_cast<long long>(firstUnnamed + position_));
            add({column.alias.empty() ? unnamed : column.alias, expressionOrigin(column.expression)}, {});
        } else if (path->field == u"*") {
            addAllFields(path->table);
        } else {
            const Found found = find(path->table, path->field);
            const Text name = found.field == nullptr ? path->field : found.field->name;
            const bool aliased = !column.alias.empty();
            add({aliased ? column.alias : name,
                 found.field == nullptr ? untraced(*path, column) : found.field->origin},
                aliased                   ? Text()
                : found.member == nullptr ? path->table
                                          : found.member->knownAs);
        }
    }

    // A name that is no field: a parameter that the query declares, or something that cannot be found.
    std::shared_ptr<const FieldOrigin> untraced(const FieldPath& path, const SelectColumn& column) {
        const Text name = path.table.empty() ? path.field : path.table + u"!" + path.field;
        const auto type = typeOfParameter(name);
        return type ? valueOf(*type == 0 ? fieldType::Text : *type, column.expression) : untraceable();
    }

    std::shared_ptr<const FieldOrigin> expressionOrigin(const Text& expression) {
        return valueOf(typeOfExpression(expression, *this), expression);
    }

    std::shared_ptr<const FieldOrigin> originOf(const Text& expression) {
        const auto path = fieldPath(sqlTokens(expression));
        const Found found = path ? find(path->table, path->field) : Found();
        return found.field == nullptr ? expressionOrigin(expression) : found.field->origin;
    }

    std::vector<QueryField> named() {
        std::unordered_map<Text, int> count;
        for (const Output& output : outputs_) {
            ++count[nameKey(output.field.name)];
        }
        std::vector<QueryField> fields;
        for (Output& output : outputs_) {
            if (!output.member.empty() && count[nameKey(output.field.name)] > 1) {
                output.field.name = output.member + u"." + output.field.name;
            }
            fields.push_back(std::move(output.field));
        }
        return fields;
    }

    QueryFieldResolver& resolver_;
    const Selection& selection_;
    std::vector<Member> members_;
    std::vector<Output> outputs_;
    std::size_t position_ = 0; // of the column in the select list
    int height_ = 0;
};

QueryFieldResolver::QueryFieldResolver(QuerySources& sources) : sources_(sources) {}
QueryFieldResolver::~QueryFieldResolver() = default;

const std::vector<QueryField>& QueryFieldResolver::fields(TextView queryName) {
    return source(Text(queryName))->fields; // kept alive by known_
}

QueryFieldResolver::SourcePointer QueryFieldResolver::source(const Text& name) {
    const Text key = nameKey(name);
    SourcePointer source;
    if (const auto known = known_.find(key); known != known_.end()) {
        source = known->second;
    } else if (const auto query = sources_.query(name)) {
        if (!inProgress_.insert(key).second) {
            throw RunTimeError(ErrorNumber::CircularReference, name);
        }
        try {
            source = querySource(*query);
        } catch (...) {
            inProgress_.erase(key);
            throw;
        }
        inProgress_.erase(key);
    } else {
        source = tableSource(name);
    }
    if (depth_ + source->height > maximumDepth) {
        throwDamagedQuery(u"queries nested too deep");
    }
    known_.emplace(key, source);
    return source;
}

QueryFieldResolver::SourcePointer QueryFieldResolver::tableSource(const Text& name) {
    auto fields = sources_.fieldsOfTable(name);
    if (!fields) {
        throw RunTimeError(ErrorNumber::TableNotFound, name);
    }
    Source source;
    source.fields = std::move(*fields);
    source.indexNames();
    return std::make_shared<const Source>(std::move(source));
}

QueryFieldResolver::SourcePointer QueryFieldResolver::querySource(const SavedQuery& query) {
    const Nesting nesting(depth_);
    const QueryParts parts(query.rows);
    const QueryKind kind = parts.kind(query.catalogueFlags);
    Source source;
    source.height = 1;
    if (kind == QueryKind::Select || kind == QueryKind::Crosstab) {
        const Selection selection = selectionOfRows(parts);
        Scope scope(*this, selection);
        source.fields = kind == QueryKind::Select ? scope.outputs() : scope.crosstabOutputs(parts);
        source.height += scope.height();
    } else if (kind == QueryKind::Union) {
        const Selection selection = selectionOfUnion(parts);
        Scope scope(*this, selection);
        source.fields = scope.outputs();
        source.height += scope.height();
    }
    source.indexNames();
    return std::make_shared<const Source>(std::move(source));
}

} // namespace relvane::jet
