#include "fuzz/walk_database.h"

namespace relvane::test {
namespace {

class Walk {
public:
    Walk(dao::Database& database, int rowLimit) : database_(database), rowLimit_(rowLimit) {}

    int run() {
        attempt([&] { properties(database_.Properties()); });
        for (const auto& table : database_.TableDefs()) {
            walkTable(*table);
        }
        for (const auto& query : database_.QueryDefs()) {
            walkQuery(*query);
        }
        attempt([&] { database_.Relations(); });
        for (const auto& container : database_.Containers()) {
            attempt([&] {
                for (const auto& document : container->Documents()) {
                    attempt([&] { properties(document->Properties()); });
                }
            });
        }
        return errors_;
    }

private:
    template <class Statement>
    void attempt(Statement statement) {
        errors_ += skipErrors(statement) != 0 ? 1 : 0;
    }

    void properties(dao::Properties& properties) {
        for (int i = 0; i < properties.Count(); ++i) {
            attempt([&] { toText(properties.Item(i).value); });
        }
    }

    void walkFields(const Collection<dao::Field>& fields) {
        for (const auto& field : fields) {
            field->Size();
            field->Attributes();
            properties(field->Properties());
        }
    }

    void walkTable(dao::TableDef& table) {
        attempt([&] { table.Attributes(); });
        attempt([&] { table.RecordCount(); });
        attempt([&] { table.Connect(); });
        attempt([&] { properties(table.Properties()); });
        attempt([&] { walkFields(table.Fields()); });
        attempt([&] {
            for (const auto& index : table.Indexes()) {
                index->Fields().Count();
            }
        });
        attempt([&] {
            const auto rows = database_.OpenRecordset(table.Name());
            for (int row = 0; row < rowLimit_ && !rows->EOF_(); ++row, rows->MoveNext()) {
                for (int field = 0; field < rows->FieldCount(); ++field) {
                    attempt([&] { rows->Field(field); });
                }
            }
        });
    }

    void walkQuery(dao::QueryDef& query) {
        attempt([&] { query.SQL(); });
        attempt([&] { query.Connect(); });
        attempt([&] { query.ODBCTimeout(); });
        attempt([&] { properties(query.Properties()); });
        attempt([&] { walkFields(query.Fields()); });
    }

    dao::Database& database_;
    int rowLimit_;
    int errors_ = 0;
};

} // namespace

int walkDatabase(dao::Database& database, int rowLimit) {
    return Walk(database, rowLimit).run();
}

} // namespace relvane::test
