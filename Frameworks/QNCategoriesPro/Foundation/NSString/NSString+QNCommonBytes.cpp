// What byte buffers can do, done to the UTF-8 bytes of a text.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSString.h"

Ref<NSString> qn::MD5_string(const Ref<NSString> &text) {
    return MD5_string(dataValue(text));
}

Ref<NSData> qn::MD5_data(const Ref<NSString> &text) {
    return MD5_data(dataValue(text));
}

Ref<NSString> qn::SHA1_string(const Ref<NSString> &text) {
    return SHA1_string(dataValue(text));
}

Ref<NSData> qn::SHA1_data(const Ref<NSString> &text) {
    return SHA1_data(dataValue(text));
}

Ref<NSString> qn::SHA224_string(const Ref<NSString> &text) {
    return SHA224_string(dataValue(text));
}

Ref<NSData> qn::SHA224_data(const Ref<NSString> &text) {
    return SHA224_data(dataValue(text));
}

Ref<NSString> qn::SHA256_string(const Ref<NSString> &text) {
    return SHA256_string(dataValue(text));
}

Ref<NSData> qn::SHA256_data(const Ref<NSString> &text) {
    return SHA256_data(dataValue(text));
}

Ref<NSString> qn::SHA384_string(const Ref<NSString> &text) {
    return SHA384_string(dataValue(text));
}

Ref<NSData> qn::SHA384_data(const Ref<NSString> &text) {
    return SHA384_data(dataValue(text));
}

Ref<NSString> qn::SHA512_string(const Ref<NSString> &text) {
    return SHA512_string(dataValue(text));
}

Ref<NSData> qn::SHA512_data(const Ref<NSString> &text) {
    return SHA512_data(dataValue(text));
}

Ref<NSString> qn::hmacStringUsingAlg(const Ref<NSString> &text, std::uint32_t alg, const Ref<NSString> &key) {
    return hmacStringUsingAlg(dataValue(text), alg, key);
}

Ref<NSData> qn::hmacDataUsingAlg(const Ref<NSString> &text, std::uint32_t alg, const Ref<NSData> &key) {
    return hmacDataUsingAlg(dataValue(text), alg, key);
}

std::uint32_t qn::crc32(const Ref<NSString> &text) {
    return crc32(dataValue(text));
}

Ref<NSString> qn::crc32String(const Ref<NSString> &text) {
    return crc32String(dataValue(text));
}

Ref<NSData> qn::base64EncodedData(const Ref<NSString> &text) {
    return base64EncodedData(dataValue(text));
}

Ref<NSString> qn::base64EncodedString(const Ref<NSString> &text) {
    return base64EncodedString(dataValue(text));
}

Ref<NSData> qn::base64DecodedData(const Ref<NSString> &text) {
    return base64DecodedData(dataValue(text));
}

Ref<NSString> qn::base64DecodedString(const Ref<NSString> &text) {
    return base64DecodedString(dataValue(text));
}

Ref<NSString> qn::AES256EncryptWithKey(const Ref<NSString> &text, const Ref<NSString> &key,
                                       const Ref<NSString> &iv) {
    return UTF8String(AES256EncryptWithKey(dataValue(text), dataValue(key), dataValue(iv)));
}

Ref<NSString> qn::AES256DecryptWithkey(const Ref<NSString> &text, const Ref<NSString> &key,
                                       const Ref<NSString> &iv) {
    return UTF8String(AES256DecryptWithkey(dataValue(text), dataValue(key), dataValue(iv)));
}
