// Finding designs in a file: both places, and what is said when one is missing or damaged. The damage is done to a
// copy in memory.

#include "access/design_source.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "support/samples.h"

namespace relvane::access {
namespace {

std::optional<Bytes> bytesOf(const std::string& name) {
    const auto path = test::realSample(name);
    if (!path) {
        return std::nullopt;
    }
    std::ifstream file(*path, std::ios::binary);
    return Bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

DesignSource sourceOf(const Bytes& bytes) {
    return DesignSource(std::make_shared<const jet::JetFile>(jet::makeMemorySource(bytes)));
}

// Where the bytes stand; the end when they do not.
std::size_t placeOf(const Bytes& bytes, std::span<const std::uint8_t> wanted, std::size_t from = 0) {
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return static_cast<std::size_t>(std::search(begin, bytes.end(), wanted.begin(), wanted.end()) -
                                    bytes.begin());
}

void expectDamage(const DesignSource& source, DesignKind kind, TextView name, TextView reason) {
    const DesignDocument* document = source.find(kind, name);
    ASSERT_NE(document, nullptr);
    try {
        source.design(*document);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        EXPECT_NE(error.description().find(document->title()), Text::npos) << error.what();
        EXPECT_NE(error.description().find(reason), Text::npos) << error.what();
    }
}

// A form of nwind.mdb with code, and one without.
constexpr TextView withCode = u"Sales Reports Dialog", withoutCode = u"Categories";

TEST(DesignSource, AFormLiesInTheCatalogueOrBesideItsModule) {
    const auto bytes = bytesOf("access97/nwind.mdb");
    if (!bytes) {
        return;
    }
    const DesignSource source = sourceOf(*bytes);
    EXPECT_EQ(source.forms().size(), 21u);
    EXPECT_EQ(source.reports().size(), 13u);
    const DesignDocument& plain = *source.find(DesignKind::Form, u"CATEGORIES");
    EXPECT_EQ(plain.name, withoutCode);
    EXPECT_EQ(plain.title(), u"フォーム \"Categories\"");
    EXPECT_FALSE(plain.hasModule);
    EXPECT_EQ(source.streams(plain).place, DesignPlace::Catalogue);
    const DesignDocument& coded = *source.find(DesignKind::Form, withCode);
    EXPECT_TRUE(coded.hasModule);
    EXPECT_EQ(source.streams(coded).place, DesignPlace::ModuleRow);
    EXPECT_EQ(source.find(DesignKind::Report, withCode), nullptr);
    EXPECT_EQ(source.find(DesignKind::Form, u"no such form"), nullptr);
    EXPECT_EQ(std::ranges::count_if(source.forms(), &DesignDocument::hasModule), 10);
    EXPECT_EQ(std::ranges::count_if(source.reports(), &DesignDocument::hasModule), 2);
}

// A file that no newer Access has opened: there is no copy anywhere else. Both objects have code.
constexpr const char* oneStore = "access97/CodBarra39Etiquetas.mdb";
constexpr TextView itsForm = u"fDialogoSelecionar", itsReport = u"rpt_BarCode";

Bytes withoutRow(Bytes bytes, std::string_view rowName) {
    const Bytes wanted(rowName.begin(), rowName.end());
    std::size_t found = 0;
    for (std::size_t at = placeOf(bytes, wanted); at != bytes.size(); at = placeOf(bytes, wanted, at + 1)) {
        bytes[at] = 'X';
        ++found;
    }
    EXPECT_GT(found, 0u);
    return bytes;
}

TEST(DesignSource, AMissingModuleRowNamesTheForm) {
    const auto bytes = bytesOf(oneStore);
    if (!bytes) {
        return;
    }
    const DesignSource source = sourceOf(withoutRow(*bytes, "Form_fDialogoSelecionar"));
    EXPECT_FALSE(source.find(DesignKind::Form, itsForm)->hasModule);
    expectDamage(source, DesignKind::Form, itsForm, u"デザインも、モジュールの行もありません");
    EXPECT_NO_THROW(source.design(*source.find(DesignKind::Report, itsReport)));
}

TEST(DesignSource, ADamagedTableOfModulesIsNamedByTheFormsThatNeedIt) {
    auto bytes = bytesOf(oneStore);
    if (!bytes) {
        return;
    }
    {
        const jet::JetFile file(jet::makeMemorySource(*bytes));
        const jet::Table* modules = file.findTable(u"MSysModules2");
        ASSERT_NE(modules, nullptr);
        const std::size_t page = modules->definition().page;
        (*bytes)[page * file.pages().format().pageSize] = 1; // no longer a definition
    }
    const DesignSource source = sourceOf(*bytes);
    expectDamage(source, DesignKind::Form, itsForm, u"ページ ");
}

// A newer Access has added its own copy of everything to this one.
TEST(DesignSource, WithoutItsRowTheCopyOfANewerAccessGivesTheSameDesign) {
    const auto bytes = bytesOf("access97/nwind.mdb");
    if (!bytes) {
        return;
    }
    const DesignSource whole = sourceOf(*bytes),
                       source = sourceOf(withoutRow(*bytes, "Form_Sales Reports Dialog"));
    const DesignStreams first = whole.streams(*whole.find(DesignKind::Form, withCode)),
                        copy = source.streams(*source.find(DesignKind::Form, withCode));
    EXPECT_EQ(first.place, DesignPlace::ModuleRow);
    EXPECT_EQ(copy.place, DesignPlace::Store);
    EXPECT_EQ(first.design, copy.design);
    EXPECT_EQ(source.design(*source.find(DesignKind::Form, withCode))->version(), 17);
}

// Where the stream of a form begins in the file.
std::size_t streamPlace(const Bytes& bytes, TextView form) {
    const DesignSource source = sourceOf(bytes);
    const Bytes stream = source.streams(*source.find(DesignKind::Form, form)).design;
    return placeOf(bytes, std::span(stream).first(64));
}

TEST(DesignSource, ABrokenChainOfALongValueNamesTheForm) {
    auto bytes = bytesOf("access97/nwind.mdb");
    if (!bytes) {
        return;
    }
    const std::size_t place = streamPlace(*bytes, withoutCode);
    ASSERT_LT(place, bytes->size());
    for (std::size_t i = 1; i <= 4; ++i) {
        (*bytes)[place - i] = 0; // the place of the next piece stands before the first one's bytes
    }
    expectDamage(sourceOf(*bytes), DesignKind::Form, withoutCode, u"長い値");
}

TEST(DesignSource, ADamagedStreamNamesTheFormAndTheOffset) {
    const auto whole = bytesOf("access97/nwind.mdb");
    if (!whole) {
        return;
    }
    const std::size_t place = streamPlace(*whole, withCode);
    ASSERT_LT(place, whole->size());
    const auto changed = [&](std::size_t offset, std::uint8_t byte) {
        Bytes bytes = *whole;
        bytes[place + offset] = byte;
        return sourceOf(bytes);
    };
    expectDamage(changed(8, 0x97), DesignKind::Form, withCode, u" 8 バイト目: 種類が違います");
    expectDamage(changed(11, 0x05), DesignKind::Form, withCode, u" 11 バイト目: プロパティの順序が");
    expectDamage(changed(4, 0x01), DesignKind::Form, withCode, u" 0 バイト目: 見出し");
}

TEST(DesignSource, ANewerFileKeepsDesignsInItsStore) {
    const std::pair<const char*, TextView> files[] = {{"later/vbaV2000.mdb", u"MSysAccessObjects: Forms/"},
                                                      {"later/vbaV2003.mdb", u"MSysAccessStorage: Forms/"},
                                                      {"later/vbaV2007.accdb", u"MSysAccessStorage: Forms/"}};
    for (const auto& [name, path] : files) {
        const auto bytes = bytesOf(name);
        if (!bytes) {
            return;
        }
        const DesignSource source = sourceOf(*bytes);
        ASSERT_EQ(source.forms().size(), 1u);
        const DesignStreams streams = source.streams(source.forms().front());
        EXPECT_EQ(streams.place, DesignPlace::Store);
        EXPECT_TRUE(streams.path.starts_with(path)) << toUtf8(streams.path);
        EXPECT_FALSE(streams.design.empty());
        EXPECT_TRUE(agrees(source.typeInfo(source.forms().front()), *source.design(source.forms().front())));
    }
}

TEST(DesignSource, TheListOfNamesOfANewerFileHasItsOwnOrderAndTheSameNames) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    std::size_t objects = 0;
    for (const char* name : {"later/northwind-2000-ja.mdb", "later/formPropTest.accdb"}) {
        const DesignSource source = sourceOf(*bytesOf(name));
        for (const auto* documents : {&source.forms(), &source.reports()}) {
            for (const DesignDocument& document : *documents) {
                SCOPED_TRACE(toUtf8(document.name));
                EXPECT_TRUE(agrees(source.typeInfo(document), *source.design(document)));
                ++objects;
            }
        }
    }
    EXPECT_EQ(objects, 40u);
}

} // namespace
} // namespace relvane::access
