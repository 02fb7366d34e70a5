// The container of VBA streams and the directory of a project, on hand-made data.

#include "access/vba_project.h"

#include <gtest/gtest.h>

#include "design_bytes_builder.h"
#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

using test::StreamBytes;

// Two streams: "dir" with "abc", "x" with nothing.
Bytes twoStreams() {
    return StreamBytes()
        .hex("69 12 04 00 01 00 00 00")
        .hex("08 64 00 69 00 72 00 00 00 03 00 00 00")
        .text("abc")
        .hex("04 78 00 00 00 00 00 00 00")
        .bytes();
}

std::string stream(const Bytes& container, TextView name) {
    const auto found = vbaStream(container, name, u"M");
    return {found.begin(), found.end()};
}

TEST(VbaContainer, GivesAStreamByItsName) {
    EXPECT_EQ(stream(twoStreams(), u"dir"), "abc");
    EXPECT_EQ(stream(twoStreams(), u"DIR"), "abc");
    EXPECT_EQ(stream(twoStreams(), u"x"), "");
}

TEST(VbaContainer, AMissingStreamIsNamed) {
    try {
        stream(twoStreams(), u"_VBA_MODULE");
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        EXPECT_NE(error.description().find(u"M のソースの"), Text::npos) << error.what();
        EXPECT_NE(error.description().find(u"_VBA_MODULE がありません"), Text::npos) << error.what();
    }
}

TEST(VbaContainer, CutOffAtAnyLengthItGivesOnlyWholeStreams) {
    const Bytes whole = twoStreams();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(skipErrors([&] { stream(cut, u"x"); }), 3049) << length;
        EXPECT_EQ(skipErrors([&] { stream(cut, u"dir"); }), length < 24 ? 3049 : 0) << length;
    }
}

TEST(VbaContainer, AnotherHeaderIsDamage) {
    for (std::size_t at = 0; at < 8; ++at) {
        Bytes bytes = twoStreams();
        bytes[at] ^= 1;
        EXPECT_EQ(skipErrors([&] { stream(bytes, u"dir"); }), 3049) << at;
    }
}

StreamBytes directoryHead() {
    return StreamBytes()
        .hex("01 00 04 00 00 00 01 00 00 00")
        .hex("03 00 02 00 00 00 a4 03")
        .hex("09 00 04 00 00 00 01 02 03 04 05 06"); // two bytes more than it says
}

// A standard module "売" (text at 7D5) and a class module "B".
StreamBytes directory() {
    return directoryHead()
        .hex("19 00 02 00 00 00 94 84 31 00 04 00 00 00 d5 07 00 00 21 00 00 00 00 00 2b 00 00 00 00 00")
        .hex("19 00 01 00 00 00 42 1a 00 01 00 00 00 78 31 00 04 00 00 00 00 00 00 00 22 00 00 00 00 00")
        .hex("28 00 00 00 00 00 2b 00 00 00 00 00");
}
constexpr std::string_view endRecord = "10 00 00 00 00 00";

TEST(VbaProject, NamesKindsAndPlacesOfItsModules) {
    const VbaProject project = readVbaProject(directory().hex(endRecord).hex("ff ff").bytes(), u"P");
    EXPECT_EQ(project.codePage, 932);
    ASSERT_EQ(project.modules.size(), 2u);
    EXPECT_EQ(project.modules[0].name, u"売");
    EXPECT_EQ(project.modules[0].textOffset, 0x7D5u);
    EXPECT_FALSE(project.modules[0].isClass);
    EXPECT_EQ(project.modules[1].name, u"B");
    EXPECT_EQ(project.modules[1].textOffset, 0u);
    EXPECT_TRUE(project.modules[1].isClass);
}

TEST(VbaProject, CutOffAtAnyLengthItIsDamaged) {
    const Bytes whole = directory().hex(endRecord).bytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(skipErrors([&] { readVbaProject(cut, u"P"); }), 3049) << length;
    }
}

TEST(VbaProject, RecordsThatMakeNoSenseAreDamage) {
    const auto error = [](const StreamBytes& bytes) {
        return skipErrors([&] { readVbaProject(bytes.bytes(), u"P"); });
    };
    EXPECT_EQ(error(StreamBytes().hex(endRecord)), 3049);                               // no code page
    EXPECT_EQ(error(StreamBytes().hex("03 00 01 00 00 00 a4").hex(endRecord)), 3049);   // short
    EXPECT_EQ(error(directoryHead().hex("21 00 00 00 00 00").hex(endRecord)), 3049);    // of no module
    EXPECT_EQ(error(directoryHead().hex("2b 00 00 00 00 00").hex(endRecord)), 3049);    // ends no module
    EXPECT_EQ(error(directoryHead().hex("19 00 01 00 00 00 42").hex(endRecord)), 3049); // without its end
    EXPECT_EQ(error(directoryHead().hex("19 00 ff ff ff ff 42").hex(endRecord)), 3049); // too long
    EXPECT_EQ(error(directoryHead().hex(endRecord)), 0);
}

} // namespace
} // namespace relvane::access
