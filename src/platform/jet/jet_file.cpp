#include "jet/jet_file.h"

#include <algorithm>

#include "platform/native_path.h"

namespace relvane::jet {
namespace {

QueryRow readQueryRow(const NamedRow& row) {
    QueryRow query;
    query.attribute = row.number(u"Attribute").value_or(0);
    query.order = row.bytes(u"Order");
    query.name1 = row.text(u"Name1");
    query.name2 = row.text(u"Name2");
    query.expression = row.text(u"Expression");
    query.flag = row.number(u"Flag");
    query.size = row.number(u"LvExtra");
    return query;
}

RelationRow readRelationRow(const NamedRow& row) {
    RelationRow relation;
    relation.name = row.text(u"szRelationship").value_or(Text());
    relation.table = row.text(u"szReferencedObject").value_or(Text());
    relation.field = row.text(u"szReferencedColumn").value_or(Text());
    relation.foreignTable = row.text(u"szObject").value_or(Text());
    relation.foreignField = row.text(u"szColumn").value_or(Text());
    relation.position = row.number(u"icolumn").value_or(0);
    relation.attributes = row.number(u"grbit").value_or(0);
    return relation;
}

} // namespace

JetFile::JetFile(std::unique_ptr<ByteSource> source, TextView password)
    : pages_(std::move(source), password) {
    if (header().isBeforeJet3) {
        throw RunTimeError(ErrorNumber::UnrecognizedFormat, u"Access 2.0 以前");
    }
    if (!header().password.empty() && header().password != password) {
        throw RunTimeError(ErrorNumber::WrongPassword);
    }
    catalogue_ = std::make_unique<Catalogue>(pages_);
}

std::shared_ptr<JetFile> openJetFile(const std::string& path, TextView password) {
    try {
        return std::make_shared<JetFile>(openByteFile(path), password);
    } catch (const RunTimeError& error) {
        for (const ErrorNumber number :
             {ErrorNumber::UnrecognizedFormat, ErrorNumber::WrongPassword, ErrorNumber::DecryptionFailed}) {
            if (error.is(number)) {
                throw RunTimeError(number, textOfNativePath(path));
            }
        }
        throw;
    }
}

const Table& JetFile::tableAt(std::uint32_t page) const {
    auto& table = tables_[page];
    if (!table) {
        table = std::make_unique<Table>(pages_, page);
    }
    return *table;
}

const Table& JetFile::table(const CatalogueEntry& entry) const {
    return entry.definitionPage() == objectsPage ? catalogue_->table() : tableAt(entry.definitionPage());
}

const Table* JetFile::findTable(TextView name) const {
    const CatalogueEntry* entry = catalogue_->find(ObjectType::Table, name);
    return entry == nullptr ? nullptr : &table(*entry);
}

JetFile::Queries JetFile::readQueries() const {
    Queries queries;
    const Table& table = tableAt(queriesPage);
    RowCursor cursor(table);
    std::uint64_t units = 0;
    while (const auto pointer = cursor.next()) {
        const NamedRow row(table, *pointer);
        if (const auto object = row.number(u"ObjectId")) {
            QueryRow query = readQueryRow(row);
            // Each expression has its own place in the file, unless a hostile one names the same place often.
            units += query.expression ? query.expression->size() : 0;
            if (units > pages_.size()) {
                failDamaged(pointer->page, u"クエリーの式が長すぎます");
            }
            queries[*object].push_back(std::move(query));
        }
    }
    for (auto& [object, rows] : queries) {
        std::ranges::stable_sort(rows, [](const QueryRow& left, const QueryRow& right) {
            return left.attribute != right.attribute ? left.attribute < right.attribute
                                                     : left.order < right.order;
        });
    }
    return queries;
}

const std::vector<QueryRow>& JetFile::queryRows(const CatalogueEntry& query) const {
    static const std::vector<QueryRow> none;
    if (queriesFault_) {
        throw RunTimeError(*queriesFault_);
    }
    if (!queries_) {
        try {
            queries_ = readQueries();
        } catch (const RunTimeError& error) {
            queriesFault_ = error;
            throw;
        }
    }
    const auto found = queries_->find(query.id);
    return found == queries_->end() ? none : found->second;
}

const std::vector<RelationRow>& JetFile::relations() const {
    if (!relations_) {
        std::vector<RelationRow> relations;
        const Table& table = tableAt(relationshipsPage);
        RowCursor cursor(table);
        while (const auto pointer = cursor.next()) {
            relations.push_back(readRelationRow(NamedRow(table, *pointer)));
        }
        relations_ = std::move(relations);
    }
    return *relations_;
}

Text JetFile::complexType(std::uint32_t complexId) const {
    if (!complexTypes_) {
        complexTypes_.emplace();
        skipErrors([this] { // without the kinds the columns are still columns
            const Table* table = findTable(u"MSysComplexColumns");
            if (table == nullptr) {
                return;
            }
            RowCursor cursor(*table);
            while (const auto pointer = cursor.next()) {
                const NamedRow row(*table, *pointer);
                const auto id = row.number(u"ComplexID"), type = row.number(u"ComplexTypeObjectID");
                const auto entry = std::ranges::find_if(catalogue_->entries(), [&](const auto& candidate) {
                    return type && candidate.id == *type;
                });
                if (id && entry != catalogue_->entries().end()) {
                    complexTypes_->emplace(static_cast<std::uint32_t>(*id), entry->name);
                }
            }
        });
    }
    const auto found = complexTypes_->find(complexId);
    return found == complexTypes_->end() ? Text() : found->second;
}

} // namespace relvane::jet
