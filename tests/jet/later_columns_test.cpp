// Columns of types that no Access 97 file can hold: what DAO's Field says of them.

#include <fstream>

#include <gtest/gtest.h>

#include "file_builder.h"
#include "jet/dao_field.h"
#include "platform/native_path.h"
#include "support/samples.h"

namespace relvane::jet {
namespace {

Bytes bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

// The pictures of the themes of Access 2010 lie in an attachment.
int typeOfThemes(const Bytes& bytes) {
    const auto database = openDatabase(makeMemorySource(bytes), u"x.accdb");
    return database->TableDefs().Item(u"MSysResources").Fields().Item(u"Data").Type();
}

TEST(LaterColumns, AttachmentsOfRealFilesAreTold) {
    for (const char* name :
         {"later/formPropTest.accdb", "later/linkerTestV2007.accdb", "later/vbaV2007.accdb"}) {
        if (const auto path = test::realSample(name)) {
            EXPECT_EQ(typeOfThemes(bytesOf(*path)), dao::fieldType::attachment) << name;
        }
    }
}

// No file at hand has a multi-value column: the attachment of a real one is made into each of them, by the number of
// the table that stands for its kind. The four numbers of its row stand together.
TEST(LaterColumns, AMultiValueColumnHasTheTypeOfItsValues) {
    const auto path = test::realSample("later/formPropTest.accdb");
    if (!path) {
        return;
    }
    Bytes bytes = bytesOf(*path);
    constexpr std::uint8_t attachment = 39, flatTable = 41, conceptualTable = 71;
    std::vector<std::size_t> places;
    for (std::size_t at = 16; at + 20 < bytes.size(); ++at) {
        const auto stands = [&](std::uint8_t number, std::size_t from) {
            return bytes[from] == number && bytes[from + 1] == 0 && bytes[from + 2] == 0 &&
                   bytes[from + 3] == 0;
        };
        bool flat = false, conceptual = false;
        for (std::size_t near = at - 12; near <= at + 12; near += 4) {
            flat = flat || stands(flatTable, near);
            conceptual = conceptual || stands(conceptualTable, near);
        }
        if (stands(attachment, at) && flat && conceptual) {
            places.push_back(at);
        }
    }
    ASSERT_EQ(places.size(), 1u);
    int expected = dao::fieldType::firstMultiValue;
    for (const int kind : {23, 25, 27, 29, 31, 33, 35, 37}) {
        bytes[places[0]] = static_cast<std::uint8_t>(kind);
        EXPECT_EQ(typeOfThemes(bytes), expected++);
    }
    EXPECT_EQ(expected - 1, dao::fieldType::lastMultiValue);
    bytes[places[0]] = 99; // no such object
    EXPECT_EQ(typeOfThemes(bytes), 18);
}

class ColumnsOfNoFile : public testing::Test {
protected:
    std::shared_ptr<dao::Field> field(const Column& column, std::vector<StoredProperty> stored = {}) {
        return makeTableField(column, file_, u"T",
                              std::make_shared<const std::vector<StoredProperty>>(std::move(stored)));
    }
    JetFile file_{makeMemorySource(samples::databaseBytes({}))};
};

TEST_F(ColumnsOfNoFile, LargeNumbersAndExtendedDatesHaveTheirTypesAndSizes) {
    Column column;
    column.type = ColumnType::BigInt;
    EXPECT_EQ(field(column)->Type(), 16);
    EXPECT_EQ(field(column)->Size(), 8);
    column.type = ColumnType::ExtendedDate;
    EXPECT_EQ(field(column)->Type(), 26);
    EXPECT_EQ(field(column)->Size(), 42);
}

TEST_F(ColumnsOfNoFile, ACalculatedColumnTellsItsExpressionBesideTheTypeOfItsResult) {
    const std::vector<StoredProperty> stored = {
        {.name = u"Expression", .type = 12, .value = Text(u"[単価]*[数量]")}};
    Column column;
    column.type = ColumnType::Currency;
    column.secondFlags = 0xC0;
    EXPECT_EQ(field(column, stored)->Expression(), u"[単価]*[数量]");
    EXPECT_EQ(field(column, stored)->Type(), 5);
    EXPECT_EQ(field(column)->Expression(), u"");
    for (const int flags : {0x00, 0x01, 0x40, 0x80}) { // a property that only has the name
        column.secondFlags = static_cast<std::uint8_t>(flags);
        EXPECT_EQ(field(column, stored)->Expression(), u"");
    }
}

TEST_F(ColumnsOfNoFile, AComplexColumnOfAFileThatDoesNotTellKeepsItsNumber) {
    Column column;
    column.type = ColumnType::Complex;
    EXPECT_EQ(field(column)->Type(), 18);
}

// Their values make no trouble, and no calculated field is seen where there is none.
TEST(LaterColumns, FieldsOfRealFilesThatCalculateNothingSaySo) {
    for (const char* name :
         {"later/formPropTest.accdb", "later/northwind-2000-ja.mdb", "access97/nwind.mdb"}) {
        if (const auto path = test::realSample(name)) {
            const auto database = openDatabase(textOfNativePath(path->native()));
            for (const auto& table : database->TableDefs()) {
                for (const auto& field : table->Fields()) {
                    EXPECT_EQ(field->Expression(), u"") << toUtf8(field->Name());
                }
            }
        }
    }
}

} // namespace
} // namespace relvane::jet
