// Compound files of the builder, read here by the letter of the format and no more leniently than anybody may: each sector
// in one chain, each storage's entries a red-black tree in order, every unused place as it has to be.

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include <gtest/gtest.h>

#include "access/compound_file.h"
#include "sample_builder/compound_file_writer.h"

namespace relvane::samples {
namespace {

constexpr std::uint32_t freeSector = 0xFFFFFFFF, endOfChain = 0xFFFFFFFE, tableSector = 0xFFFFFFFD,
                        listSector = 0xFFFFFFFC, noEntry = 0xFFFFFFFF;

using Contents = std::map<Text, std::optional<Bytes>>; // by path; storages have none

// Each adds a failure to the running test for whatever is not as the format wants it.
class StrictReader {
public:
    explicit StrictReader(const Bytes& file) : file_(file) {}

    Contents read() {
        readHeader();
        readTable();
        directory_ = chain(number(0x30, 4));
        miniNext_ = numbersOf(chain(number(0x3C, 4)));
        EXPECT_EQ(number(0x40, 4), miniNext_.size() * 4 / size_);
        miniStream_ = chain(entry(0, 0x74, 4));
        EXPECT_EQ(miniStream_.size(), (entry(0, 0x78, 4) + size_ - 1) / size_ * size_);
        readDirectory();
        for (std::size_t sector = 0; sector < next_.size(); ++sector) {
            EXPECT_EQ(next_[sector] == freeSector, !used_.contains(static_cast<std::uint32_t>(sector)))
                << "sector " << sector;
        }
        for (std::size_t sector = 0; sector < miniNext_.size(); ++sector) {
            EXPECT_EQ(miniNext_[sector] == freeSector,
                      !usedMini_.contains(static_cast<std::uint32_t>(sector)))
                << "small sector " << sector;
        }
        EXPECT_EQ(usedMini_.size() * 64, entry(0, 0x78, 4));
        return std::move(contents_);
    }

private:
    std::uint64_t number(std::size_t at, std::size_t count) const { return numberIn(file_, at, count); }
    static std::uint64_t numberIn(const Bytes& bytes, std::size_t at, std::size_t count) {
        std::uint64_t value = 0;
        for (std::size_t i = count; i > 0; --i) {
            value = value << 8 | bytes.at(at + i - 1);
        }
        return value;
    }
    std::uint64_t entry(std::size_t id, std::size_t field, std::size_t count) const {
        return numberIn(directory_, 128 * id + field, count);
    }

    void readHeader() {
        EXPECT_EQ(number(0, 8), 0xE11AB1A1E011CFD0u);
        EXPECT_EQ(number(8, 8) | number(16, 8), 0u);
        EXPECT_EQ(number(0x18, 2), 0x3Eu);
        const std::uint64_t version = number(0x1A, 2);
        EXPECT_EQ(number(0x1C, 2), 0xFFFEu);
        EXPECT_EQ(number(0x1E, 2), version == 3 ? 9u : 12u);
        size_ = std::size_t{1} << number(0x1E, 2);
        EXPECT_EQ(number(0x20, 2), 6u);
        EXPECT_EQ(number(0x22, 4) | number(0x26, 2) | number(0x34, 4), 0u);
        EXPECT_EQ(number(0x38, 4), 4096u);
        EXPECT_EQ(file_.size() % size_, 0u);
        for (std::size_t at = 512; at < size_; ++at) {
            EXPECT_EQ(file_[at], 0) << "behind the header";
        }
    }

    std::size_t place(std::uint32_t sector) const { return size_ * (sector + std::size_t{1}); }

    void use(std::uint32_t sector) {
        EXPECT_TRUE(used_.insert(sector).second) << "sector " << sector << " is in two chains";
        EXPECT_LE(place(sector) + size_, file_.size());
    }

    void readTable() {
        std::vector<std::uint32_t> tables, lists;
        for (std::size_t i = 0; i < 109; ++i) {
            tables.push_back(static_cast<std::uint32_t>(number(0x4C + 4 * i, 4)));
        }
        for (auto list = static_cast<std::uint32_t>(number(0x44, 4)); list != endOfChain;) {
            lists.push_back(list);
            use(list);
            for (std::size_t at = 0; at + 4 < size_; at += 4) {
                tables.push_back(static_cast<std::uint32_t>(number(place(list) + at, 4)));
            }
            list = static_cast<std::uint32_t>(number(place(list) + size_ - 4, 4));
        }
        EXPECT_EQ(number(0x48, 4), lists.size());
        const auto firstFree = std::ranges::find(tables, freeSector);
        EXPECT_TRUE(
            std::all_of(firstFree, tables.end(), [](std::uint32_t each) { return each == freeSector; }));
        tables.erase(firstFree, tables.end());
        EXPECT_EQ(number(0x2C, 4), tables.size());
        for (const std::uint32_t table : tables) {
            use(table);
            for (std::size_t at = 0; at < size_; at += 4) {
                next_.push_back(static_cast<std::uint32_t>(number(place(table) + at, 4)));
            }
        }
        for (const std::uint32_t table : tables) {
            EXPECT_EQ(next_.at(table), tableSector);
        }
        for (const std::uint32_t list : lists) {
            EXPECT_EQ(next_.at(list), listSector);
        }
    }

    std::vector<std::uint32_t> numbersOf(const Bytes& bytes) const {
        std::vector<std::uint32_t> numbers;
        for (std::size_t at = 0; at < bytes.size(); at += 4) {
            numbers.push_back(static_cast<std::uint32_t>(numberIn(bytes, at, 4)));
        }
        return numbers;
    }

    Bytes chain(std::uint64_t first) {
        Bytes bytes;
        for (auto at = static_cast<std::uint32_t>(first); at != endOfChain; at = next_.at(at)) {
            use(at);
            bytes.insert(bytes.end(), file_.begin() + static_cast<std::ptrdiff_t>(place(at)),
                         file_.begin() + static_cast<std::ptrdiff_t>(place(at) + size_));
        }
        return bytes;
    }

    Bytes miniChain(std::uint64_t first) {
        Bytes bytes;
        for (auto at = static_cast<std::uint32_t>(first); at != endOfChain; at = miniNext_.at(at)) {
            EXPECT_TRUE(usedMini_.insert(at).second) << "small sector " << at << " is in two chains";
            const auto begin = miniStream_.begin() + static_cast<std::ptrdiff_t>(64 * std::size_t{at});
            bytes.insert(bytes.end(), begin, begin + 64);
        }
        return bytes;
    }

    void readDirectory() {
        if (size_ == 512) {
            EXPECT_EQ(number(0x28, 4), 0u);
        } else {
            EXPECT_EQ(number(0x28, 4), directory_.size() / size_);
        }
        EXPECT_EQ(nameOf(0), u"Root Entry");
        EXPECT_EQ(entry(0, 0x42, 1), 5u);
        EXPECT_EQ(entry(0, 0x44, 8), ~std::uint64_t{0}); // no neighbours
        entries_.insert(0);
        readStorage(0, {});
        for (std::size_t id = 0; id < directory_.size() / 128; ++id) {
            if (!entries_.contains(static_cast<std::uint32_t>(id))) {
                EXPECT_EQ(entry(id, 0, 2) | entry(id, 0x40, 2) | entry(id, 0x42, 1), 0u);
                for (const std::size_t link : {0x44u, 0x48u, 0x4Cu}) {
                    EXPECT_EQ(entry(id, link, 4), noEntry);
                }
            }
        }
    }

    Text nameOf(std::uint32_t id) const {
        Text name;
        while (entry(id, 2 * name.size(), 2) != 0) {
            name += static_cast<char16_t>(entry(id, 2 * name.size(), 2));
        }
        EXPECT_EQ(entry(id, 0x40, 2), 2 * (name.size() + 1));
        return name;
    }

    void readStorage(std::uint32_t id, const Text& path) {
        const auto top = static_cast<std::uint32_t>(entry(id, 0x4C, 4));
        if (top != noEntry) {
            EXPECT_EQ(entry(top, 0x43, 1), 1u) << "the uppermost entry is red";
        }
        std::vector<std::uint32_t> ordered;
        walk(top, ordered);
        const auto keyOf = [&](std::uint32_t each) {
            return std::pair(nameOf(each).size(), upperCase(nameOf(each)));
        };
        for (std::size_t i = 1; i < ordered.size(); ++i) {
            EXPECT_LT(keyOf(ordered[i - 1]), keyOf(ordered[i]));
        }
        for (const std::uint32_t each : ordered) {
            readEntry(each, path + nameOf(each));
        }
    }

    // How many black entries stand on each way down, which has to be the same on all.
    int walk(std::uint32_t id, std::vector<std::uint32_t>& ordered) {
        if (id == noEntry) {
            return 0;
        }
        EXPECT_TRUE(entries_.insert(id).second) << "entry " << id << " is in two trees";
        const bool isRed = entry(id, 0x43, 1) == 0;
        const auto left = static_cast<std::uint32_t>(entry(id, 0x44, 4)),
                   right = static_cast<std::uint32_t>(entry(id, 0x48, 4));
        for (const std::uint32_t neighbour : {left, right}) {
            EXPECT_FALSE(isRed && neighbour != noEntry && entry(neighbour, 0x43, 1) == 0) << "red below red";
        }
        const int ofLeft = walk(left, ordered);
        ordered.push_back(id);
        EXPECT_EQ(walk(right, ordered), ofLeft);
        return ofLeft + (isRed ? 0 : 1);
    }

    void readEntry(std::uint32_t id, const Text& path) {
        EXPECT_LE(entry(id, 0x43, 1), 1u);
        const std::uint64_t kind = entry(id, 0x42, 1), first = entry(id, 0x74, 4),
                            length = entry(id, 0x78, 8);
        if (kind == 1) {
            EXPECT_EQ(first | length, 0u);
            contents_[path];
            readStorage(id, path + u"/");
            return;
        }
        EXPECT_EQ(kind, 2u);
        EXPECT_EQ(entry(id, 0x4C, 4), noEntry);
        EXPECT_EQ(entry(id, 0x50, 8) | entry(id, 0x58, 8) | entry(id, 0x60, 4), 0u);
        const bool isShort = length < 4096;
        const std::size_t unit = isShort ? 64 : size_;
        Bytes bytes = isShort ? miniChain(first) : chain(first);
        EXPECT_EQ(bytes.size(), (length + unit - 1) / unit * unit) << toUtf8(path);
        bytes.resize(length);
        contents_[path] = std::move(bytes);
    }

    const Bytes& file_;
    std::size_t size_ = 0;
    std::vector<std::uint32_t> next_, miniNext_;
    Bytes directory_, miniStream_;
    std::set<std::uint32_t> used_, usedMini_, entries_;
    Contents contents_;
};

Contents strictly(const Bytes& file) {
    return StrictReader(file).read();
}

Bytes filled(std::size_t length, std::size_t seed) {
    Bytes bytes(length);
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = static_cast<std::uint8_t>(seed + i + i / 251);
    }
    return bytes;
}

TEST(CompoundFileWriter, AFileWithoutStreamsIsItsHeaderItsTableAndItsRoot) {
    const Bytes file = CompoundFileWriter().bytes();
    EXPECT_EQ(file.size(), 3 * 512u);
    EXPECT_TRUE(strictly(file).empty());
}

TEST(CompoundFileWriter, StreamsAndStoragesStandWhereTheirPathsSay) {
    const Streams streams{{u"Forms/0/Blob", filled(5000, 1)},
                          {u"Forms/0/TypeInfo", filled(77, 2)},
                          {u"Forms/\u0003DirData", filled(64, 3)},
                          {u"Reports/", {}},
                          {u"Databases/0/Blob", {}},
                          {u"表", filled(4096, 4)}};
    for (const unsigned shift : {9u, 12u}) {
        SCOPED_TRACE(shift);
        const Contents found = strictly(CompoundFileWriter(shift).streams(streams).bytes());
        const Contents expected{{u"Forms", std::nullopt},
                                {u"Forms/0", std::nullopt},
                                {u"Forms/0/Blob", filled(5000, 1)},
                                {u"Forms/0/TypeInfo", filled(77, 2)},
                                {u"Forms/\u0003DirData", filled(64, 3)},
                                {u"Reports", std::nullopt},
                                {u"Databases", std::nullopt},
                                {u"Databases/0", std::nullopt},
                                {u"Databases/0/Blob", Bytes()},
                                {u"表", filled(4096, 4)}};
        EXPECT_EQ(found, expected);
    }
}

TEST(CompoundFileWriter, StreamsOfEveryLengthAboutASectorAreWhole) {
    CompoundFileWriter writer;
    Contents expected;
    for (const std::size_t length :
         {1u, 63u, 64u, 65u, 511u, 512u, 513u, 4095u, 4096u, 4097u, 4607u, 4608u, 4609u}) {
        const Text name = toText(static_cast<long long>(length));
        writer.stream(name, filled(length, length));
        expected[name] = filled(length, length);
    }
    EXPECT_EQ(strictly(writer.bytes()), expected);
}

TEST(CompoundFileWriter, TheEntriesOfAStorageAreARedBlackTreeHoweverManyTheyAre) {
    for (std::size_t count = 0; count <= 70; ++count) {
        SCOPED_TRACE(count);
        CompoundFileWriter writer;
        for (std::size_t i = 0; i < count; ++i) {
            writer.stream(u"S/" + toText(static_cast<long long>(i * 7919 % 1009)), filled(i % 3, i));
        }
        EXPECT_EQ(strictly(writer.bytes()).size(), count == 0 ? 0 : count + 1);
    }
}

TEST(CompoundFileWriter, ShorterNamesStandFirstAndLettersAsCapitals) {
    CompoundFileWriter writer;
    for (const TextView name : {u"bb", u"Z", u"a", u"AB", u"ａ", u"_"}) {
        writer.stream(name, {});
    }
    EXPECT_EQ(strictly(writer.bytes()).size(), 6u);
}

// The header lists 109 sectors of the table, and the sectors of its list 127 each.
TEST(CompoundFileWriter, ALargeFileHasItsTableInAList) {
    for (const std::size_t sectors :
         {109u * 128u - 112u, 109u * 128u - 111u, 109u * 128u, (109u + 127u) * 128u + 700u}) {
        SCOPED_TRACE(sectors);
        const Bytes content = filled(sectors * 512, 4);
        EXPECT_EQ(strictly(CompoundFileWriter().stream(u"x", content).bytes()), (Contents{{u"x", content}}));
    }
}

TEST(CompoundFileWriter, WhatNoStreamFillsIsTold) {
    CompoundFileWriter writer;
    const Bytes content = filled(5000, 1);
    const Bytes file = writer.stream(u"a", content).stream(u"b", filled(5120, 1)).bytes();
    ASSERT_EQ(writer.unused().size(), 2u);
    const auto [begin, end] = writer.unused()[0];
    EXPECT_EQ(end - begin, 120u);
    const auto place = file.begin() + static_cast<std::ptrdiff_t>(begin);
    EXPECT_EQ(Bytes(place - 4, place), Bytes(content.end() - 4, content.end()));
    EXPECT_EQ(writer.unused()[1].first, writer.unused()[1].second);
}

TEST(CompoundFileWriter, WhatADirectoryCannotHoldIsRefused) {
    const Text longest(31, u'x');
    EXPECT_EQ(strictly(CompoundFileWriter().stream(longest, {}).bytes()).size(), 1u);
    EXPECT_THROW(CompoundFileWriter().stream(longest + u"x", {}), std::invalid_argument);
    EXPECT_THROW(CompoundFileWriter().stream(u"a//b", {}), std::invalid_argument);
    EXPECT_THROW(CompoundFileWriter().stream(u"a", {}).stream(u"A/b", {}), std::invalid_argument);
}

// Both programs' idea of the format.
TEST(CompoundFileWriter, TheReaderFindsTheSame) {
    CompoundFileWriter writer;
    Contents expected;
    for (std::size_t i = 0; i < 40; ++i) {
        const Text name = toText(static_cast<long long>(i));
        writer.stream(name, filled(i * 300, i));
        expected[name] = filled(i * 300, i);
    }
    const Bytes file = writer.bytes();
    EXPECT_EQ(strictly(file), expected);
    Contents read;
    const access::CompoundFile reader(file, u"T");
    for (const access::CompoundEntry& entry : reader.entries()) {
        read[entry.name] = reader.stream(entry.id);
    }
    EXPECT_EQ(read, expected);
}

} // namespace
} // namespace relvane::samples
