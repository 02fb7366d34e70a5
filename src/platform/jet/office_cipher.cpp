#include "jet/office_cipher.h"

#include <algorithm>
#include <array>

namespace relvane::jet {
namespace {

// Parameters in binary form: u16 major and minor version, then
namespace binary {
constexpr std::size_t flags = 4, headLength = 8, head = 12;
// in the head
constexpr std::size_t algorithm = 8, hashAlgorithm = 12, keyBits = 16; // all u32
// behind the head
constexpr std::size_t saltLength = 0, salt = 4, verifier = 20, hashLength = 36, verifierHash = 40;
} // namespace binary

constexpr std::uint32_t cryptoApiFlag = 0x04, aesFlag = 0x20;
constexpr std::uint32_t rc4Algorithm = 0x6801, sha1Algorithm = 0x8004;
constexpr std::size_t verifierBytes = 16, sha1Bytes = 20;
constexpr std::uint32_t aesRounds = 50000;
constexpr std::uint32_t verifierKey = 0; // stands in the place of a page's key

struct AesKeySize {
    std::uint32_t algorithm;
    std::size_t bytes;
};
constexpr AesKeySize aesKeySizes[] = {{0x660E, 16}, {0x660F, 24}, {0x6610, 32}};

struct BinaryParameters {
    std::uint32_t algorithm = 0, keyBits = 0;
    bool isAes = false;
    ByteSpan salt, verifier, verifierHash;
};

BinaryParameters readParameters(const ByteSpan& bytes) {
    BinaryParameters parameters;
    const ByteSpan head = bytes.part(binary::head, bytes.u32(binary::headLength));
    const ByteSpan tail = bytes.from(binary::head + head.size());
    const std::uint32_t flags = bytes.u32(binary::flags), hash = head.u32(binary::hashAlgorithm);
    parameters.isAes = (flags & aesFlag) != 0;
    parameters.algorithm = head.u32(binary::algorithm);
    parameters.keyBits = head.u32(binary::keyBits);
    if ((flags & cryptoApiFlag) == 0 || (hash != 0 && hash != sha1Algorithm)) {
        failUnknownEncryption();
    }
    tail.require(tail.u32(binary::saltLength) == verifierBytes && tail.u32(binary::hashLength) == sha1Bytes,
                 u"暗号化の情報が正しくありません");
    parameters.salt = tail.part(binary::salt, verifierBytes);
    parameters.verifier = tail.part(binary::verifier, verifierBytes);
    // AES ends with a whole block.
    constexpr std::size_t wholeBlocks = (sha1Bytes + aesBlock - 1) / aesBlock * aesBlock;
    parameters.verifierHash = tail.part(binary::verifierHash, parameters.isAes ? wholeBlocks : sha1Bytes);
    return parameters;
}

// The verifier and its hash, encrypted one behind the other.
bool verifies(const SecretBytes& plain) {
    const ByteView bytes(plain);
    return std::ranges::equal(hashOf(HashKind::Sha1, {bytes.first(verifierBytes)}),
                              bytes.subspan(verifierBytes, sha1Bytes));
}

SecretBytes encryptedVerifier(const BinaryParameters& parameters) {
    SecretBytes both;
    for (const ByteSpan& part : {parameters.verifier, parameters.verifierHash}) {
        both.insert(both.end(), part.bytes().begin(), part.bytes().end());
    }
    return both;
}

// RC4 with a key of its own for each page.
class Rc4Pages : public PageCipher {
public:
    Rc4Pages(const BinaryParameters& parameters, std::uint32_t fileKey, const SecretBytes& password)
        : fileKey_(fileKey),
          passwordHash_(hashOf(HashKind::Sha1, {parameters.salt.bytes(), password})),
          keyBytes_(parameters.keyBits == 0 ? shortKey : parameters.keyBits / 8) {
        if (parameters.algorithm != rc4Algorithm || keyBytes_ < shortKey || keyBytes_ > longKey) {
            failUnknownEncryption();
        }
        SecretBytes verifier = encryptedVerifier(parameters);
        applyRc4(key(littleEndian(verifierKey)), verifier);
        if (!verifies(verifier)) {
            throw RunTimeError(ErrorNumber::WrongPassword);
        }
    }

    void decode(std::uint32_t page, std::span<std::uint8_t> bytes) const override {
        applyRc4(key(pageKeyBytes(fileKey_, page)), bytes);
    }

private:
    static constexpr std::size_t shortKey = 5, longKey = 16;

    // A key of 40 bits is filled up with zeros.
    SecretBytes key(ByteView block) const {
        SecretBytes key = hashOf(HashKind::Sha1, {passwordHash_, block});
        key.resize(keyBytes_);
        if (keyBytes_ == shortKey) {
            key.resize(longKey);
        }
        return key;
    }

    std::uint32_t fileKey_;
    SecretBytes passwordHash_;
    std::size_t keyBytes_;
};

// AES, block by block, with a key of its own for each page.
class AesPages : public PageCipher {
public:
    AesPages(const BinaryParameters& parameters, std::uint32_t fileKey, const SecretBytes& password)
        : fileKey_(fileKey) {
        const auto size = std::ranges::find(aesKeySizes, parameters.algorithm, &AesKeySize::algorithm);
        if (size == std::end(aesKeySizes)) {
            failUnknownEncryption();
        }
        keyBytes_ = size->bytes;
        passwordHash_ = hashOf(HashKind::Sha1, {parameters.salt.bytes(), password});
        for (std::uint32_t round = 0; round < aesRounds; ++round) {
            passwordHash_ = hashOf(HashKind::Sha1, {littleEndian(round), passwordHash_});
        }
        SecretBytes verifier = encryptedVerifier(parameters);
        applyAesEcb(Direction::Decode, key(littleEndian(verifierKey)), verifier);
        if (!verifies(verifier)) {
            throw RunTimeError(ErrorNumber::WrongPassword);
        }
    }

    void decode(std::uint32_t page, std::span<std::uint8_t> bytes) const override {
        applyAesEcb(Direction::Decode, key(pageKeyBytes(fileKey_, page)), bytes);
    }

private:
    // One hash is too short for the longest key: there are two, of the same hash mixed with two constants.
    SecretBytes key(ByteView block) const {
        const SecretBytes hash = hashOf(HashKind::Sha1, {passwordHash_, block});
        SecretBytes key;
        for (const std::uint8_t constant : {std::uint8_t{0x36}, std::uint8_t{0x5C}}) {
            SecretBytes mixed(64, constant);
            std::ranges::transform(hash, mixed, mixed.begin(),
                                   [](std::uint8_t a, std::uint8_t b) { return std::uint8_t(a ^ b); });
            const SecretBytes half = hashOf(HashKind::Sha1, {mixed});
            key.insert(key.end(), half.begin(), half.end());
        }
        key.resize(keyBytes_);
        return key;
    }

    std::uint32_t fileKey_;
    SecretBytes passwordHash_;
    std::size_t keyBytes_ = 0;
};

SecretBytes utf16Bytes(TextView text) {
    SecretBytes bytes;
    bytes.reserve(text.size() * 2);
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<std::uint8_t>(unit));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return bytes;
}

} // namespace

void failUnknownEncryption() {
    throw RunTimeError(ErrorNumber::DecryptionFailed, u"知らない方式です");
}

std::unique_ptr<PageCipher> openOfficeCipher(const FileHeader& header, TextView password) {
    if (password.empty()) { // no such file: it could be opened by anybody
        throw RunTimeError(ErrorNumber::WrongPassword);
    }
    const ByteSpan bytes(header.encryption, 0);
    const SecretBytes secret = utf16Bytes(password);
    const std::uint16_t major = bytes.u16(0), minor = bytes.u16(2);
    constexpr std::size_t behindVersion = 8; // and behind four bytes that say nothing
    if (major == 4 && minor == 4) {
        return openAgileCipher(bytes.from(behindVersion), header.pageKey, secret);
    }
    if (major >= 2 && major <= 4 && minor == 2) {
        const BinaryParameters parameters = readParameters(bytes);
        if (parameters.isAes) {
            return std::make_unique<AesPages>(parameters, header.pageKey, secret);
        }
        return std::make_unique<Rc4Pages>(parameters, header.pageKey, secret);
    }
    failUnknownEncryption();
}

} // namespace relvane::jet
