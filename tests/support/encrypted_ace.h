// Encrypts database files as Access 2007 and later do, for tests of their reader: plain pages in, encrypted ones and
// their parameters out.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "jet/ciphers.h"
#include "jet/jet_format.h"
#include "platform/text.h"
#include "platform/value.h"

namespace relvane::test {

enum class AceEncryption { Rc4, Aes, Agile };

struct AceEncryptionSpec {
    AceEncryption kind = AceEncryption::Agile;
    Text password = u"鍵Key-1";
    std::size_t keyBytes = 16; // 5 (RC4), 16, 24 (AES), 32 (AES)
    jet::HashKind hash = jet::HashKind::Sha512;
    std::string hashName = "SHA512"; // both of Agile
    std::string rounds = "1000";     // of Agile, as the parameters say it
    std::uint32_t fileKey = 0x5A17C3E9;
};

class AceEncrypter {
public:
    explicit AceEncrypter(AceEncryptionSpec spec) : spec_(std::move(spec)) {
        for (const char16_t unit : spec_.password) {
            password_.push_back(static_cast<std::uint8_t>(unit));
            password_.push_back(static_cast<std::uint8_t>(unit >> 8));
        }
        passwordHash_ = spec_.kind == AceEncryption::Agile ? spun(spec_.hash, std::stoul(spec_.rounds))
                        : spec_.kind == AceEncryption::Aes ? spun(jet::HashKind::Sha1, 50000)
                                                           : spun(jet::HashKind::Sha1, 0);
    }

    // `file` is a Jet 4 or ACE file with plain pages.
    Bytes encrypt(Bytes file) {
        std::memcpy(&file[jet::header::signature], "Standard ACE DB", 16);
        file[jet::header::version] = std::max<std::uint8_t>(file[jet::header::version], 2);
        for (std::size_t i = 0; i < 4; ++i) {
            const std::size_t at = jet::header::databaseKey + i;
            file[at] = static_cast<std::uint8_t>(spec_.fileKey >> (8 * i)) ^
                       jet::header::mask[at - jet::header::masked];
        }
        const Bytes described = parameters();
        file[jet::header::encryptionLength] = static_cast<std::uint8_t>(described.size());
        file[jet::header::encryptionLength + 1] = static_cast<std::uint8_t>(described.size() >> 8);
        std::ranges::copy(described, file.begin() + jet::header::encryption);
        for (std::size_t page = 1; page < file.size() / jet::jet4.pageSize; ++page) {
            encryptPage(static_cast<std::uint32_t>(page),
                        std::span(file).subspan(page * jet::jet4.pageSize, jet::jet4.pageSize));
        }
        return file;
    }

private:
    using Secret = jet::SecretBytes;
    using View = jet::ByteView;

    static void put32(Bytes& bytes, std::uint32_t number) {
        const auto four = jet::littleEndian(number);
        bytes.insert(bytes.end(), four.begin(), four.end());
    }
    template <class Part>
    static void put(Bytes& bytes, const Part& part) {
        bytes.insert(bytes.end(), part.begin(), part.end());
    }

    Bytes salt() const { return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}; }
    Bytes verifier() const { return {9, 9, 8, 8, 7, 7, 6, 6, 5, 5, 4, 4, 3, 3, 2, 2}; }
    // The key of the pages in Agile.
    Bytes pagesKey() const { return Bytes(spec_.keyBytes, 0xA5); }

    Secret spun(jet::HashKind kind, unsigned long rounds) const {
        Secret hash = jet::hashOf(kind, {salt(), password_});
        for (std::uint32_t round = 0; round < rounds; ++round) {
            hash = jet::hashOf(kind, {jet::littleEndian(round), hash});
        }
        return hash;
    }

    Secret binaryKey(View block) const {
        const bool isAes = spec_.kind == AceEncryption::Aes;
        Secret hash = jet::hashOf(jet::HashKind::Sha1, {passwordHash_, block});
        if (!isAes) {
            hash.resize(spec_.keyBytes);
            hash.resize(16);
            return hash;
        }
        Secret inner(64, 0x36), outer(64, 0x5C);
        for (std::size_t i = 0; i < hash.size(); ++i) {
            inner[i] ^= hash[i];
            outer[i] ^= hash[i];
        }
        Secret key = jet::hashOf(jet::HashKind::Sha1, {inner});
        const Secret rest = jet::hashOf(jet::HashKind::Sha1, {outer});
        key.insert(key.end(), rest.begin(), rest.end());
        key.resize(spec_.keyBytes);
        return key;
    }

    Bytes parameters() const {
        return spec_.kind == AceEncryption::Agile ? agileParameters() : binaryParameters();
    }

    Bytes binaryParameters() const {
        const bool isAes = spec_.kind == AceEncryption::Aes;
        const std::uint32_t flags = isAes ? 0x24 : 0x04;
        Bytes head;
        put32(head, flags);
        put32(head, 0);
        put32(head, !isAes ? 0x6801 : spec_.keyBytes == 16 ? 0x660E : spec_.keyBytes == 24 ? 0x660F : 0x6610);
        put32(head, 0x8004);
        put32(head, static_cast<std::uint32_t>(spec_.keyBytes * 8));
        put32(head, isAes ? 0x18 : 1);
        put32(head, 0);
        put32(head, 0);
        put(head, std::string_view("P\0r\0o\0v\0i\0d\0e\0r\0\0\0", 18));

        Bytes both = verifier();
        put(both, jet::hashOf(jet::HashKind::Sha1, {both}));
        const Secret key = binaryKey(jet::littleEndian(0));
        if (isAes) {
            both.resize(48);
            jet::applyAesEcb(jet::Direction::Encode, key, both);
        } else {
            jet::applyRc4(key, both);
        }
        Bytes all;
        put32(all, isAes ? 0x00020003 : 0x00020002); // version 3.2, 2.2
        put32(all, flags);
        put32(all, static_cast<std::uint32_t>(head.size()));
        put(all, head);
        put32(all, 16);
        put(all, salt());
        put(all, View(both).first(16));
        put32(all, 20);
        put(all, View(both).subspan(16));
        return all;
    }

    std::string encryptedValue(Bytes value, std::initializer_list<std::uint8_t> block) const {
        value.resize((value.size() + 15) / 16 * 16);
        Secret key = jet::hashOf(spec_.hash, {passwordHash_, View(block.begin(), block.end())});
        key.resize(spec_.keyBytes, 0x36);
        jet::applyAesCbc(jet::Direction::Encode, key, salt(), value);
        return base64(value);
    }

    static std::string base64(const Bytes& bytes) {
        constexpr std::string_view digits =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        std::string text;
        for (std::size_t i = 0; i < bytes.size(); i += 3) {
            std::uint32_t three = 0;
            for (std::size_t k = 0; k < 3; ++k) {
                three = three << 8 | (i + k < bytes.size() ? bytes[i + k] : 0u);
            }
            for (std::size_t k = 0; k < 4; ++k) {
                text += i + k > bytes.size() ? '=' : digits[three >> (18 - 6 * k) & 0x3F];
            }
        }
        return text;
    }

    Bytes agileParameters() const {
        const Secret hash = jet::hashOf(spec_.hash, {verifier()});
        const std::string common = "saltSize=\"16\" blockSize=\"16\" keyBits=\"" +
                                   std::to_string(spec_.keyBytes * 8) + "\" hashSize=\"" +
                                   std::to_string(hash.size()) +
                                   "\" cipherAlgorithm=\"AES\" cipherChaining=\"ChainingModeCBC\" "
                                   "hashAlgorithm=\"" +
                                   spec_.hashName + "\" saltValue=\"" + base64(salt()) + "\"";
        const std::string xml =
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<encryption><keyData " +
            common + "/><keyEncryptors><keyEncryptor uri=\"password\"><p:encryptedKey spinCount=\"" +
            spec_.rounds + "\" " + common + " encryptedVerifierHashInput=\"" +
            encryptedValue(verifier(), {0xFE, 0xA7, 0xD2, 0x76, 0x3B, 0x4B, 0x9E, 0x79}) +
            "\" encryptedVerifierHashValue=\"" +
            encryptedValue({hash.begin(), hash.end()}, {0xD7, 0xAA, 0x0F, 0x6D, 0x30, 0x61, 0x34, 0x4E}) +
            "\" encryptedKeyValue=\"" +
            encryptedValue(pagesKey(), {0x14, 0x6E, 0x0B, 0xE7, 0xAB, 0xAC, 0xD0, 0xD6}) +
            "\"/></keyEncryptor></keyEncryptors></encryption>";
        Bytes all;
        put32(all, 0x00040004);
        put32(all, 0x40);
        put(all, xml);
        return all;
    }

    void encryptPage(std::uint32_t page, std::span<std::uint8_t> bytes) const {
        const auto block = jet::littleEndian(spec_.fileKey ^ page);
        switch (spec_.kind) {
        case AceEncryption::Rc4:
            return jet::applyRc4(binaryKey(block), bytes);
        case AceEncryption::Aes:
            return jet::applyAesEcb(jet::Direction::Encode, binaryKey(block), bytes);
        case AceEncryption::Agile:
            Secret vector = jet::hashOf(spec_.hash, {salt(), block});
            vector.resize(16);
            return jet::applyAesCbc(jet::Direction::Encode, pagesKey(), vector, bytes);
        }
    }

    AceEncryptionSpec spec_;
    Secret password_, passwordHash_;
};

inline Bytes encryptedByAce(Bytes plain, AceEncryptionSpec spec) {
    return AceEncrypter(std::move(spec)).encrypt(std::move(plain));
}

} // namespace relvane::test
