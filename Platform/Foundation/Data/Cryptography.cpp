#include "Platform/Foundation/Data/Cryptography.h"

#include "Platform/Foundation/Data/NSData.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <openssl/evp.h>
#include <optional>

namespace {

constexpr std::array algorithmNames = {"SHA1", "MD5", "SHA256", "SHA384", "SHA512", "SHA224"};
constexpr std::size_t aesBlockSize = 16;

const char *nameOf(std::uint32_t algorithm) {
    return algorithm < algorithmNames.size() ? algorithmNames[algorithm] : nullptr;
}

Ref<NSData> firstBytes(std::vector<std::uint8_t> bytes, std::size_t length) {
    bytes.resize(length);
    return make<NSData>(std::move(bytes));
}

const EVP_CIPHER *cipherForKeyLength(std::size_t length) {
    switch (length) {
    case 16:
        return EVP_aes_128_cbc();
    case 24:
        return EVP_aes_192_cbc();
    case 32:
        return EVP_aes_256_cbc();
    default:
        return nullptr;
    }
}

/// Encrypts or decrypts in pieces, since the library counts in `int`. Returns the length of the output.
std::optional<std::size_t> run(EVP_CIPHER_CTX *context, cryptography::Bytes bytes, std::uint8_t *out) {
    constexpr std::size_t longestPiece = 1 << 30;
    std::size_t produced = 0;
    int length = 0;
    for (; !bytes.empty(); bytes = bytes.subspan(std::min(bytes.size(), longestPiece))) {
        const auto piece = static_cast<int>(std::min(bytes.size(), longestPiece));
        if (!EVP_CipherUpdate(context, out + produced, &length, bytes.data(), piece))
            return std::nullopt;
        produced += static_cast<std::size_t>(length);
    }
    if (!EVP_CipherFinal_ex(context, out + produced, &length))
        return std::nullopt;
    return produced + static_cast<std::size_t>(length);
}

} // namespace

Ref<NSData> cryptography::digest(std::uint32_t algorithm, Bytes bytes) {
    const char *name = nameOf(algorithm);
    std::vector<std::uint8_t> out(EVP_MAX_MD_SIZE);
    std::size_t length = 0;
    const bool done =
        name && EVP_Q_digest(nullptr, name, nullptr, bytes.data(), bytes.size(), out.data(), &length);
    return done ? firstBytes(std::move(out), length) : nullptr;
}

Ref<NSData> cryptography::hmac(std::uint32_t algorithm, Bytes key, Bytes bytes) {
    const char *name = nameOf(algorithm);
    static constexpr std::uint8_t noKey = 0; // a null key would mean: keep the key that is set
    std::vector<std::uint8_t> out(EVP_MAX_MD_SIZE);
    std::size_t length = 0;
    const bool done =
        name && EVP_Q_mac(nullptr, "HMAC", nullptr, name, nullptr, key.empty() ? &noKey : key.data(),
                          key.size(), bytes.data(), bytes.size(), out.data(), out.size(), &length);
    return done ? firstBytes(std::move(out), length) : nullptr;
}

Ref<NSData> cryptography::aesCBC(Direction direction, Bytes key, Bytes initialisationVector, Bytes bytes) {
    const EVP_CIPHER *cipher = cipherForKeyLength(key.size());
    if (!cipher || initialisationVector.size() != aesBlockSize)
        return nullptr;
    try {
        std::vector<std::uint8_t> out(bytes.size() + aesBlockSize);
        const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                      EVP_CIPHER_CTX_free);
        if (!context || !EVP_CipherInit_ex(context.get(), cipher, nullptr, key.data(),
                                           initialisationVector.data(), static_cast<int>(direction)))
            return nullptr;
        const auto length = run(context.get(), bytes, out.data());
        return length ? firstBytes(std::move(out), *length) : nullptr;
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}
