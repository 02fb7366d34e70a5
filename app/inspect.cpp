#include "inspect.h"

#include <algorithm>

#include "inspect_designs.h"
#include "inspect_macros.h"
#include "inspect_modules.h"
#include "jet/jet_file.h"
#include "jet/open_database.h"
#include "json_writer.h"
#include "platform/native_path.h"

namespace relvane {
namespace {

class Inspection {
public:
    Inspection(std::ostream& out, dao::Database& database) : json_(out), database_(database) {}

    void write() {
        json_.beginObject();
        writeFile();
        member("properties", [&] { writeProperties(database_.Properties()); });
        list("tables", database_.TableDefs(), [&](dao::TableDef& table) { writeTable(table); });
        list("queries", database_.QueryDefs(), [&](dao::QueryDef& query) { writeQuery(query); });
        writeRelations();
        list("containers", database_.Containers(), [&](dao::Container& container) {
            member("name", container.Name());
            list(
                "documents", [&]() -> auto& { return container.Documents(); },
                [&](dao::Document& document) { writeDocument(document); });
        });
        writeDesigns();
        writeModules();
        writeMacros();
        json_.key("problems");
        json_.beginArray();
        for (const Text& problem : problems_) {
            json_.text(problem);
        }
        json_.endArray();
        json_.endObject();
    }

private:
    // A member whose reading may fail; `write` writes exactly one value, or throws before it writes anything.
    template <class Write>
    void member(const char* name, Write write) requires std::invocable<Write> {
        json_.key(name);
        try {
            write();
        } catch (const RunTimeError& error) {
            writeError(error);
        }
    }
    void member(const char* name, const Value& value) {
        json_.key(name);
        json_.value(value);
    }
    template <class Integer>
    void number(const char* name, Integer value) {
        member(name, Value(static_cast<std::int64_t>(value)));
    }

    // An array of objects, one for each element of `collection`, which may be a function that gives it or fails.
    template <class Collection, class Write>
    void list(const char* name, Collection&& collection, Write write) {
        member(name, [&] {
            const auto& items = [&]() -> const auto& {
                if constexpr (std::invocable<Collection>) {
                    return collection();
                } else {
                    return collection;
                }
            }
            ();
            json_.beginArray();
            for (const auto& item : items) {
                json_.beginObject();
                write(*item);
                json_.endObject();
            }
            json_.endArray();
        });
    }

    void writeError(const RunTimeError& error) {
        json_.beginObject();
        number("error", error.number());
        member("description", error.description());
        json_.endObject();
        if (std::ranges::find(problems_, error.description()) == problems_.end()) {
            problems_.push_back(error.description());
        }
    }

    void writeFile() {
        const auto file = jet::fileOf(database_);
        const jet::FileHeader& header = file->header();
        member("name", database_.Name());
        number("jetVersion", header.version);
        member("daoVersion", database_.Version());
        number("codePage", header.statedCodePage);
        number("sortOrder", header.sortOrder);
        member("encoded", header.pageKey != 0);
        member("hasPassword", header.hasPassword());
        number("queryTimeout", database_.QueryTimeout());
        member("updatable", database_.Updatable());
        member("catalogOrder", Text(file->catalogue().isOrderedByIndex() ? u"index" : u"name"));
        for (const Text& problem : file->catalogue().problems()) {
            problems_.push_back(problem);
        }
    }

    void writeProperties(dao::Properties& properties) {
        json_.beginArray();
        for (int i = 0; i < properties.Count(); ++i) {
            const dao::Property& property = properties.Item(i);
            json_.beginObject();
            member("name", Text(TextView(property.Name)));
            number("type", property.Type);
            member("builtIn", property.builtIn);
            member("ddl", property.needsDesignPermission);
            member("value", property.value);
            json_.endObject();
        }
        json_.endArray();
    }

    void writeTable(dao::TableDef& table) {
        member("name", table.Name());
        number("attributes", table.Attributes());
        member("dateCreated", table.DateCreated());
        member("lastUpdated", table.LastUpdated());
        member("connect", [&] { json_.text(table.Connect()); });
        member("sourceTableName", [&] { json_.text(table.SourceTableName()); });
        member("recordCount", [&] { json_.number(std::int64_t{table.RecordCount()}); });
        member("updatable", table.Updatable());
        member("properties", [&] { writeProperties(table.Properties()); });
        list(
            "fields", [&]() -> auto& { return table.Fields(); },
            [&](dao::Field& field) {
                writeField(field);
                number("attributes", field.Attributes());
                number("ordinal", field.OrdinalPosition());
                if (const Text expression = field.Expression(); !expression.empty()) {
                    member("expression", expression);
                }
                member("required", field.Required());
                member("validationRule", field.ValidationRule());
                member("validationText", field.ValidationText());
                member("properties", [&] { writeProperties(field.Properties()); });
            });
        list(
            "indexes", [&]() -> auto& { return table.Indexes(); },
            [&](dao::Index& index) {
                member("name", index.Name());
                member("primary", index.Primary());
                member("foreign", index.Foreign());
                member("unique", index.Unique());
                member("ignoreNulls", index.IgnoreNulls());
                member("required", index.Required());
                member("clustered", index.Clustered());
                list("fields", index.Fields(), [&](dao::IndexField& field) {
                    member("name", field.FieldName);
                    number("attributes", field.Attributes);
                });
            });
    }

    // What fields of tables and of queries share.
    void writeField(dao::Field& field) {
        member("name", field.Name());
        number("type", field.Type());
        number("size", field.Size());
        member("allowZeroLength", field.AllowZeroLength());
        member("defaultValue", field.DefaultValue());
        member("sourceField", field.SourceField());
        member("sourceTable", field.SourceTable());
    }

    void writeQuery(dao::QueryDef& query) {
        member("name", query.Name());
        number("type", query.Type());
        member("dateCreated", query.DateCreated());
        member("lastUpdated", query.LastUpdated());
        member("odbcTimeout", [&] { json_.number(std::int64_t{query.ODBCTimeout()}); });
        member("maxRecords", [&] { json_.number(std::int64_t{query.MaxRecords()}); });
        member("returnsRecords", [&] { json_.boolean(query.ReturnsRecords()); });
        member("updatable", query.Updatable());
        number("recordsAffected", query.RecordsAffected());
        member("connect", [&] { json_.text(query.Connect()); });
        member("sql", [&] { json_.text(query.SQL()); });
        member("properties", [&] { writeProperties(query.Properties()); });
        list(
            "fields", [&]() -> auto& { return query.Fields(); },
            [&](dao::Field& field) { writeField(field); });
    }

    void writeRelations() {
        list(
            "relations", [&]() -> auto& { return database_.Relations(); },
            [&](dao::Relation& relation) {
                member("name", relation.RelationName);
                member("table", relation.Table);
                member("foreignTable", relation.ForeignTable);
                number("attributes", relation.Attributes);
                json_.key("fields");
                json_.beginArray();
                for (const dao::RelationField& field : relation.Fields) {
                    json_.beginObject();
                    member("name", field.FieldName);
                    member("foreignName", field.ForeignName);
                    json_.endObject();
                }
                json_.endArray();
            });
    }

    void writeDocument(dao::Document& document) {
        member("name", document.Name());
        member("dateCreated", document.DateCreated());
        member("lastUpdated", document.LastUpdated());
        member("properties", [&] { writeProperties(document.Properties()); });
    }

    void writeDesigns() {
        const access::DesignSource source(jet::fileOf(database_));
        const auto write = [&](const char* name, const std::vector<access::DesignDocument>& documents) {
            json_.key(name);
            json_.beginArray();
            for (const access::DesignDocument& document : documents) {
                json_.beginObject();
                member("name", document.name);
                member("hasModule", document.hasModule);
                member("design", [&] { writeDesign(json_, source, document); });
                member("typeInfo", [&] { writeTypeInfo(json_, source, document); });
                json_.endObject();
            }
            json_.endArray();
        };
        write("forms", source.forms());
        write("reports", source.reports());
    }

    void writeModules() {
        const access::ModuleSource source(jet::fileOf(database_));
        json_.key("modules");
        json_.beginArray();
        for (const access::ModuleDocument& document : source.modules()) {
            json_.beginObject();
            member("owner", Text(ownerWord(document.owner)));
            member("name", document.name);
            member("source", [&] { writeModule(json_, source, document); });
            json_.endObject();
        }
        json_.endArray();
    }

    void writeMacros() {
        const access::MacroSource source(jet::fileOf(database_));
        json_.key("macros");
        json_.beginArray();
        for (const access::MacroDocument& macro : source.macros()) {
            json_.beginObject();
            member("name", macro.name);
            member("hidden", macro.isHidden());
            member("sheet", [&] { writeMacro(json_, source, macro); });
            member("converted", [&] { writeConvertedMacro(json_, source, macro); });
            json_.endObject();
        }
        json_.endArray();
    }

    JsonWriter json_;
    dao::Database& database_;
    std::vector<Text> problems_;
};

} // namespace

void writeInspection(std::ostream& out, const std::string& path, jet::OpenOptions options) {
    const auto database = jet::openDatabase(textOfNativePath(path), std::move(options));
    Inspection(out, *database).write();
}

} // namespace relvane
