#include "Frameworks/QNCategoriesPro/QNEncodingType.h"

#include <string_view>

namespace {

QNEncodingType qualifier(char code) {
    switch (code) {
    case 'r':
        return QNEncodingTypeQualifierConst;
    case 'n':
        return QNEncodingTypeQualifierIn;
    case 'N':
        return QNEncodingTypeQualifierInout;
    case 'o':
        return QNEncodingTypeQualifierOut;
    case 'O':
        return QNEncodingTypeQualifierBycopy;
    case 'R':
        return QNEncodingTypeQualifierByref;
    case 'V':
        return QNEncodingTypeQualifierOneway;
    default:
        return 0;
    }
}

QNEncodingType valueType(std::string_view encoding) {
    switch (encoding.front()) {
    case 'v':
        return QNEncodingTypeVoid;
    case 'B':
        return QNEncodingTypeBool;
    case 'c':
        return QNEncodingTypeInt8;
    case 'C':
        return QNEncodingTypeUInt8;
    case 's':
        return QNEncodingTypeInt16;
    case 'S':
        return QNEncodingTypeUInt16;
    case 'i':
    case 'l':
        return QNEncodingTypeInt32;
    case 'I':
    case 'L':
        return QNEncodingTypeUInt32;
    case 'q':
        return QNEncodingTypeInt64;
    case 'Q':
        return QNEncodingTypeUInt64;
    case 'f':
        return QNEncodingTypeFloat;
    case 'd':
        return QNEncodingTypeDouble;
    case 'D':
        return QNEncodingTypeLongDouble;
    case '@':
        return encoding == "@?" ? QNEncodingTypeBlock : QNEncodingTypeObject;
    case '#':
        return QNEncodingTypeClass;
    case ':':
        return QNEncodingTypeSEL;
    case '^':
        return QNEncodingTypePointer;
    case '{':
        return QNEncodingTypeStruct;
    case '(':
        return QNEncodingTypeUnion;
    case '*':
        return QNEncodingTypeCString;
    case '[':
        return QNEncodingTypeCArray;
    default:
        return QNEncodingTypeUnknown;
    }
}

} // namespace

QNEncodingType QNEncodingGetType(const char *typeEncoding) {
    std::string_view encoding = typeEncoding ? typeEncoding : "";
    QNEncodingType qualifiers = 0;
    while (!encoding.empty() && qualifier(encoding.front())) {
        qualifiers |= qualifier(encoding.front());
        encoding.remove_prefix(1);
    }
    return encoding.empty() ? qualifiers : qualifiers | valueType(encoding);
}
