// The list of names beside a design, made by hand.

#include "access/design_type_info.h"

#include <gtest/gtest.h>

#include "access/design_tree.h"
#include "design_bytes_builder.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

using test::form97;
using test::StreamBytes;

StreamBytes head(std::string_view count, std::string_view kind = "96 00") {
    return StreamBytes().hex("f7 ea cd ac").hex(kind).hex("12 34 ff ff ff ff").hex(count).filler(16, 0);
}

TypeInfo read(const Bytes& bytes) {
    return readTypeInfo(bytes, japaneseCodePage, u"試験");
}

Bytes twoNames() {
    return head("03 00 00 00")
        .hex("98 18 00 00 00 00 00 00")
        .text("Detail")
        .hex("00 00  6b 11 79 00 01 00 00 00")
        .text("PrintLabelsFor")
        .hex("00 00  ff 1e 00 00 02 00 00 00")
        .text("Ctl5")
        .hex("00")
        .text(encode(u"得意先", japaneseCodePage))
        .hex("00")
        .bytes();
}

TEST(DesignTypeInfo, EntriesAreReadInOrder) {
    const TypeInfo list = read(twoNames());
    EXPECT_FALSE(list.isReport);
    ASSERT_EQ(list.entries.size(), 3u);
    EXPECT_EQ(list.entries[1].type, 107);
    EXPECT_EQ(list.entries[1].classCode, 0x11);
    EXPECT_EQ(list.entries[1].index, 1u);
    EXPECT_EQ(list.entries[1].prefix, u"PrintLabelsFor");
    EXPECT_EQ(list.entries[1].name, u"PrintLabelsFor"); // its real name is not stored again
    EXPECT_TRUE(list.entries[2].isField());
    EXPECT_EQ(list.entries[2].prefix, u"Ctl5");
    EXPECT_EQ(list.entries[2].name, u"得意先");
}

TEST(DesignTypeInfo, ItIsReadToItsLastByteOrDamaged) {
    const Bytes whole = twoNames();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(skipErrors([&] { read(part); }), 3049) << length;
    }
    Bytes more = whole;
    more.push_back(0);
    EXPECT_EQ(skipErrors([&] { read(more); }), 3049);
    EXPECT_EQ(skipErrors([&] { read(head("ff ff ff ff").bytes()); }), 3049); // a count takes no memory
    EXPECT_EQ(skipErrors([&] { read(head("00 00 00 00", "97 00").bytes()); }), 3049);
    EXPECT_EQ(skipErrors([&] { read(head("00 00 00 00", "64 00").bytes()); }), 3049);
    EXPECT_TRUE(read(head("00 00 00 00", "97 01").bytes()).isReport);
}

TEST(DesignTypeInfo, ADesignAgreesOrNot) {
    const auto agreesWith = [](StreamBytes stream) {
        return agrees(read(twoNames()), Design(readDesignStream(stream.bytes(), u"試験"), japaneseCodePage));
    };
    const auto design = [](std::string_view section, std::string_view control, std::string_view type = "6b") {
        return form97()
            .hex("fe 98 00")
            .property(0xdf, section)
            .hex("fe")
            .hex(type)
            .hex("00")
            .property(0xdc, control)
            .hex("fd");
    };
    EXPECT_TRUE(agreesWith(design("Detail", "PrintLabelsFor")));
    EXPECT_FALSE(agreesWith(design("Detail", "Other")));
    EXPECT_FALSE(agreesWith(design("Section0", "PrintLabelsFor")));
    EXPECT_FALSE(agreesWith(design("Detail", "PrintLabelsFor", "6a")));
    EXPECT_FALSE(agreesWith(form97().hex("fe 98 00").property(0xdf, "Detail").hex("fd"))); // one is missing
    EXPECT_FALSE(agreesWith(form97().hex("fd")));
}

} // namespace
} // namespace relvane::access
