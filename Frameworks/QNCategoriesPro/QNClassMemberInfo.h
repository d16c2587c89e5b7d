// Records of what a class has: its instance variables, methods and properties, decoded.
//
// Each is made from the runtime's handle; a null handle gives none. What the runtime does not know is none,
// null or 0.
//
// Immutable; any thread.
#pragma once

#include "Frameworks/QNCategoriesPro/QNEncodingType.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Reflection/Reflection.h"

#pragma GCC visibility push(default)

class QNClassIvarInfo : public NSObject {
    NS_CLASS(QNClassIvarInfo, NSObject)
public:
    static Ref<QNClassIvarInfo> initWithIvar(Ivar ivar);
    /// For `initWithIvar`.
    explicit QNClassIvarInfo(Ivar ivar);

    Ivar ivar() const { return _ivar; }
    Ref<NSString> name() const { return _name; }
    /// In bytes, from the start of the instance.
    std::int64_t offset() const { return _offset; }
    Ref<NSString> typeEncoding() const { return _typeEncoding; }
    QNEncodingType type() const { return _type; }

private:
    const Ivar _ivar;
    Ref<NSString> _name;
    std::int64_t _offset;
    Ref<NSString> _typeEncoding;
    QNEncodingType _type;
};

class QNClassMethodInfo : public NSObject {
    NS_CLASS(QNClassMethodInfo, NSObject)
public:
    static Ref<QNClassMethodInfo> initWithMethod(Method method);
    /// For `initWithMethod`.
    explicit QNClassMethodInfo(Method method);

    Method method() const { return _method; }
    /// Of the selector.
    Ref<NSString> name() const { return _name; }
    SEL sel() const { return _sel; }
    IMP imp() const { return _imp; }
    /// Of the whole method.
    Ref<NSString> typeEncoding() const { return _typeEncoding; }
    Ref<NSString> returnTypeEncoding() const { return _returnTypeEncoding; }
    /// One NSString per argument, including the receiver and the selector; none without arguments.
    Ref<NSArray> argumentTypeEncodings() const { return _argumentTypeEncodings; }

private:
    const Method _method;
    Ref<NSString> _name;
    SEL _sel;
    IMP _imp;
    Ref<NSString> _typeEncoding;
    Ref<NSString> _returnTypeEncoding;
    Ref<NSArray> _argumentTypeEncodings;
};

class QNClassPropertyInfo : public NSObject {
    NS_CLASS(QNClassPropertyInfo, NSObject)
public:
    static Ref<QNClassPropertyInfo> initWithProperty(objc_property_t property);
    /// For `initWithProperty`.
    explicit QNClassPropertyInfo(objc_property_t property);

    objc_property_t property() const { return _property; }
    Ref<NSString> name() const { return _name; }
    /// With the attributes of the property.
    QNEncodingType type() const { return _type; }
    Ref<NSString> typeEncoding() const { return _typeEncoding; }
    /// Of the backing variable.
    Ref<NSString> ivarName() const { return _ivarName; }
    /// The class that the encoding names; for a declared property the class of its C++ type. Null while no
    /// such class exists.
    Class cls() const { return _cls || _unknownClass.empty() ? _cls : objc_getClass(_unknownClass); }
    /// The class of the elements, when the declaration gives one.
    Class elementCls() const { return _elementCls; }
    /// One NSString per protocol that the encoding names; none when it names none.
    Ref<NSArray> protocols() const { return _protocols; }
    /// The custom accessors, or else those derived from the name, whether the class has them or not.
    SEL getter() const { return _getter; }
    SEL setter() const { return _setter; }

private:
    void readAttribute(const objc_property_attribute_t &attribute);
    void readObjectType(std::string_view encoding);

    const objc_property_t _property;
    Ref<NSString> _name;
    QNEncodingType _type = 0;
    Ref<NSString> _typeEncoding;
    Ref<NSString> _ivarName;
    Class _cls = nullptr;
    Class _elementCls = nullptr;
    std::string _unknownClass; // may be made later
    Ref<NSMutableArray> _protocols;
    SEL _getter = nullptr;
    SEL _setter = nullptr;
};

#pragma GCC visibility pop
