// The saved queries of real Access files, asked for as the analyses do, against what independent decoders read from
// the same files.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "jet/jet_file.h"
#include "jet/open_database.h"
#include "jet/query_sql.h"
#include "support/samples.h"

namespace relvane::jet {
namespace {

using nlohmann::json;

constexpr const char* goldens[] = {"nwind-objects.json", "queryTestV1997-objects.json",
                                   "queryTestV2000-objects.json"};

// The goldens lie beside the folder of samples; null when there are none.
json golden(const std::string& name) {
    const auto samples = test::realSamples();
    if (!samples) {
        return nullptr;
    }
    std::ifstream file(samples->parent_path() / "goldens" / name);
    return file ? json::parse(file) : json(nullptr);
}

// Opens the sample that a golden was read from.
std::shared_ptr<dao::Database> sampleOf(const json& expected) {
    const std::string file = expected.at("file");
    for (const char* folder : {"access97", "later"}) {
        const auto path = *test::realSample(std::string(folder) + "/" + file);
        if (std::filesystem::exists(path)) {
            return openDatabase(fromUtf8(path.string()));
        }
    }
    throw std::runtime_error("no sample " + file);
}

// The text of a query that DAO refuses to show.
std::string textInSpiteOfAmbiguity(const dao::Database& database, TextView query) {
    const auto file = fileOf(database);
    const CatalogueEntry* entry = file->catalogue().find(ObjectType::Query, query);
    const SqlDialect dialect = file->header().isJet3() ? SqlDialect::Jet3 : SqlDialect::Jet4;
    return toUtf8(querySql(file->queryRows(*entry), entry->flags, dialect));
}

json described(const dao::Field& field) {
    return {{"name", toUtf8(field.Name())},
            {"type", field.Type()},
            {"size", field.Size()},
            {"allowZeroLength", field.AllowZeroLength()},
            {"defaultValue", toUtf8(field.DefaultValue())},
            {"sourceField", toUtf8(field.SourceField())},
            {"sourceTable", toUtf8(field.SourceTable())}};
}

class GoldenQueries : public testing::TestWithParam<const char*> {};

TEST_P(GoldenQueries, HaveTheSameTextAndTheSameFields) {
    const json expected = golden(GetParam());
    if (expected.is_null()) {
        std::cout << "No goldens beside the samples.\n";
        return;
    }
    const auto database = sampleOf(expected);
    for (const json& query : expected.at("queries")) {
        const std::string name = query.at("name");
        SCOPED_TRACE(name);
        dao::QueryDef& queryDef = database->QueryDefs().Item(fromUtf8(name));
        EXPECT_EQ(queryDef.Type(), query.at("type").get<int>());
        const std::string sql = query.at("sql");
        if (query.contains("ambiguousTables")) {
            EXPECT_EQ(skipErrors([&] { queryDef.SQL(); }), 3258);
            EXPECT_EQ(skipErrors([&] { queryDef.Connect(); }), 3258);
            EXPECT_EQ(textInSpiteOfAmbiguity(*database, queryDef.Name()), sql);
        } else {
            EXPECT_EQ(toUtf8(queryDef.SQL()), sql);
            EXPECT_EQ(toUtf8(queryDef.Connect()), query.at("connect").get<std::string>());
        }
        json fields = json::array();
        for (const auto& field : queryDef.Fields()) {
            fields.push_back(described(*field));
        }
        json expectedFields = json::array();
        for (json field : query.at("fields")) {
            // Columns that depend on the data are no fields of the definition.
            if (field.at("name") != "<pivot columns depend on data>") {
                field.erase("expression"); // DAO does not tell it
                expectedFields.push_back(field);
            }
        }
        EXPECT_EQ(fields, expectedFields);
    }
}

INSTANTIATE_TEST_SUITE_P(RealFiles, GoldenQueries, testing::ValuesIn(goldens));

} // namespace
} // namespace relvane::jet
