// The texts with fields in them and the conditions of a definition. Names of fields are collected as they are
// mentioned; those of words and counters must be known by then.
#pragma once

#include "reports/definition_reader.h"
#include "reports/report_definition.h"

namespace relvane::reports {

// The position of the entry of that name, or -1.
template <class Entries, class NameOf>
int indexOf(const Entries& entries, TextView name, NameOf nameOf) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (equalsIgnoringCase(nameOf(entries[i]), name)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

Format formatNamed(TextView name, const QString& where);

class DefinitionTexts {
public:
    explicit DefinitionTexts(ReportDefinition& report) : report_(report) {}

    int field(FieldNames& fields, TextView name);
    int counter(TextView name, const QString& where) const;
    Template textTemplate(Node& node, const QString& key, FieldNames& fields);
    std::optional<Condition> oneCondition(Node& node, const QString& key);
    Conditions conditions(Node& node, const QString& key);

private:
    Piece piece(TextView inside, const QString& where, FieldNames& fields);
    Condition condition(const QJsonValue& value, const QString& where);

    ReportDefinition& report_;
};

} // namespace relvane::reports
