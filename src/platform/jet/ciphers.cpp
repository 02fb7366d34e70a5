#include "jet/ciphers.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include <nettle/arcfour.h>
#include <nettle/cbc.h>
#include <nettle/nettle-meta.h>
#include <nettle/sha1.h>
#include <nettle/sha2.h>

#include "platform/runtime_error.h"

namespace relvane::jet {
namespace {

// The state of a cipher or hash, gone with the object.
template <class State>
struct WipedState : State {
    ~WipedState() { explicit_bzero(static_cast<State*>(this), sizeof(State)); }
};

struct alignas(std::max_align_t) HashState {
    std::array<std::uint8_t, std::max({sizeof(sha1_ctx), sizeof(sha256_ctx), sizeof(sha512_ctx)})> bytes;
};
struct alignas(std::max_align_t) AesState {
    std::array<std::uint8_t, sizeof(aes256_ctx)> bytes;
};

const nettle_cipher* const aesCiphers[] = {&nettle_aes128, &nettle_aes192, &nettle_aes256};

// The order of HashKind.
const nettle_hash* const hashes[] = {&nettle_sha1, &nettle_sha256, &nettle_sha384, &nettle_sha512};

void require(bool holds) {
    if (!holds) {
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    }
}

const nettle_cipher& aesOf(ByteView key, std::span<const std::uint8_t> data) {
    const auto found = std::ranges::find(aesCiphers, key.size(), &nettle_cipher::key_size);
    require(found != std::end(aesCiphers) && data.size() % aesBlock == 0);
    return **found;
}

// Gives `run` the keyed state and the function that turns blocks.
template <class Run>
void withAes(const nettle_cipher& aes, Direction direction, ByteView key, Run run) {
    WipedState<AesState> state;
    if (direction == Direction::Encode) {
        aes.set_encrypt_key(state.bytes.data(), key.data());
        run(state.bytes.data(), aes.encrypt);
    } else {
        aes.set_decrypt_key(state.bytes.data(), key.data());
        run(state.bytes.data(), aes.decrypt);
    }
}

} // namespace

void applyRc4(ByteView key, std::span<std::uint8_t> data) {
    require(key.size() >= ARCFOUR_MIN_KEY_SIZE && key.size() <= ARCFOUR_MAX_KEY_SIZE);
    WipedState<arcfour_ctx> state;
    arcfour_set_key(&state, key.size(), key.data());
    arcfour_crypt(&state, data.size(), data.data(), data.data());
}

void applyAesEcb(Direction direction, ByteView key, std::span<std::uint8_t> data) {
    withAes(aesOf(key, data), direction, key, [&](const void* state, nettle_cipher_func* turn) {
        turn(state, data.size(), data.data(), data.data());
    });
}

void applyAesCbc(Direction direction, ByteView key, ByteView iv, std::span<std::uint8_t> data) {
    require(iv.size() == aesBlock);
    std::array<std::uint8_t, aesBlock> running{}; // the library moves it on
    std::ranges::copy(iv, running.begin());
    withAes(aesOf(key, data), direction, key, [&](const void* state, nettle_cipher_func* turn) {
        (direction == Direction::Encode ? cbc_encrypt : cbc_decrypt)(state, turn, aesBlock, running.data(),
                                                                     data.size(), data.data(), data.data());
    });
}

SecretBytes hashOf(HashKind kind, std::initializer_list<ByteView> parts) {
    const nettle_hash& hash = *hashes[static_cast<std::size_t>(kind)];
    WipedState<HashState> state;
    hash.init(state.bytes.data());
    for (const ByteView part : parts) {
        hash.update(state.bytes.data(), part.size(), part.data());
    }
    SecretBytes digest(hash.digest_size);
    hash.digest(state.bytes.data(), digest.size(), digest.data());
    return digest;
}

} // namespace relvane::jet
