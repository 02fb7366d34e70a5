// Rows as they lie on a page, and the values of their columns.

#include "jet/row.h"

#include <gtest/gtest.h>

#include "file_builder.h"
#include "jet/column_value.h"

namespace relvane::jet {
namespace {

Column column(ColumnType type, std::uint16_t number, std::uint16_t variableIndex) {
    Column result;
    result.type = type;
    result.number = number;
    result.variableIndex = variableIndex;
    return result;
}

Column fixedColumn(ColumnType type, std::uint16_t number, std::uint16_t offset) {
    Column result = column(type, number, 0);
    result.flags = columnFlag::fixed;
    result.fixedOffset = offset;
    return result;
}

TableDefinition withVariable(std::size_t columns) {
    TableDefinition table;
    table.variableColumns = columns;
    return table;
}

Row rowOf(const Bytes& bytes, const TableDefinition& table, const JetFormat& format = jet3) {
    return {format, table, RowBytes{Page(), ByteSpan(bytes, 7)}};
}

Text textOf(const ByteSpan& bytes) {
    return Text(bytes.bytes().begin(), bytes.bytes().end());
}

TEST(Row, ShippersFirstRowIsCutAsDocumented) {
    Bytes bytes = {3, 1, 0, 0, 0};
    for (const char c : std::string("Speedy Express(503) 555-9831")) {
        bytes.push_back(static_cast<std::uint8_t>(c));
    }
    bytes.insert(bytes.end(), {0x21, 0x13, 0x05, 0x02, 0x07});
    const Row row = rowOf(bytes, withVariable(2));
    EXPECT_EQ(row.cell(fixedColumn(ColumnType::Long, 0, 0))->u32(0), 1u);
    EXPECT_EQ(textOf(*row.cell(column(ColumnType::Text, 1, 0))), u"Speedy Express");
    EXPECT_EQ(textOf(*row.cell(column(ColumnType::Text, 2, 1))), u"(503) 555-9831");
}

TEST(Row, AColumnYoungerThanTheRowIsNull) {
    const Bytes bytes = {1, 9, 0, 0, 0, 0x01};
    const Row row = rowOf(bytes, withVariable(0));
    EXPECT_TRUE(row.cell(fixedColumn(ColumnType::Long, 0, 0)));
    EXPECT_FALSE(row.cell(fixedColumn(ColumnType::Long, 1, 4)));
    EXPECT_FALSE(row.bit(fixedColumn(ColumnType::Boolean, 1, 0)));
}

// A Jet 3 row: a count of columns, the data of its texts, the offset table with its jump bytes, the mask.
Bytes jet3Row(const std::vector<std::size_t>& lengths) {
    Bytes bytes = {static_cast<std::uint8_t>(lengths.size())};
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        starts.push_back(bytes.size());
        bytes.insert(bytes.end(), lengths[i], static_cast<std::uint8_t>('a' + i));
    }
    starts.push_back(bytes.size());
    for (auto start = starts.rbegin(); start != starts.rend(); ++start) {
        bytes.push_back(static_cast<std::uint8_t>(*start));
    }
    const std::size_t mask = (lengths.size() + 7) / 8;
    // The row's length decides how many jump bytes there are, and they are part of the length.
    std::size_t jumps = 0;
    while ((bytes.size() + jumps + 1 + mask - 1) / 256 > jumps) {
        ++jumps;
    }
    for (std::size_t jump = jumps; jump > 0; --jump) {
        std::size_t first = 0; // the first entry that lies beyond the jump's boundary
        while (first < starts.size() && starts[first] < 256 * jump) {
            ++first;
        }
        bytes.push_back(first < starts.size() ? static_cast<std::uint8_t>(first) : std::uint8_t{0xFF});
    }
    bytes.push_back(static_cast<std::uint8_t>(lengths.size()));
    bytes.insert(bytes.end(), mask, 0xFF);
    return bytes;
}

void expectLengths(const std::vector<std::size_t>& lengths) {
    const Bytes bytes = jet3Row(lengths);
    const Row row = rowOf(bytes, withVariable(lengths.size()));
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        const auto number = static_cast<std::uint16_t>(i);
        const auto cell = row.cell(column(ColumnType::Text, number, number));
        ASSERT_TRUE(cell);
        EXPECT_EQ(textOf(*cell), Text(lengths[i], static_cast<char16_t>(u'a' + i))) << "column " << i;
    }
}

TEST(Row, JumpBytesCarryJet3OffsetsBeyond256) {
    expectLengths({10, 20});                      // no jump
    expectLengths({200, 100, 30});                // one boundary
    expectLengths({255, 255, 255, 255, 200});     // several
    expectLengths({10, 600, 5});                  // two boundaries in one column
    expectLengths({255, 1, 255, 1, 255, 1, 255}); // boundaries at the edges of columns
}

TEST(Row, TheLastJumpByteIsADummyWhenOnlyTheTablePassesTheBoundary) {
    // 248 to 255 bytes of data: the offsets stay below 256, the row does not.
    for (std::size_t length = 240; length < 262; ++length) {
        expectLengths({length, 0, 0});
        expectLengths({length + 256, 0, 0, 0});
    }
}

TEST(Row, Jet4OffsetsAreTwoBytes) {
    Bytes bytes = {2, 0};
    bytes.insert(bytes.end(), 300, 'x');
    bytes.insert(bytes.end(), {'y', 'z'});
    bytes.insert(bytes.end(), {0x30, 0x01, 0x2E, 0x01, 0x02, 0x00, 2, 0, 0x03});
    const Row row = rowOf(bytes, withVariable(2), jet4);
    EXPECT_EQ(row.cell(column(ColumnType::Text, 0, 0))->size(), 300u);
    EXPECT_EQ(textOf(*row.cell(column(ColumnType::Text, 1, 1))), u"yz");
}

TEST(Row, BookkeepingThatDoesNotFitIs3049) {
    const auto table = withVariable(2);
    EXPECT_EQ(errorOf([&] { rowOf({}, table); }), 3049);
    EXPECT_EQ(errorOf([&] { rowOf({200}, table); }), 3049);                      // mask longer than the row
    EXPECT_EQ(errorOf([&] { rowOf({1, 0xFF}, table); }), 3049);                  // no room for the count
    EXPECT_EQ(errorOf([&] { rowOf({1, 'a', 9, 1, 5, 0xFF}, table); }), 3049);    // more columns than bytes
    EXPECT_EQ(errorOf([&] { rowOf({1, 'a', 1, 9, 1, 0xFF}, table); }), 3049);    // start behind the end
    EXPECT_EQ(errorOf([&] { rowOf({1, 'a', 0xF0, 1, 1, 0xFF}, table); }), 3049); // end behind the row
    const Bytes shortRow = {1, 5, 0x01};
    const Row row = rowOf(shortRow, withVariable(0));
    EXPECT_EQ(errorOf([&] { row.cell(fixedColumn(ColumnType::Double, 0, 0)); }), 3049);
}

// ---- Values

class Values : public testing::Test {
protected:
    Value valueOf(const Column& column, const Bytes& cell, const JetFormat& format = jet3) {
        BareFile bare(3, format);
        const auto file = bare.open();
        Bytes bytes(format.countSize);
        bytes[0] = 1;
        const std::size_t start = bytes.size();
        bytes.insert(bytes.end(), cell.begin(), cell.end());
        TableDefinition table;
        Column placed = column;
        if (!column.has(columnFlag::fixed)) {
            table.variableColumns = 1;
            const std::size_t ends[] = {bytes.size(), start};
            for (const std::size_t end : ends) {
                bytes.push_back(static_cast<std::uint8_t>(end));
                if (format.countSize == 2) {
                    bytes.push_back(static_cast<std::uint8_t>(end >> 8));
                }
            }
            bytes.push_back(1);
            if (format.countSize == 2) {
                bytes.push_back(0);
            }
        }
        bytes.push_back(0x01);
        return columnValue(*file, placed, rowOf(bytes, table, format));
    }
};

TEST_F(Values, NumbersAreLittleEndian) {
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::Byte, 0, 0), {200}), Value(std::int64_t{200}));
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::Integer, 0, 0), {0xFE, 0xFF}), Value(std::int64_t{-2}));
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::Long, 0, 0), {1, 0, 0, 0x80}),
              Value(std::int64_t{-2147483647}));
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::Currency, 0, 0), {0x10, 0x27, 0, 0, 0, 0, 0, 0}),
              Value(Currency{10000}));
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::Single, 0, 0), {0, 0, 0xC0, 0x3F}), Value(1.5f));
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::Double, 0, 0), {0, 0, 0, 0, 0, 0, 0xF8, 0x3F}), Value(1.5));
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::BigInt, 0, 0), Bytes(8, 0xFF), jet4), Value(std::int64_t{-1}));
}

TEST_F(Values, OfCalculatedColumnsAreNotTakenForWhatTheyAreNot) {
    Column column = fixedColumn(ColumnType::Long, 0, 0);
    column.secondFlags = 0xC0;
    EXPECT_EQ(valueOf(column, {7, 0, 0, 0}, jet4), Value(Null{}));
    column.type = ColumnType::Boolean;
    EXPECT_EQ(valueOf(column, {7, 0, 0, 0}, jet4), Value(Null{}));
}

TEST_F(Values, FixedTypesMayStandAmongTheVariableColumns) {
    EXPECT_EQ(valueOf(column(ColumnType::Long, 0, 0), {7, 0, 0, 0}), Value(std::int64_t{7}));
}

TEST_F(Values, DatesThatAreNoneAreNull) {
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::Date, 0, 0), {0, 0, 0, 0, 0, 0, 0xF8, 0x7F}), Value(Null{}));
    EXPECT_EQ(valueOf(fixedColumn(ColumnType::Date, 0, 0), {0, 0, 0, 0, 0, 0, 0xF8, 0x3F}),
              Value(DateTime{1899, 12, 31, 12, 0, 0}));
}

TEST_F(Values, NumericShowsItsScale) {
    Column numeric = fixedColumn(ColumnType::Numeric, 0, 0);
    numeric.scale = 2;
    Bytes cell(17);
    cell[0] = 0x80;
    cell[13] = 0xE2; // 1250
    cell[14] = 0x04;
    EXPECT_EQ(valueOf(numeric, cell, jet4), Value(Decimal{u"-12.5"}));
    cell.assign(17, 0);
    EXPECT_EQ(valueOf(numeric, cell, jet4), Value(Decimal{u"0"}));
    cell[1] = 1; // 2 to the power of 96
    EXPECT_EQ(valueOf(numeric, cell, jet4), Value(Decimal{u"792281625142643375935439503.36"}));
    cell.assign(17, 0);
    cell[13] = 5;
    EXPECT_EQ(valueOf(numeric, cell, jet4), Value(Decimal{u"0.05"}));
}

TEST_F(Values, ExtendedDatesAreText) {
    std::string text = "0000000000000693594:0000000432000000000:7";
    text += '\0';
    EXPECT_EQ(valueOf(column(ColumnType::ExtendedDate, 0, 0), Bytes(text.begin(), text.end()), jet4),
              Value(DateTime{1899, 12, 31, 12, 0, 0}));
    EXPECT_EQ(valueOf(column(ColumnType::ExtendedDate, 0, 0), {'x', ':', 'y'}, jet4), Value(Null{}));
}

TEST_F(Values, TextTakesTheCodePageOfItsColumn) {
    Column text = column(ColumnType::Text, 0, 0);
    text.codePage = 932;
    EXPECT_EQ(valueOf(text, {0x83, 0x41}), Value(Text(u"ア")));
    text.codePage = 4711; // the file's, 1252
    EXPECT_EQ(valueOf(text, {0x83, 0x41}), Value(Text(u"ƒA")));
}

TEST_F(Values, Jet4TextMayBeCompressed) {
    const Column text = column(ColumnType::Text, 0, 0);
    EXPECT_EQ(valueOf(text, {0x42, 0x30, 0x41, 0x00}, jet4), Value(Text(u"あA")));
    EXPECT_EQ(valueOf(text, {0xFF, 0xFE, 'a', 'b'}, jet4), Value(Text(u"ab")));
    EXPECT_EQ(valueOf(text, {0xFF, 0xFE, 'a', 0, 0x42, 0x30, 0, 'b'}, jet4), Value(Text(u"aあb")));
    EXPECT_EQ(valueOf(text, {0xFF, 0xFE, 0, 0x42, 0x30}, jet4), Value(Text(u"あ")));
    EXPECT_EQ(valueOf(text, {0xFF, 0xFE}, jet4), Value(Text()));
    EXPECT_EQ(valueOf(text, {0x42, 0x30, 0x41}, jet4), Value(Text(u"あ"))); // half a unit is dropped
}

TEST_F(Values, AColumnOfAnUnknownTypeGivesItsBytes) {
    EXPECT_EQ(valueOf(column(static_cast<ColumnType>(99), 0, 0), {1, 2}), Value(Bytes{1, 2}));
}

} // namespace
} // namespace relvane::jet
