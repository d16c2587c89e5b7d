#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Platform/Foundation/KeyValueCoding/NSKeyValueCoding.h"
#include "Platform/Foundation/Text/NSObjCRuntime.h"

#include <algorithm>

NS_IMPLEMENTATION(_QNModelPropertyMeta) {}

namespace {

constexpr std::string_view archivedStructures[] = {
    // 32-bit
    "{CGSize=ff}", "{CGPoint=ff}", "{CGRect={CGPoint=ff}{CGSize=ff}}", "{CGAffineTransform=ffffff}",
    "{UIEdgeInsets=ffff}", "{UIOffset=ff}",
    // 64-bit
    "{CGSize=dd}", "{CGPoint=dd}", "{CGRect={CGPoint=dd}{CGSize=dd}}", "{CGAffineTransform=dddddd}",
    "{UIEdgeInsets=dddd}", "{UIOffset=dd}"};

constexpr QNEncodingType keyValueCodedTypes[] = {
    QNEncodingTypeBool,   QNEncodingTypeInt8,  QNEncodingTypeUInt8,  QNEncodingTypeInt16,
    QNEncodingTypeUInt16, QNEncodingTypeInt32, QNEncodingTypeUInt32, QNEncodingTypeInt64,
    QNEncodingTypeUInt64, QNEncodingTypeFloat, QNEncodingTypeDouble, QNEncodingTypeObject,
    QNEncodingTypeClass,  QNEncodingTypeBlock, QNEncodingTypeStruct, QNEncodingTypeUnion};

/// Objects and blocks cross a send alike.
QNEncodingType carriedType(QNEncodingType type) {
    type &= QNEncodingTypeMask;
    return type == QNEncodingTypeBlock ? QNEncodingTypeObject : type;
}

bool isOfType(const std::string &encoding, QNEncodingType type) {
    return carriedType(QNEncodingGetType(encoding.c_str())) == carriedType(type);
}

Method getterOfType(Class cls, SEL selector, QNEncodingType type) {
    const Method method = cls->findMethod(selector);
    const bool fits =
        method && method_getNumberOfArguments(method) == 2 && isOfType(method_copyReturnType(method), type);
    return fits ? method : nullptr;
}

Method setterOfType(Class cls, SEL selector, QNEncodingType type) {
    const Method method = cls->findMethod(selector);
    const bool fits = method && method_getNumberOfArguments(method) == 3 &&
                      method_copyReturnType(method) == "v" &&
                      isOfType(method_copyArgumentType(method, 2), type);
    return fits ? method : nullptr;
}

bool overridesValueForKey(Class cls) {
    return cls && (cls->overridesValueForKey || overridesValueForKey(cls->superclass()));
}

bool namesClass(const QNClassPropertyInfo &property) {
    const auto encoding = property.typeEncoding() ? property.typeEncoding()->utf8() : "";
    return encoding.starts_with("@\"") && !encoding.starts_with("@\"<");
}

/// The first protocol that is named as a class.
Class classOfProtocols(const Ref<NSArray> &protocols) {
    if (protocols)
        for (const id &name : *protocols)
            if (const Class cls = NSClassFromString(as<NSString>(name)))
                return cls;
    return nullptr;
}

} // namespace

Ref<_QNModelPropertyMeta>
_QNModelPropertyMeta::metaWithClassInfo(const Ref<QNClassInfo> &classInfo,
                                        const Ref<QNClassPropertyInfo> &propertyInfo, Class generic) {
    if (!classInfo || !propertyInfo)
        return nullptr;
    auto meta = make<_QNModelPropertyMeta>();
    meta->_name = propertyInfo->name();
    meta->_type = propertyInfo->type();
    meta->_info = propertyInfo;
    meta->_cls = propertyInfo->cls();
    meta->_genericCls = generic                      ? generic
                        : propertyInfo->elementCls() ? propertyInfo->elementCls()
                                                     : classOfProtocols(propertyInfo->protocols());
    meta->_namesUnknownClass =
        (!meta->_genericCls && propertyInfo->protocols()) || (!meta->_cls && namesClass(*propertyInfo));
    if (meta->valueType() == QNEncodingTypeObject)
        meta->readObjectType();
    else
        meta->_isCNumber =
            meta->valueType() >= QNEncodingTypeBool && meta->valueType() <= QNEncodingTypeLongDouble;
    if (meta->valueType() == QNEncodingTypeStruct)
        meta->_isStructAvailableForKeyedArchiver =
            std::ranges::count(archivedStructures, propertyInfo->typeEncoding()->utf8()) > 0;
    meta->findAccessors(classInfo->cls());
    return meta;
}

void _QNModelPropertyMeta::readObjectType() {
    _nsType = qn::foundationKindOf(_cls);
    const bool isModel = _cls && _nsType == qn::FoundationKind::None;
    if (const Class asked = _genericCls ? _genericCls : isModel ? _cls : nullptr)
        _hasCustomClassFromDictionary =
            asked->respondsToSelector(runtime::selectorOf<qn::hooks::modelCustomClassForDictionary>());
}

void _QNModelPropertyMeta::findAccessors(Class cls) {
    _getterMethod = getterOfType(cls, _info->getter(), _type);
    _setterMethod = setterOfType(cls, _info->setter(), _type);
    _getter = _getterMethod ? _getterMethod->name : nullptr;
    _setter = _setterMethod ? _setterMethod->name : nullptr;
    _isKVCCompatible = _getter && _setter && std::ranges::count(keyValueCodedTypes, valueType()) > 0;
    _isReadByGetter = _getter && !overridesValueForKey(cls) &&
                      runtime::keyValueReader(cls, sel_getName(_getter)) == _getterMethod;
}
