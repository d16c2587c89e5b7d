// Type encodings of the runtime decoded into a set of bits.
//
// | bits       | mask                           | meaning                                        |
// |------------|--------------------------------|------------------------------------------------|
// | 0 … 7      | `QNEncodingTypeMask`           | the type of the value, one of the constants    |
// | 8 … 15     | `QNEncodingTypeQualifierMask`  | qualifiers of a method's type                  |
// | 16 … 23    | `QNEncodingTypePropertyMask`   | attributes of a property, see QNClassPropertyInfo |
#pragma once

#include <cstdint>

#pragma GCC visibility push(default)

using QNEncodingType = std::uint64_t;

enum : QNEncodingType {
    QNEncodingTypeMask = 0xFF,
    QNEncodingTypeUnknown = 0,
    QNEncodingTypeVoid = 1,
    QNEncodingTypeBool = 2,
    QNEncodingTypeInt8 = 3,
    QNEncodingTypeUInt8 = 4,
    QNEncodingTypeInt16 = 5,
    QNEncodingTypeUInt16 = 6,
    QNEncodingTypeInt32 = 7,
    QNEncodingTypeUInt32 = 8,
    QNEncodingTypeInt64 = 9,
    QNEncodingTypeUInt64 = 10,
    QNEncodingTypeFloat = 11,
    QNEncodingTypeDouble = 12,
    QNEncodingTypeLongDouble = 13,
    QNEncodingTypeObject = 14,
    QNEncodingTypeClass = 15,
    QNEncodingTypeSEL = 16,
    QNEncodingTypeBlock = 17,
    QNEncodingTypePointer = 18,
    QNEncodingTypeStruct = 19,
    QNEncodingTypeUnion = 20,
    QNEncodingTypeCString = 21,
    QNEncodingTypeCArray = 22,

    QNEncodingTypeQualifierMask = 0xFF00,
    QNEncodingTypeQualifierConst = 0x100,
    QNEncodingTypeQualifierIn = 0x200,
    QNEncodingTypeQualifierInout = 0x400,
    QNEncodingTypeQualifierOut = 0x800,
    QNEncodingTypeQualifierBycopy = 0x1000,
    QNEncodingTypeQualifierByref = 0x2000,
    QNEncodingTypeQualifierOneway = 0x4000,

    QNEncodingTypePropertyMask = 0xFF0000,
    QNEncodingTypePropertyReadonly = 0x10000,
    QNEncodingTypePropertyCopy = 0x20000,
    QNEncodingTypePropertyRetain = 0x40000,
    QNEncodingTypePropertyNonatomic = 0x80000,
    QNEncodingTypePropertyWeak = 0x100000,
    QNEncodingTypePropertyCustomGetter = 0x200000,
    QNEncodingTypePropertyCustomSetter = 0x400000,
    QNEncodingTypePropertyDynamic = 0x800000,
};

/// The value type and the qualifiers of an encoding; 0 for null. Any text, any thread.
QNEncodingType QNEncodingGetType(const char *typeEncoding);

#pragma GCC visibility pop
