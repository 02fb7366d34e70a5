// The index trees of the builder: every index names every row once, and in the order of its columns.

#include <algorithm>

#include <gtest/gtest.h>

#include "jet/index_walk.h"
#include "jet/jet_file.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "sample_builder/index_key.h"
#include "sample_builder/many_tables.h"
#include "support/file_formats.h"
#include "support/samples.h"

namespace relvane::samples {
namespace {

// Whether `left` may stand before `right`; Null is least, and texts go by the rule of the keys.
bool inOrder(const Value& left, const Value& right, int codePage) {
    if (const auto* one = std::get_if<Text>(&left), *other = std::get_if<Text>(&right); one && other) {
        return textKey(*one, codePage) <= textKey(*other, codePage);
    }
    // True is keyed before False.
    if (const auto* one = std::get_if<bool>(&left), *other = std::get_if<bool>(&right); one && other) {
        return *one >= *other;
    }
    // Bytes of a GUID are compared as its text is read.
    if (std::holds_alternative<Guid>(left) && std::holds_alternative<Guid>(right)) {
        return toText(left) <= toText(right);
    }
    return left <= right;
}

std::vector<Value> keyOf(const jet::Table& table, const jet::RealIndex& index, jet::RowPointer place) {
    std::vector<Value> key;
    const jet::Row row = table.row(place);
    for (const auto& entry : index.entries) {
        key.push_back(table.value(row, *table.definition().byNumber(entry.column)));
    }
    return key;
}

void expectRising(const std::vector<Value>& before, const std::vector<Value>& after,
                  const jet::RealIndex& index, int codePage) {
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i] == after[i]) {
            continue;
        }
        const bool ascending = index.entries[i].ascending;
        EXPECT_TRUE(ascending ? inOrder(before[i], after[i], codePage)
                              : inOrder(after[i], before[i], codePage));
        return;
    }
}

void expectWholeTree(const jet::Table& table, const jet::RealIndex& index, int codePage) {
    std::vector<jet::RowPointer> stored;
    jet::RowCursor cursor(table);
    while (const auto place = cursor.next()) {
        const auto key = keyOf(table, index, *place);
        const bool allNull =
            std::ranges::all_of(key, [](const Value& value) { return std::holds_alternative<Null>(value); });
        if (!allNull || (index.flags & jet::realIndexFlag::ignoreNulls) == 0) {
            stored.push_back(*place);
        }
    }
    const auto walked = jet::walkIndex(table.file(), index.root);
    for (std::size_t i = 1; i < walked.size(); ++i) {
        expectRising(keyOf(table, index, walked[i - 1]), keyOf(table, index, walked[i]), index, codePage);
    }
    auto sorted = walked;
    std::ranges::sort(sorted);
    std::ranges::sort(stored);
    EXPECT_EQ(sorted.size(), stored.size());
    EXPECT_TRUE(sorted == stored);
}

void expectWholeTrees(const std::filesystem::path& path, const DatabaseSpec& spec) {
    const auto file = jet::openJetFile(path.string(), {});
    for (const TableSpec& described : spec.tables) {
        const jet::Table* table = file->findTable(described.name);
        ASSERT_NE(table, nullptr);
        for (const jet::RealIndex& index : table->definition().realIndexes) {
            SCOPED_TRACE(toUtf8(described.name) + ", root " + std::to_string(index.root));
            expectWholeTree(*table, index, spec.codePage);
        }
    }
    for (const char16_t* name : {u"MSysObjects", u"MSysACEs", u"MSysQueries", u"MSysRelationships"}) {
        const jet::Table* table = file->findTable(name);
        ASSERT_NE(table, nullptr);
        for (const jet::RealIndex& index : table->definition().realIndexes) {
            SCOPED_TRACE(toUtf8(name));
            expectWholeTree(*table, index, spec.codePage);
        }
    }
}

class IndexOrder : public testing::TestWithParam<FileFormat> {
protected:
    void expectWholeTreesOf(const DatabaseSpec& spec) {
        const auto path = folder_ / "trees.mdb";
        writeDatabase(savedAs(spec, GetParam()), path);
        expectWholeTrees(path, spec);
    }

private:
    test::TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(Formats, IndexOrder, test::everyFormat, test::formatName);

TEST_P(IndexOrder, EveryIndexOfTheSampleNamesItsRowsInOrder) {
    DatabaseSpec spec = readDescription(test::sourceFolder() / "samples" / "juchu.txt");
    spec.format = GetParam();
    expectWholeTreesOf(spec);
}

TEST_P(IndexOrder, TreesOfManyLevelsNameTheirRowsInOrder) {
    DatabaseSpec spec = manyTables(10, 100);
    spec.indexPageEntries = 4;
    expectWholeTreesOf(spec);
}

TEST_P(IndexOrder, TreeOfThousandsOfRowsNamesThemInOrder) {
    expectWholeTreesOf(manyTables(1, 5'000));
}

} // namespace
} // namespace relvane::samples
