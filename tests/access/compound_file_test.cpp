// Compound files, built in memory: what is read of whole ones, and that damaged ones end in an error.

#include "access/compound_file.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "sample_builder/compound_file_writer.h"

namespace relvane::access {
namespace {

using samples::CompoundFileWriter;

Bytes filled(std::size_t length, std::uint8_t seed) {
    Bytes bytes(length);
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = static_cast<std::uint8_t>(seed + i + i / 251);
    }
    return bytes;
}

const CompoundEntry* find(const CompoundFile& file, TextView name) {
    const auto found = std::ranges::find(file.entries(), name, &CompoundEntry::name);
    return found == file.entries().end() ? nullptr : &*found;
}

Bytes contentOf(const CompoundFile& file, TextView name) {
    const CompoundEntry* entry = find(file, name);
    return entry == nullptr ? throw std::out_of_range("no such entry") : file.stream(entry->id);
}

int errorOf(const Bytes& bytes) {
    return skipErrors([&] { CompoundFile(bytes, u"T"); });
}

Text problemOf(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        return error.description();
    }
    ADD_FAILURE() << "nothing failed";
    return {};
}

void putAt(Bytes& bytes, std::size_t at, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<std::uint8_t>(number >> (8 * i));
    }
}

// Entries 1 "VBA", 2 "dir", 3 "long", 4 "empty", 5 "kurz". "long" is the only one in whole sectors.
CompoundFileWriter fewStreams(unsigned shift = 9) {
    return CompoundFileWriter(shift)
        .stream(u"VBA/dir", filled(100, 1))
        .stream(u"VBA/long", filled(5000, 2))
        .stream(u"empty", {})
        .stream(u"kurz", filled(64, 3));
}

TEST(CompoundFile, GivesStoragesAndStreamsWithTheirPlaces) {
    for (const unsigned shift : {9u, 12u}) {
        SCOPED_TRACE(shift);
        const CompoundFile file(fewStreams(shift).bytes(), u"T");
        EXPECT_EQ(file.entries().size(), 5u);
        const CompoundEntry* folder = find(file, u"VBA");
        ASSERT_NE(folder, nullptr);
        EXPECT_TRUE(folder->isStorage);
        EXPECT_EQ(folder->storage, CompoundFile::root);
        EXPECT_EQ(find(file, u"dir")->storage, folder->id);
        EXPECT_EQ(find(file, u"kurz")->storage, CompoundFile::root);
        EXPECT_EQ(contentOf(file, u"dir"), filled(100, 1));
        EXPECT_EQ(contentOf(file, u"long"), filled(5000, 2));
        EXPECT_EQ(contentOf(file, u"kurz"), filled(64, 3));
        EXPECT_EQ(contentOf(file, u"empty"), Bytes());
        EXPECT_EQ(file.stream(99), Bytes());
    }
}

TEST(CompoundFile, StreamsOfEveryLengthAboutASectorAreWhole) {
    for (const std::size_t length :
         {1u, 63u, 64u, 65u, 511u, 512u, 513u, 4095u, 4096u, 4097u, 4608u, 4609u}) {
        const CompoundFile file(
            CompoundFileWriter().stream(u"a", filled(length, 5)).stream(u"b", filled(length, 9)).bytes(),
            u"T");
        EXPECT_EQ(contentOf(file, u"a"), filled(length, 5)) << length;
        EXPECT_EQ(contentOf(file, u"b"), filled(length, 9)) << length;
    }
}

TEST(CompoundFile, ManyEntriesOfAStorageAreAllFound) {
    CompoundFileWriter writer;
    for (int i = 0; i < 300; ++i) {
        writer.stream(u"S/" + toText(static_cast<long long>(i * 7919 % 1009)),
                      filled(1, static_cast<std::uint8_t>(i)));
    }
    const CompoundFile file(writer.bytes(), u"T");
    EXPECT_EQ(file.entries().size(), 301u);
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(contentOf(file, toText(static_cast<long long>(i * 7919 % 1009))),
                  filled(1, static_cast<std::uint8_t>(i)));
    }
}

// The header has room for the first 109 sectors of the table.
TEST(CompoundFile, ALargeFileHasItsTableInAList) {
    const Bytes content = filled((111 * 128 + 300) * std::size_t{512}, 4);
    const CompoundFile file(CompoundFileWriter().stream(u"x", content).bytes(), u"T");
    EXPECT_EQ(contentOf(file, u"x"), content);
}

TEST(CompoundFile, BytesOfAnotherKindAreRefused) {
    EXPECT_EQ(errorOf({}), 3049);
    EXPECT_EQ(errorOf(Bytes(511)), 3049);
    EXPECT_EQ(errorOf(Bytes(4096)), 3049);
    const Bytes whole = fewStreams().bytes();
    EXPECT_EQ(errorOf(whole), 0);
    for (const std::size_t at : {0u, 7u, 0x1Eu, 0x1Fu, 0x20u}) {
        Bytes bytes = whole;
        bytes[at] ^= 0x10;
        EXPECT_EQ(errorOf(bytes), 3049) << at;
    }
}

TEST(CompoundFile, CutOffAnywhereItEndsInAnError) {
    const Bytes whole = fewStreams().bytes();
    for (std::size_t length = 0; length < whole.size(); length += 64) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(skipErrors([&] {
                      const CompoundFile file(cut, u"T");
                      contentOf(file, u"long"); // its sectors are the last
                  }),
                  3049)
            << length;
    }
}

TEST(CompoundFile, AChainThatRunsInACircleIsDamage) {
    CompoundFileWriter writer = fewStreams();
    const Bytes whole = writer.bytes();
    const std::uint32_t directory = writer.directorySector();
    Bytes bytes = whole;
    putAt(bytes, writer.nextPlace(directory + 1), directory); // its second and last sector
    EXPECT_NE(problemOf([&] { CompoundFile(bytes, u"T"); }).find(u"T の複合ファイルの"), Text::npos);
    EXPECT_NE(problemOf([&] { CompoundFile(bytes, u"T"); }).find(u"循環"), Text::npos);

    bytes = whole;
    const std::size_t last = bytes.size() / 512 - 2; // of "long"
    putAt(bytes, writer.nextPlace(last - 1), static_cast<std::uint32_t>(last - 2));
    const CompoundFile file(bytes, u"T");
    EXPECT_NE(problemOf([&] { contentOf(file, u"long"); }).find(u"循環"), Text::npos);
    EXPECT_EQ(contentOf(file, u"dir"), filled(100, 1)); // the others are read
}

TEST(CompoundFile, AChainThatEndsEarlyOrLeavesTheFileIsDamage) {
    CompoundFileWriter writer = fewStreams();
    const Bytes whole = writer.bytes();
    const std::size_t last = whole.size() / 512 - 2;
    const std::pair<std::uint32_t, TextView> links[] = {
        {CompoundFileWriter::endOfChain, u"ストリームが途切れて"},
        {CompoundFileWriter::none, u"連鎖が途切れて"},
        {0x7FFFFFFF, u"連鎖が途切れて"}};
    for (const auto& [next, reason] : links) {
        Bytes bytes = whole;
        putAt(bytes, writer.nextPlace(last - 1), next);
        const CompoundFile file(bytes, u"T");
        EXPECT_NE(problemOf([&] { contentOf(file, u"long"); }).find(reason), Text::npos) << next;
    }
}

TEST(CompoundFile, ALengthBeyondTheFileIsDamageAndTakesNoRoom) {
    CompoundFileWriter writer = fewStreams(12);
    const Bytes whole = writer.bytes();
    for (const std::uint32_t length : {0x100000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        Bytes bytes = whole;
        putAt(bytes, writer.entryPlace(3) + 0x78, length);
        EXPECT_EQ(skipErrors([&] { contentOf(CompoundFile(bytes, u"T"), u"long"); }), 3049);
        putAt(bytes, writer.entryPlace(3) + 0x7C, length); // the upper half counts in version 4
        EXPECT_EQ(skipErrors([&] { contentOf(CompoundFile(bytes, u"T"), u"long"); }), 3049);
    }
    CompoundFileWriter version3 = fewStreams();
    Bytes bytes = version3.bytes();
    putAt(bytes, version3.entryPlace(3) + 0x7C, 0xCCCCCCCC); // and is left as it was in version 3
    EXPECT_EQ(contentOf(CompoundFile(bytes, u"T"), u"long"), filled(5000, 2));
}

TEST(CompoundFile, ADirectoryThatRunsInACircleIsDamage) {
    CompoundFileWriter writer = fewStreams();
    const Bytes whole = writer.bytes();
    for (const std::size_t link : {0x44u, 0x48u, 0x4Cu}) {
        for (const std::uint32_t id : {0u, 1u}) { // the root, and the entry itself
            Bytes bytes = whole;
            putAt(bytes, writer.entryPlace(1) + link, id);
            EXPECT_NE(problemOf([&] { CompoundFile(bytes, u"T"); }).find(u"循環"), Text::npos)
                << link << " " << id;
        }
        Bytes bytes = whole;
        putAt(bytes, writer.entryPlace(1) + link, 77);
        EXPECT_NE(problemOf([&] { CompoundFile(bytes, u"T"); }).find(u"項目がありません"), Text::npos)
            << link;
    }
    Bytes bytes = whole;
    bytes[writer.entryPlace(2) + 0x42] = 0; // nothing
    EXPECT_EQ(errorOf(bytes), 3049);
}

TEST(CompoundFile, AListOfTheTableThatRunsInACircleIsDamage) {
    CompoundFileWriter writer;
    Bytes bytes = writer.stream(u"x", filled(9000, 1)).bytes();
    const std::size_t list = bytes.size() - 512; // the last sector of the stream
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(list), 512, std::uint8_t{0xFF});
    const auto number = static_cast<std::uint32_t>(list / 512 - 1);
    putAt(bytes, list + 508, number);
    putAt(bytes, 0x44, number);
    EXPECT_NE(problemOf([&] { CompoundFile(bytes, u"T"); }).find(u"循環"), Text::npos);
}

// Each listing of a sector would add to the table: it ends where the file does.
TEST(CompoundFile, ATableThatIsListedOftenStaysAsLongAsTheFile) {
    Bytes bytes = fewStreams().bytes();
    for (std::size_t i = 1; i < 109; ++i) {
        putAt(bytes, 0x4C + 4 * i, 0);
    }
    EXPECT_EQ(contentOf(CompoundFile(bytes, u"T"), u"long"), filled(5000, 2));
}

} // namespace
} // namespace relvane::access
