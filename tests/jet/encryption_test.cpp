// Files that Access 2007 and later encrypted: which password opens them, what their pages decode to, and what damaged
// parameters end in.

#include <chrono>
#include <fstream>

#include <gtest/gtest.h>

#include "file_builder.h"
#include "jet/xml_elements.h"
#include "platform/native_path.h"
#include "sample_builder/many_tables.h"
#include "support/encrypted_ace.h"
#include "support/samples.h"

namespace relvane::jet {
namespace {

using test::AceEncryption;
using test::AceEncryptionSpec;

Bytes fromHex(std::string_view digits) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(std::string(digits.substr(i, 2)), nullptr, 16)));
    }
    return bytes;
}

// Parameters for the password "売上2010", and the first 32 bytes of page 7 of a file with the key 11223344, which are
// 0 to 31. Computed with other programs (Python's hashes, the openssl command), not with the code under test.
struct KnownEncryption {
    const char* name;
    std::string_view parameters, xml, page;
};

// clang-format off
constexpr KnownEncryption knownEncryptions[] = {
    {"RC4 128",
     "020002000400000024000000040000000000000001680000048000008000000001000000000000000000000050000000"
     "10000000404142434445464748494a4b4c4d4e4fbe0d381ba3202d77805a57fe817e3fc01400000002ac0badcf2a88c5"
     "5c739d8dbd25d65359ccc682",
     "",
     "386fb49b01c47bba992ad942d0de650312610615223f31b2abd5b6b9ca3981b2"},
    {"RC4 40",
     "020002000400000024000000040000000000000001680000048000002800000001000000000000000000000050000000"
     "10000000404142434445464748494a4b4c4d4e4f1646dc1a7041f34b22ce650b2dcec71e14000000311a54d6d9a8c325"
     "83b8e61680e77a3d5557542d",
     "",
     "e02a3eecca069df46b9d1194f146af8965c1063786d2207f4dca631e6783f37b"},
    {"AES 128",
     "03000200240000002400000024000000000000000e660000048000008000000018000000000000000000000050000000"
     "10000000404142434445464748494a4b4c4d4e4f0e30efc388d56a26f75a28cb298014b1140000000bd1342fbc90dd75"
     "4b33cf04232b5e257d8f934849bfab3eb8fd0c8dfbfcd291",
     "",
     "193d048dfbdb9b45839f18d378576d49de009f01258075ef70870d4a33ba235e"},
    {"AES 256",
     "030002002400000024000000240000000000000010660000048000000001000018000000000000000000000050000000"
     "10000000404142434445464748494a4b4c4d4e4f3cc9c5b1ce96cfb13a489454bd76166a1400000015a169d0d92c2d9f"
     "140c9edc0c4d2b6b1570a5b37ce78b6d3b2ecc06aa1c89e4",
     "",
     "1ce6846d86740ef6aa53be3cf1ea6ed314dae4bec9205b0e3942c561d73650a7"},
    {"Agile1 128",
     "04000400" "40000000",
     "<encryption><keyData saltSize=\"16\" blockSize=\"16\" keyBits=\"128\" hashSize=\"20\" cipherAlgori"
     "thm=\"AES\" cipherChaining=\"ChainingModeCBC\" hashAlgorithm=\"SHA1\" saltValue=\"QEFCQ0RFRkdISUp"
     "LTE1OTw==\"/><p:encryptedKey spinCount=\"100\" saltSize=\"16\" blockSize=\"16\" keyBits=\"128\" has"
     "hSize=\"20\" cipherAlgorithm=\"AES\" cipherChaining=\"ChainingModeCBC\" hashAlgorithm=\"SHA1\" sal"
     "tValue=\"QEFCQ0RFRkdISUpLTE1OTw==\" encryptedVerifierHashInput=\"chwfPvH++sZvmEvQsoyZBw==\" en"
     "cryptedVerifierHashValue=\"MaD2NeyCNorZ/3XTjJjhc3T29+vdsURCWJhwK5B9Sp4=\" encryptedKeyValue="
     "\"levTvHl5Hkdkd3Bz0OCESw==\"/></encryption>",
     "2a129b0856ad3fc4943538007d517f3737700bf554c4ec77dbf3089dfaa1bddb"},
    {"Agile512 256",
     "04000400" "40000000",
     "<encryption><keyData saltSize=\"16\" blockSize=\"16\" keyBits=\"256\" hashSize=\"64\" cipherAlgori"
     "thm=\"AES\" cipherChaining=\"ChainingModeCBC\" hashAlgorithm=\"SHA512\" saltValue=\"QEFCQ0RFRkdIS"
     "UpLTE1OTw==\"/><p:encryptedKey spinCount=\"100\" saltSize=\"16\" blockSize=\"16\" keyBits=\"256\" h"
     "ashSize=\"64\" cipherAlgorithm=\"AES\" cipherChaining=\"ChainingModeCBC\" hashAlgorithm=\"SHA512\""
     " saltValue=\"QEFCQ0RFRkdISUpLTE1OTw==\" encryptedVerifierHashInput=\"x/Xg5NPKQTHL+b9tSwF3zw=="
     "\" encryptedVerifierHashValue=\"Ga9E2HvqrZeKEc1LQK/Sklf4jdXh1zxgnCqmxC/HRZ4d4kIBet4YUK1MtWGE"
     "wHXxVj9fBbIa3Zu3LU3ex8hhAw==\" encryptedKeyValue=\"HO5og6XZNuxn22+nIJoop2n6RB5YUxoITfCq8ZvjV"
     "RU=\"/></encryption>",
     "3e044c1a62a5b033bd32ecb90adac2f36df74f6fa5de190f2156e16a0d9c0be3"},
};
// clang-format on

FileHeader headerOf(const KnownEncryption& known) {
    FileHeader header;
    header.encryptedByAce = true;
    header.pageKey = 0x11223344;
    header.encryption = fromHex(known.parameters);
    header.encryption.insert(header.encryption.end(), known.xml.begin(), known.xml.end());
    return header;
}

TEST(Encryption, PagesDecodeToWhatOtherProgramsEncrypted) {
    Bytes plain(32);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        plain[i] = static_cast<std::uint8_t>(i);
    }
    for (const KnownEncryption& known : knownEncryptions) {
        SCOPED_TRACE(known.name);
        const auto cipher = openPageCipher(headerOf(known), u"売上2010");
        Bytes page = fromHex(known.page);
        cipher->decode(7, page);
        EXPECT_EQ(page, plain);
        Bytes other = fromHex(known.page);
        cipher->decode(8, other);
        EXPECT_NE(other, plain); // each page has its own key or vector
    }
}

TEST(Encryption, AnotherPasswordIs3031) {
    for (const KnownEncryption& known : knownEncryptions) {
        SCOPED_TRACE(known.name);
        for (const TextView wrong : {u"売上2011", u"", u"売上2010 ", u"2010"}) {
            EXPECT_EQ(errorOf([&] { openPageCipher(headerOf(known), wrong); }), 3031);
        }
    }
}

TEST(Encryption, ParametersThatEndTooEarlyAre3049) {
    for (const KnownEncryption& known : knownEncryptions) {
        const FileHeader header = headerOf(known);
        const std::string_view behindLastValue = known.xml.empty() ? "" : "/></encryption>";
        for (std::size_t length = 0; length < header.encryption.size() - behindLastValue.size();
             length += 7) {
            FileHeader cut = header;
            cut.encryption.resize(length);
            const int error = errorOf([&] { openPageCipher(cut, u"売上2010"); });
            EXPECT_TRUE(error == 3049 || error == 3161) << known.name << ' ' << length << ' ' << error;
        }
    }
}

TEST(Encryption, AWayThatIsNotKnownIs3161) {
    FileHeader header;
    header.encryptedByAce = true;
    header.encryption = {4, 0, 3, 0, 0, 0, 0, 0}; // of a provider of its own
    EXPECT_EQ(errorOf([&] { openPageCipher(header, u"x"); }), 3161);

    header = headerOf(knownEncryptions[0]);
    header.encryption[12 + 8] = 2; // another algorithm in place of RC4
    EXPECT_EQ(errorOf([&] { openPageCipher(header, u"売上2010"); }), 3161);

    for (const auto& [from, to] : {std::pair("ChainingModeCBC", "ChainingModeCFB"), std::pair("AES", "DES"),
                                   std::pair("SHA512", "WHIRLP")}) {
        std::string xml(knownEncryptions[5].xml);
        for (std::size_t at = xml.find(from); at != std::string::npos; at = xml.find(from)) {
            xml.replace(at, std::string_view(from).size(), to);
        }
        KnownEncryption other = knownEncryptions[5];
        other.xml = xml;
        EXPECT_EQ(errorOf([&] { openPageCipher(headerOf(other), u"売上2010"); }), 3161) << to;
    }
}

TEST(Encryption, MoreRoundsThanTheDescriptorAllowsAreRefusedAtOnce) {
    for (const char* rounds : {"10000001", "4294967295", "99999999999999999999", "-1", "", "12x"}) {
        std::string xml(knownEncryptions[4].xml);
        const std::string before = "spinCount=\"100\"";
        xml.replace(xml.find(before), before.size(), "spinCount=\"" + std::string(rounds) + "\"");
        KnownEncryption many = knownEncryptions[4];
        many.xml = xml;
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(errorOf([&] { openPageCipher(headerOf(many), u"売上2010"); }), 3049) << rounds;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    }
}

// A whole file, page by page.

constexpr AceEncryption kinds[] = {AceEncryption::Rc4, AceEncryption::Aes, AceEncryption::Agile};

TEST(Encryption, AnEncryptedFileHasThePagesOfThePlainOne) {
    BareFile bare(4, jet4);
    for (std::uint32_t page = 1; page < 4; ++page) {
        for (std::size_t i = 0; i < jet4.pageSize; ++i) {
            bare.at(page, i) = static_cast<std::uint8_t>(i * page);
        }
    }
    const auto plain = bare.open();
    for (const AceEncryption kind : kinds) {
        for (const std::size_t keyBytes : {std::size_t{5}, std::size_t{16}, std::size_t{32}}) {
            if ((keyBytes == 5 && kind != AceEncryption::Rc4) ||
                (keyBytes == 32 && kind == AceEncryption::Rc4)) {
                continue;
            }
            SCOPED_TRACE(testing::Message() << static_cast<int>(kind) << ' ' << keyBytes);
            const Bytes bytes = test::encryptedByAce(bare.bytes(), {.kind = kind, .keyBytes = keyBytes});
            const PageFile file(makeMemorySource(bytes), u"鍵Key-1");
            EXPECT_TRUE(file.header().hasPassword());
            EXPECT_TRUE(file.header().password.empty());
            for (std::uint32_t page = 1; page < 4; ++page) {
                EXPECT_EQ(file.page(page).span().copy(), plain->page(page).span().copy());
                EXPECT_FALSE(std::ranges::equal(std::span(bytes).subspan(page * jet4.pageSize, jet4.pageSize),
                                                plain->page(page).span().bytes()));
            }
            EXPECT_EQ(errorOf([&] { PageFile(makeMemorySource(bytes), u"other"); }), 3031);
            EXPECT_EQ(errorOf([&] { PageFile(makeMemorySource(bytes)); }), 3031);
        }
    }
}

Bytes bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

Text firstRows(dao::Database& database) {
    Text all;
    for (const auto& table : database.TableDefs()) {
        all += table->Name() + u": ";
        skipErrors([&] {
            const auto rows = database.OpenRecordset(table->Name());
            for (int row = 0; row < 20 && !rows->EOF_(); ++row, rows->MoveNext()) {
                for (int field = 0; field < rows->FieldCount(); ++field) {
                    skipErrors([&] { all += toText(rows->Field(field)) + u","; });
                }
            }
        });
    }
    return all;
}

void expectSameWhenEncrypted(const Bytes& plain) {
    const Text rows = firstRows(*openDatabase(makeMemorySource(plain), u"plain.accdb"));
    ASSERT_GT(rows.size(), 1000u);
    for (const AceEncryption kind : kinds) {
        const Bytes bytes = test::encryptedByAce(plain, {.kind = kind});
        const auto database = openDatabase(makeMemorySource(bytes), u"x.accdb", {.password = u"鍵Key-1"});
        EXPECT_EQ(firstRows(*database), rows);
        EXPECT_EQ(errorOf([&] { openDatabase(makeMemorySource(bytes), u"x.accdb"); }), 3031);
    }
}

// There is no real encrypted file: real plain ones are encrypted here, and one of the builder.
TEST(Encryption, ARealFileThatIsEncryptedGivesTheSameTablesAndRows) {
    for (const char* name : {"later/queryTestV2007.accdb", "later/formPropTest.accdb"}) {
        if (const auto path = test::realSample(name)) {
            expectSameWhenEncrypted(bytesOf(*path));
        }
    }
}

TEST(Encryption, ABuiltFileThatIsEncryptedGivesTheSameTablesAndRows) {
    const samples::DatabaseSpec spec =
        samples::savedAs(samples::manyTables(3, 20), samples::FileFormat::Access2000);
    expectSameWhenEncrypted(samples::databaseBytes(spec));
}

TEST(Encryption, PagesThatDoNotDecodeAre3161) {
    Bytes bytes = test::encryptedByAce(BareFile(4, jet4).bytes(), {.kind = AceEncryption::Agile});
    EXPECT_EQ(errorOf([&] { openDatabase(makeMemorySource(bytes), u"x.accdb", {.password = u"鍵Key-1"}); }),
              3161);
}

TEST(Encryption, ALengthBeyondThePageIs3049) {
    Bytes bytes = test::encryptedByAce(BareFile(4, jet4).bytes(), {});
    bytes[header::encryptionLength + 1] = 0x80;
    EXPECT_EQ(errorOf([&] { PageFile(makeMemorySource(bytes), u"鍵Key-1"); }), 3049);
}

// ---- Passwords of Jet 3 and Jet 4, which leave the pages plain

TEST(Passwords, ARealFileOfAccess97OpensWithItsPasswordAlone) {
    if (const auto path = test::realSample("access97/password97.mdb")) {
        const Text file = textOfNativePath(path->native());
        EXPECT_EQ(errorOf([&] { openDatabase(file); }), 3031);
        EXPECT_EQ(errorOf([&] { openDatabase(file, {.password = u"wrong"}); }), 3031);
        const Text password = readFileHeader(*openByteFile(path->native())).password;
        ASSERT_FALSE(password.empty());
        EXPECT_EQ(openDatabase(file, {.password = password})->Version(), u"3.0");
    }
}

// One after the other, as Jet 4 masks it: with the whole days of the creation date.
TEST(Passwords, APasswordOfJet4IsMaskedWithTheCreationDate) {
    for (const double created : {0.0, 37000.75, -5.5}) {
        BareFile bare(3, jet4);
        const auto days = static_cast<std::uint32_t>(static_cast<std::int32_t>(created));
        const auto date = std::bit_cast<std::uint64_t>(created);
        for (std::size_t i = 0; i < 8; ++i) {
            bare.at(0, header::creationDate + i) ^= static_cast<std::uint8_t>(date >> (8 * i));
        }
        const Text password = u"ﾋﾐﾂの鍵";
        for (std::size_t i = 0; i < jet4.header.passwordLength; ++i) {
            const char16_t unit = i / 2 < password.size() ? password[i / 2] : u'\0';
            bare.at(0, header::password + i) ^= static_cast<std::uint8_t>(
                (i % 2 == 0 ? unit : unit >> 8) ^ static_cast<std::uint8_t>(days >> (8 * (i % 4))));
        }
        EXPECT_EQ(bare.open()->header().password, password);
        EXPECT_EQ(errorOf([&] { JetFile(makeMemorySource(bare.bytes())); }), 3031);
        EXPECT_EQ(errorOf([&] { JetFile(makeMemorySource(bare.bytes()), u"ﾋﾐﾂの"); }), 3031);
        // The right one goes on to the catalogue, which is not there.
        EXPECT_EQ(errorOf([&] { JetFile(makeMemorySource(bare.bytes()), password); }), 3049);
    }
}

TEST(Passwords, AFileWithoutOneOpensWithAny) {
    samples::DatabaseSpec spec;
    EXPECT_EQ(errorOf([&] {
                  openDatabase(makeMemorySource(samples::databaseBytes(spec)), u"x.mdb", {.password = u"x"});
              }),
              0);
}

// ---- The description in XML

TEST(XmlElements, AreReadWithTheirAttributesAndWithoutTheirPrefixes) {
    const auto elements = readXmlElements("<?xml version='1.0'?><a:b  c = \"1\"\r\nd='x>\"y'/><e></e>");
    ASSERT_GE(elements.size(), 3u);
    EXPECT_EQ(elements[1].name, "b");
    EXPECT_EQ(elements[1].attribute("c"), "1");
    EXPECT_EQ(elements[1].attribute("d"), "x>\"y");
    EXPECT_EQ(elements[1].attribute("f"), "");
    EXPECT_EQ(elements[2].name, "e");
}

TEST(XmlElements, BrokenTextsEnd) {
    for (const char* text :
         {"", "<", "<a", "<a b", "<a b=", "<a b='", "<a b='c", "<<<<", "a='b'", "</", "< ='x'"}) {
        for (const XmlElement& element : readXmlElements(text)) {
            EXPECT_TRUE(element.attributes.empty()) << text;
        }
    }
}

} // namespace
} // namespace relvane::jet
