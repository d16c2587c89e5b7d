// The C++ type of a property that holds a number.
#pragma once

#include "Frameworks/QNCategoriesPro/QNEncodingType.h"

#include <cstdint>

namespace qn {

/// Calls `visit.operator()<T>()` with the type of a number, `bool` … `long double`, and gives what it gives.
template <class Visit>
decltype(auto) withNumberType(QNEncodingType type, const Visit &visit) {
    switch (type & QNEncodingTypeMask) {
    case QNEncodingTypeBool:
        return visit.template operator()<bool>();
    case QNEncodingTypeInt8:
        return visit.template operator()<std::int8_t>();
    case QNEncodingTypeUInt8:
        return visit.template operator()<std::uint8_t>();
    case QNEncodingTypeInt16:
        return visit.template operator()<std::int16_t>();
    case QNEncodingTypeUInt16:
        return visit.template operator()<std::uint16_t>();
    case QNEncodingTypeInt32:
        return visit.template operator()<std::int32_t>();
    case QNEncodingTypeUInt32:
        return visit.template operator()<std::uint32_t>();
    case QNEncodingTypeInt64:
        return visit.template operator()<std::int64_t>();
    case QNEncodingTypeUInt64:
        return visit.template operator()<std::uint64_t>();
    case QNEncodingTypeFloat:
        return visit.template operator()<float>();
    case QNEncodingTypeDouble:
        return visit.template operator()<double>();
    default:
        return visit.template operator()<long double>();
    }
}

} // namespace qn
