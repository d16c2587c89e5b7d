// Digests, message authentication codes, encryption.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"

#include "Platform/Foundation/Data/Cryptography.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSString.h"

#include <array>

namespace {

enum Algorithm : std::uint32_t { SHA1, MD5, SHA256, SHA384, SHA512, SHA224 };

Ref<NSData> aes(cryptography::Direction direction, const Ref<NSData> &data, const Ref<NSData> &key,
                const Ref<NSData> &iv) {
    static constexpr std::array<std::uint8_t, 16> zeros{};
    if (!data || !key)
        return nullptr;
    return cryptography::aesCBC(direction, key->span(), iv && iv->length() > 0 ? iv->span() : zeros,
                                data->span());
}

} // namespace

std::size_t qn::size_t_alg(std::uint32_t alg) {
    static constexpr std::size_t lengths[] = {20, 16, 32, 48, 64, 28};
    return lengths[alg < std::size(lengths) ? alg : SHA1];
}

Ref<NSData> qn::dataWithAlg(const Ref<NSData> &data, std::uint32_t alg) {
    return data ? cryptography::digest(alg, data->span()) : nullptr;
}

Ref<NSString> qn::stringWithAlg(const Ref<NSData> &data, std::uint32_t alg) {
    return hexString(dataWithAlg(data, alg));
}

Ref<NSString> qn::MD5_string(const Ref<NSData> &data) {
    return stringWithAlg(data, MD5);
}

Ref<NSData> qn::MD5_data(const Ref<NSData> &data) {
    return dataWithAlg(data, MD5);
}

Ref<NSString> qn::SHA1_string(const Ref<NSData> &data) {
    return stringWithAlg(data, SHA1);
}

Ref<NSData> qn::SHA1_data(const Ref<NSData> &data) {
    return dataWithAlg(data, SHA1);
}

Ref<NSString> qn::SHA224_string(const Ref<NSData> &data) {
    return stringWithAlg(data, SHA224);
}

Ref<NSData> qn::SHA224_data(const Ref<NSData> &data) {
    return dataWithAlg(data, SHA224);
}

Ref<NSString> qn::SHA256_string(const Ref<NSData> &data) {
    return stringWithAlg(data, SHA256);
}

Ref<NSData> qn::SHA256_data(const Ref<NSData> &data) {
    return dataWithAlg(data, SHA256);
}

Ref<NSString> qn::SHA384_string(const Ref<NSData> &data) {
    return stringWithAlg(data, SHA384);
}

Ref<NSData> qn::SHA384_data(const Ref<NSData> &data) {
    return dataWithAlg(data, SHA384);
}

Ref<NSString> qn::SHA512_string(const Ref<NSData> &data) {
    return stringWithAlg(data, SHA512);
}

Ref<NSData> qn::SHA512_data(const Ref<NSData> &data) {
    return dataWithAlg(data, SHA512);
}

Ref<NSData> qn::hmacDataUsingAlg(const Ref<NSData> &data, std::uint32_t alg, const Ref<NSData> &key) {
    return data && key ? cryptography::hmac(alg, key->span(), data->span()) : nullptr;
}

Ref<NSString> qn::hmacStringUsingAlg(const Ref<NSData> &data, std::uint32_t alg, const Ref<NSString> &key) {
    const auto bytes = key ? key->strictUTF8() : std::nullopt;
    if (!bytes)
        return nullptr;
    const auto length = std::min(bytes->find('\0'), bytes->size());
    return hexString(hmacDataUsingAlg(data, alg, NSData::dataWithBytes(bytes->data(), length)));
}

Ref<NSData> qn::AES256EncryptWithKey(const Ref<NSData> &data, const Ref<NSData> &key, const Ref<NSData> &iv) {
    return aes(cryptography::Direction::Encrypt, data, key, iv);
}

Ref<NSData> qn::AES256DecryptWithkey(const Ref<NSData> &data, const Ref<NSData> &key, const Ref<NSData> &iv) {
    return aes(cryptography::Direction::Decrypt, data, key, iv);
}
