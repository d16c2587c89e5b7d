#include "Frameworks/QNCategoriesPro/QNClassMemberInfo.h"

NS_IMPLEMENTATION(QNClassIvarInfo) {}
NS_IMPLEMENTATION(QNClassMethodInfo) {}
NS_IMPLEMENTATION(QNClassPropertyInfo) {}

namespace {

Ref<NSString> text(const char *bytes) {
    return bytes ? NSString::stringWithUTF8String(bytes) : nullptr;
}

QNEncodingType attributeBit(char letter) {
    switch (letter) {
    case 'R':
        return QNEncodingTypePropertyReadonly;
    case 'C':
        return QNEncodingTypePropertyCopy;
    case '&':
        return QNEncodingTypePropertyRetain;
    case 'N':
        return QNEncodingTypePropertyNonatomic;
    case 'W':
        return QNEncodingTypePropertyWeak;
    case 'G':
        return QNEncodingTypePropertyCustomGetter;
    case 'S':
        return QNEncodingTypePropertyCustomSetter;
    case 'D':
        return QNEncodingTypePropertyDynamic;
    default:
        return 0;
    }
}

} // namespace

Ref<QNClassIvarInfo> QNClassIvarInfo::initWithIvar(Ivar ivar) {
    return ivar ? make<QNClassIvarInfo>(ivar) : nullptr;
}

QNClassIvarInfo::QNClassIvarInfo(Ivar ivar)
    : _ivar(ivar), _name(text(ivar_getName(ivar))), _offset(ivar_getOffset(ivar)),
      _typeEncoding(text(ivar_getTypeEncoding(ivar))), _type(QNEncodingGetType(ivar_getTypeEncoding(ivar))) {}

Ref<QNClassMethodInfo> QNClassMethodInfo::initWithMethod(Method method) {
    return method ? make<QNClassMethodInfo>(method) : nullptr;
}

QNClassMethodInfo::QNClassMethodInfo(Method method)
    : _method(method), _sel(method_getName(method)), _imp(method_getImplementation(method)),
      _typeEncoding(text(method_getTypeEncoding(method))),
      _returnTypeEncoding(NSString::stringWithUTF8String(method_copyReturnType(method))) {
    _name = text(sel_getName(_sel));
    const unsigned count = method_getNumberOfArguments(method);
    if (count == 0)
        return;
    const auto arguments = NSMutableArray::array();
    for (unsigned index = 0; index < count; ++index)
        arguments->addObject(NSString::stringWithUTF8String(method_copyArgumentType(method, index)));
    _argumentTypeEncodings = arguments;
}

Ref<QNClassPropertyInfo> QNClassPropertyInfo::initWithProperty(objc_property_t property) {
    return property ? make<QNClassPropertyInfo>(property) : nullptr;
}

QNClassPropertyInfo::QNClassPropertyInfo(objc_property_t property)
    : _property(property), _name(text(property_getName(property))) {
    for (const auto &attribute : property_copyAttributeList(property))
        readAttribute(attribute);
    if (property->elementClass)
        _elementCls = property->elementClass();
    if (!_name || _name->length() == 0)
        return;
    if (!_getter)
        _getter = sel_registerName(property_getName(property));
    if (!_setter)
        _setter = sel_registerName(runtime::setterName(property_getName(property)));
}

void QNClassPropertyInfo::readAttribute(const objc_property_attribute_t &attribute) {
    const char letter = attribute.name.empty() ? '\0' : attribute.name.front();
    const std::string &value = attribute.value;
    _type |= attributeBit(letter);
    if (letter == 'T') {
        _typeEncoding = NSString::stringWithUTF8String(value);
        _type = QNEncodingGetType(value.c_str());
        if ((_type & QNEncodingTypeMask) == QNEncodingTypeObject)
            readObjectType(value);
    } else if (letter == 'V')
        _ivarName = NSString::stringWithUTF8String(value);
    else if (letter == 'G' && !value.empty())
        _getter = sel_registerName(value);
    else if (letter == 'S' && !value.empty())
        _setter = sel_registerName(value);
}

// The class and the protocols of @"Name<P1><P2>".
void QNClassPropertyInfo::readObjectType(std::string_view encoding) {
    if (!encoding.starts_with("@\""))
        return;
    encoding.remove_prefix(2);
    const std::size_t nameEnd = std::min(encoding.find_first_of("\"<"), encoding.size());
    if (nameEnd > 0)
        _cls = _property->cls ? _property->cls() : objc_getClass(encoding.substr(0, nameEnd));
    if (!_cls)
        _unknownClass = encoding.substr(0, nameEnd);
    encoding.remove_prefix(nameEnd);
    while (encoding.starts_with('<')) {
        const std::size_t end = std::min(encoding.find('>'), encoding.size());
        if (const auto name = NSString::stringWithUTF8String(encoding.substr(1, end - 1)); name && end > 1) {
            if (!_protocols)
                _protocols = NSMutableArray::array();
            _protocols->addObject(name);
        }
        encoding.remove_prefix(std::min(end + 1, encoding.size()));
    }
}
