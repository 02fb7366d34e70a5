// The encryption that describes itself in XML. One key encrypts all pages, each with an initial vector of its own; that
// key is kept in the parameters, encrypted with another that is made from the password.

#include <algorithm>
#include <charconv>
#include <string>

#include "jet/office_cipher.h"
#include "jet/xml_elements.h"

namespace relvane::jet {
namespace {

// What the descriptor allows. Office itself makes 100,000 rounds; the most take some seconds.
constexpr std::uint32_t mostRounds = 10'000'000;
constexpr std::uint32_t longestValue = 4096;

// Hashed behind the password to make the keys of the three encrypted values.
constexpr std::uint8_t verifierBlock[] = {0xFE, 0xA7, 0xD2, 0x76, 0x3B, 0x4B, 0x9E, 0x79};
constexpr std::uint8_t verifierHashBlock[] = {0xD7, 0xAA, 0x0F, 0x6D, 0x30, 0x61, 0x34, 0x4E};
constexpr std::uint8_t pagesKeyBlock[] = {0x14, 0x6E, 0x0B, 0xE7, 0xAB, 0xAC, 0xD0, 0xD6};

struct HashName {
    std::string_view name;
    HashKind kind;
};
constexpr HashName hashNames[] = {{"SHA1", HashKind::Sha1},
                                  {"SHA-1", HashKind::Sha1},
                                  {"SHA256", HashKind::Sha256},
                                  {"SHA384", HashKind::Sha384},
                                  {"SHA512", HashKind::Sha512}};

[[noreturn]] void failDescriptor() {
    failDamaged(0, u"暗号化の情報が正しくありません");
}

std::uint32_t numberOf(const XmlElement& element, std::string_view name, std::uint32_t most) {
    const std::string_view text = element.attribute(name);
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number > most) {
        failDescriptor();
    }
    return number;
}

std::uint8_t base64Value(char c) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t value = digits.find(c);
    if (value == std::string_view::npos) {
        failDescriptor();
    }
    return static_cast<std::uint8_t>(value);
}

Bytes bytesOf(const XmlElement& element, std::string_view name) {
    std::string_view text = element.attribute(name);
    while (text.ends_with('=')) {
        text.remove_suffix(1);
    }
    Bytes bytes;
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : text) {
        bits = bits << 6 | base64Value(c);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> count));
        }
    }
    return bytes;
}

// What both elements say about their cipher.
struct AgileKey {
    HashKind hash{};
    std::size_t keyBytes = 0;
    Bytes salt;

    explicit AgileKey(const XmlElement& element) : salt(bytesOf(element, "saltValue")) {
        const auto found = std::ranges::find(hashNames, element.attribute("hashAlgorithm"), &HashName::name);
        keyBytes = numberOf(element, "keyBits", longestValue) / 8;
        if (found == std::end(hashNames) || element.attribute("cipherAlgorithm") != "AES" ||
            element.attribute("cipherChaining") != "ChainingModeCBC" ||
            (keyBytes != 16 && keyBytes != 24 && keyBytes != 32) ||
            numberOf(element, "blockSize", longestValue) != aesBlock) {
            failUnknownEncryption();
        }
        hash = found->kind;
    }
};

template <class Container>
Container fitted(Container bytes, std::size_t size) {
    constexpr std::uint8_t filler = 0x36;
    bytes.resize(size, filler);
    return bytes;
}

// The encrypted values of the password's element.
class PasswordKey {
public:
    PasswordKey(const XmlElement& element, const SecretBytes& password) : element_(element), key_(element) {
        const std::uint32_t rounds = numberOf(element, "spinCount", mostRounds);
        passwordHash_ = hashOf(key_.hash, {key_.salt, password});
        for (std::uint32_t round = 0; round < rounds; ++round) {
            passwordHash_ = hashOf(key_.hash, {littleEndian(round), passwordHash_});
        }
    }

    SecretBytes value(std::string_view name, ByteView block) const {
        const Bytes encrypted = bytesOf(element_, name);
        if (encrypted.empty() || encrypted.size() % aesBlock != 0) {
            failDescriptor();
        }
        SecretBytes value(encrypted.begin(), encrypted.end());
        const SecretBytes key = fitted(hashOf(key_.hash, {passwordHash_, block}), key_.keyBytes);
        applyAesCbc(Direction::Decode, key, fitted(key_.salt, aesBlock), value);
        return value;
    }

    bool isRight() const {
        SecretBytes verifier = value("encryptedVerifierHashInput", verifierBlock);
        verifier.resize(std::min(verifier.size(), key_.salt.size())); // without what fills the block
        const SecretBytes stored = value("encryptedVerifierHashValue", verifierHashBlock);
        const SecretBytes hash = hashOf(key_.hash, {verifier});
        return stored.size() >= hash.size() && std::equal(hash.begin(), hash.end(), stored.begin());
    }

private:
    const XmlElement& element_;
    AgileKey key_;
    SecretBytes passwordHash_;
};

class AgilePages : public PageCipher {
public:
    AgilePages(const XmlElement& keyData, const PasswordKey& password, std::uint32_t fileKey)
        : pages_(keyData), fileKey_(fileKey), key_(password.value("encryptedKeyValue", pagesKeyBlock)) {
        if (key_.size() < pages_.keyBytes) {
            failDescriptor();
        }
        key_.resize(pages_.keyBytes);
    }

    void decode(std::uint32_t page, std::span<std::uint8_t> bytes) const override {
        const SecretBytes vector =
            fitted(hashOf(pages_.hash, {pages_.salt, pageKeyBytes(fileKey_, page)}), aesBlock);
        applyAesCbc(Direction::Decode, key_, vector, bytes);
    }

private:
    AgileKey pages_;
    std::uint32_t fileKey_;
    SecretBytes key_;
};

} // namespace

std::unique_ptr<PageCipher> openAgileCipher(const ByteSpan& xml, std::uint32_t fileKey,
                                            const SecretBytes& password) {
    const std::string text(xml.bytes().begin(), xml.bytes().end());
    const auto elements = readXmlElements(text);
    const auto pages = std::ranges::find(elements, "keyData", &XmlElement::name);
    // A certificate can hold the key as well, in an element of the same name that knows no rounds.
    const auto key = std::ranges::find_if(elements, [](const XmlElement& element) {
        return element.name == "encryptedKey" && !element.attribute("spinCount").empty();
    });
    if (pages == elements.end() || key == elements.end()) {
        failDescriptor();
    }
    const PasswordKey passwordKey(*key, password);
    if (!passwordKey.isRight()) {
        throw RunTimeError(ErrorNumber::WrongPassword);
    }
    return std::make_unique<AgilePages>(*pages, passwordKey, fileKey);
}

} // namespace relvane::jet
