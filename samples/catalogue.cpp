#include "sample_builder/catalogue.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "sample_builder/access_store_writer.h"
#include "sample_builder/design_writer.h"
#include "sample_builder/macro_writer.h"
#include "sample_builder/property_blob.h"
#include "sample_builder/vba_project_writer.h"

namespace relvane::samples {

namespace {

using namespace jet::catalogue;

// What the catalogue adds to an object's flags for a link. The real values of Jet 3 are not known to us; these are
// the ones that later versions write, taken over by inference.
constexpr std::uint32_t linkToAccess = 0x200000, linkToIsam = 0xA00000, linkToOdbc = 0x100000,
                        linkPasswordSaved = 0x20000, linkExclusive = 0x10000;

// Types of rows of MSysModules2.
constexpr std::int32_t projectRow = 2, moduleOfForm = 32768, moduleOfReport = 32772, moduleRow = 32775;

// What Access makes of a document.
struct DocumentContent {
    std::optional<Bytes> main{}; // the design of a form or report, the sheet of a macro
    std::optional<Bytes> names{};
    const ProjectModule* module = nullptr;
};

class Builder {
public:
    explicit Builder(const DatabaseSpec& spec) : spec_(spec) {}

    Catalogue build(const std::vector<std::pair<PageNumber, const TableSpec*>>& tables) {
        systemRows();
        for (const auto& [page, table] : tables) {
            addTable(page, *table);
        }
        accessContainers();
        for (const LinkSpec& link : spec_.links) {
            addLink(link);
        }
        for (const QuerySpec& query : spec_.queries) {
            addQuery(query);
        }
        for (const RelationSpec& relation : spec_.relations) {
            add({.parentId = relationshipsId, .name = relation.name, .type = type(ObjectType::Relation)});
        }
        for (const ObjectSpec& object : spec_.otherObjects) {
            add({.parentId = object.parentId,
                 .name = object.name,
                 .type = object.type,
                 .flags = object.flags,
                 .properties = propertyBlob(object.properties, {}, textCoding(spec_))});
        }
        catalogue_.accessTables = accessTables(spec_, ofAccess_);
        return std::move(catalogue_);
    }

private:
    static constexpr int type(ObjectType objectType) { return static_cast<int>(objectType); }

    // Adds a row with the database's date where it has none, and with the next id where it has none.
    std::int32_t add(CatalogueRow row, std::optional<DateTime> created = {},
                     std::optional<DateTime> updated = {}) {
        row.created = created.value_or(spec_.created);
        row.updated = updated.value_or(row.created);
        if (row.id == 0) {
            row.id = nextId_++;
        }
        catalogue_.rows.push_back(std::move(row));
        return catalogue_.rows.back().id;
    }

    void systemRows() {
        constexpr std::int32_t databaseId = 0x10000000;
        const auto container = [&](std::int32_t id, const char16_t* name) {
            add({.id = id,
                 .parentId = rootId,
                 .name = name,
                 .type = type(ObjectType::Container),
                 .flags = systemFlag,
                 .ownedByEngine = true});
        };
        container(tablesId, u"Tables");
        container(databasesId, u"Databases");
        container(relationshipsId, u"Relationships");
        std::vector<PropertySpec> properties;
        if (spec_.accessVersion) {
            properties.push_back({u"AccessVersion", *spec_.accessVersion});
            properties.push_back({u"Build", 0, 0, false});
        }
        properties.insert(properties.end(), spec_.properties.begin(), spec_.properties.end());
        add({.id = databaseId,
             .parentId = databasesId,
             .name = u"MSysDb",
             .type = type(ObjectType::Database),
             .flags = systemFlag,
             .properties = propertyBlob(properties, {}, textCoding(spec_))});
    }

    bool isAccess2000() const { return spec_.format == FileFormat::Access2000; }

    void addTable(PageNumber page, const TableSpec& table) {
        std::vector<NamedProperties> ofColumns;
        for (const ColumnSpec& column : table.columns) {
            if (!column.deleted) {
                ofColumns.emplace_back(column.name, &column.properties);
            }
        }
        add({.id = static_cast<std::int32_t>(page),
             .parentId = tablesId,
             .name = table.name,
             .type = type(ObjectType::Table),
             .flags = table.flags,
             .ownedByEngine = (table.flags & systemFlag) != 0,
             .properties = propertyBlob(table.properties, ofColumns, textCoding(spec_))},
            table.created, table.updated);
    }

    // What Access adds when it opens or makes a file: its containers, its documents, and the documents' rows.
    void accessContainers() {
        const bool hasDocuments =
            !spec_.forms.empty() || !spec_.reports.empty() || !spec_.macros.empty() || !spec_.modules.empty();
        if (!spec_.accessVersion && !hasDocuments) {
            return;
        }
        databaseDocument(u"SummaryInfo", spec_.summary);
        databaseDocument(u"UserDefined", spec_.userDefined);
        databaseDocument(u"AccessLayout", {{u"KeepLocal", u"T", 0, false}});
        container(u"Forms", ObjectType::Form, spec_.forms);
        container(u"Reports", ObjectType::Report, spec_.reports);
        container(u"Scripts", ObjectType::Macro, spec_.macros);
        container(u"Modules", ObjectType::Module, spec_.modules);
        addProject();
        const std::int32_t layouts = container(u"SysRel", ObjectType::UserLayout, {});
        if (!spec_.relations.empty()) {
            add({.parentId = layouts, .name = u"Admin", .type = type(ObjectType::UserLayout)});
        }
        if (isAccess2000()) {
            add({.parentId = rootId, .name = u"DataAccessPages", .type = type(ObjectType::Container)});
        }
    }

    void databaseDocument(const char16_t* name, const std::vector<PropertySpec>& properties) {
        add({.parentId = databasesId,
             .name = name,
             .type = type(ObjectType::DatabaseDocument),
             .properties = propertyBlob(properties, {}, textCoding(spec_))});
    }

    std::int32_t container(const char16_t* name, ObjectType documentType,
                           const std::vector<DocumentSpec>& documents) {
        const std::int32_t id = add({.parentId = rootId, .name = name, .type = type(ObjectType::Container)});
        std::vector<StoredObject> stored;
        for (const DocumentSpec& document : documents) {
            CatalogueRow row{.parentId = id,
                             .name = document.name,
                             .type = type(documentType),
                             .flags = document.hidden ? hiddenFlag : 0,
                             .properties = propertyBlob(document.properties, {}, textCoding(spec_))};
            DocumentContent content = contentOf(documentType, document);
            if (isAccess2000()) {
                stored.push_back(storedObject(documentType, document, std::move(content)));
            } else {
                addContent(row, documentType, std::move(content));
            }
            add(std::move(row), document.created, document.updated);
        }
        if (isAccess2000() && hasStorages(documentType)) {
            addToStore(containerStreams(name, stored));
        }
        return id;
    }

    DocumentContent contentOf(ObjectType documentType, const DocumentSpec& document) {
        DocumentContent content;
        if (documentType == ObjectType::Macro) {
            content.main = macroSheet(document.macro.value_or(MacroSpec()), textCoding(spec_));
        } else if (document.design) {
            DesignSpec whole = *document.design;
            addUnusedFields(whole);
            content.main = designStream(whole, textCoding(spec_));
            content.names = typeInfoStream(whole, spec_.codePage);
        }
        if (document.module || (documentType == ObjectType::Module && keepsModules())) {
            content.module = &addModule(documentType, document);
        }
        if (isAccess2000() && content.main && !spec_.accessVersion) {
            throw std::invalid_argument(toUtf8(document.name) + ": it needs a table of Access");
        }
        return content;
    }

    // In Access 97 what a document is made of stands in its own row, or in the table of modules when it has a module.
    void addContent(CatalogueRow& row, ObjectType documentType, DocumentContent content) {
        if (content.module != nullptr) {
            ModuleRow module{.name = content.module->name,
                             .type = documentType == ObjectType::Form     ? moduleOfForm
                                     : documentType == ObjectType::Report ? moduleOfReport
                                                                          : moduleRow,
                             .design = std::move(content.main),
                             .names = std::move(content.names)};
            if (content.module->spec.damage != ModuleDamage::NotStored) {
                module.module = moduleContainer(*content.module, spec_.codePage);
            }
            ofAccess_.modules.push_back(std::move(module));
            return;
        }
        row.extra = std::move(content.main);
        row.names = std::move(content.names);
        if (row.names) {
            row.moduleMark = Bytes{'L', 'W', 'F', '0', '0', '0'};
        }
    }

    // In Access 2000 it stands in the store, and the row has nothing of it.
    static StoredObject storedObject(ObjectType documentType, const DocumentSpec& document,
                                     DocumentContent content) {
        StoredObject object{.name = document.name, .hidden = document.hidden};
        if (documentType == ObjectType::Module) {
            object.isClass = content.module != nullptr && content.module->spec.isClass;
        } else if (documentType != ObjectType::Macro) {
            object.hasModule = content.module != nullptr;
        }
        if (content.main) {
            object.streams.emplace_back(u"Blob", std::move(*content.main));
        }
        if (content.names) {
            object.streams.emplace_back(u"TypeInfo", std::move(*content.names));
        }
        return object;
    }

    static bool hasStorages(ObjectType documentType) {
        return documentType == ObjectType::Form || documentType == ObjectType::Report ||
               documentType == ObjectType::Macro || documentType == ObjectType::Module;
    }

    void addToStore(Streams streams) { std::ranges::move(streams, std::back_inserter(ofAccess_.store)); }

    bool keepsModules() const { return spec_.accessVersion && *spec_.accessVersion >= u"07.53"; }

    const ProjectModule& addModule(ObjectType documentType, const DocumentSpec& document) {
        if (!keepsModules()) {
            throw std::invalid_argument(toUtf8(document.name) + ": a module needs a table of Access");
        }
        const TextView prefix = documentType == ObjectType::Form     ? u"Form_"
                                : documentType == ObjectType::Report ? u"Report_"
                                                                     : u"";
        ProjectModule& module = project_.emplace_back();
        module.name = Text(prefix).append(document.name);
        module.spec = document.module.value_or(ModuleSpec());
        module.ofDocument = documentType != ObjectType::Module;
        module.spec.isClass = module.spec.isClass || module.ofDocument;
        return module;
    }

    // In Access 97 the project is there as soon as one object has a module, in Access 2000 always.
    void addProject() {
        const std::vector<ProjectModule> modules(project_.begin(), project_.end());
        if (isAccess2000()) {
            addToStore(projectStreams(modules, spec_.codePage, spec_.sortOrder));
            addToStore(commonStreams(spec_.codePage));
        } else if (!modules.empty()) {
            ofAccess_.modules.push_back(
                {.name = u"MSysDb",
                 .type = projectRow,
                 .module = projectContainer(modules, spec_.codePage, spec_.sortOrder)});
        }
    }

    // The fields of a record source that is a table of this database. Those of queries are not looked for.
    void addUnusedFields(DesignSpec& design) const {
        const Value* source = design.root.find(u"RecordSource");
        for (const TableSpec& table : spec_.tables) {
            if (source == nullptr || toText(*source) != table.name) {
                continue;
            }
            for (const ColumnSpec& column : table.columns) {
                if (!column.deleted && !hasControl(design.root, column.name)) {
                    design.unusedFields.push_back(column.name);
                }
            }
        }
    }

    static bool hasControl(const DesignObjectSpec& object, const Text& name) {
        return object.name() == name || std::ranges::any_of(object.children, [&](const auto& child) {
                   return hasControl(child, name);
               });
    }

    void addLink(const LinkSpec& link) {
        const std::uint32_t kind = link.kind == LinkKind::Odbc   ? linkToOdbc
                                   : link.kind == LinkKind::Isam ? linkToIsam
                                                                 : linkToAccess;
        const auto given = [](const Text& text) { return text.empty() ? std::nullopt : std::optional(text); };
        add({.parentId = tablesId,
             .name = link.name,
             .type = type(link.kind == LinkKind::Odbc ? ObjectType::OdbcLink : ObjectType::Link),
             .flags = kind | (link.hidden ? hiddenFlag : 0) | (link.passwordSaved ? linkPasswordSaved : 0) |
                      (link.exclusive ? linkExclusive : 0),
             .database = given(link.database),
             .connect = given(link.connect),
             .foreignName = given(link.sourceTable),
             .properties = propertyBlob(link.properties, {}, textCoding(spec_))},
            link.created, link.updated);
    }

    void addQuery(const QuerySpec& query) {
        std::vector<NamedProperties> ofColumns;
        for (const auto& [name, properties] : query.columnProperties) {
            ofColumns.emplace_back(name, &properties);
        }
        const std::int32_t id =
            add({.parentId = tablesId,
                 .name = query.name,
                 .type = type(ObjectType::Query),
                 .flags = query.flags,
                 .properties = propertyBlob(query.properties, ofColumns, textCoding(spec_))},
                query.created, query.updated);
        catalogue_.queries.emplace_back(id, &query);
    }

    const DatabaseSpec& spec_;
    Catalogue catalogue_;
    AccessContent ofAccess_;
    std::deque<ProjectModule> project_;                              // whose modules stay where they are
    std::int32_t nextId_ = std::numeric_limits<std::int32_t>::min(); // 0x80000000 and up
};

} // namespace

Catalogue buildCatalogue(const DatabaseSpec& spec,
                         const std::vector<std::pair<PageNumber, const TableSpec*>>& tables) {
    return Builder(spec).build(tables);
}

} // namespace relvane::samples
