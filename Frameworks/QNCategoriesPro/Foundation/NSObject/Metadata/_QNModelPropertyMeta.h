// How one property of a model class is mapped: what it holds, how it is read and written, and the keys it is
// found under.
//
//     const auto pages = meta->get<std::int32_t>(*book);   // calls the accessor itself, nothing is looked up
//     meta->set<std::int32_t>(*book, 320);
//
// Filled while the record of its class is built; immutable and safe from any thread afterwards.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/FoundationKind.h"
#include "Frameworks/QNCategoriesPro/QNClassInfo.h"
#include "Platform/Runtime/Object/NumberType.h"

#include <type_traits>

class _QNModelPropertyMeta : public NSObject {
    NS_CLASS(_QNModelPropertyMeta, NSObject)
public:
    /// For a property that the class has or inherits. None without the class or the property. Where `generic`
    /// is null, the elements' class of the declaration is used, or else the class with the name of one of the
    /// property's protocols, the first that exists.
    static Ref<_QNModelPropertyMeta> metaWithClassInfo(const Ref<QNClassInfo> &classInfo,
                                                       const Ref<QNClassPropertyInfo> &propertyInfo,
                                                       Class generic);

    /// The type of the value, without qualifiers and attributes.
    QNEncodingType valueType() const { return _type & QNEncodingTypeMask; }

    /// Of a number, `_isCNumber`: calls `visit.operator()<T>()` with its C++ type, `bool` … `long double`,
    /// and returns what it returns.
    template <class Visit>
    decltype(auto) withNumberType(const Visit &visit) const {
        return runtime::withNumberType(runtime::numberEncodings[valueType() - QNEncodingTypeBool], visit);
    }

    /// Call the accessors, which must exist, on an instance of the class. `T` has to be the type that values
    /// of the property have in a send (TypeEncoding.h); it is not checked: `id`, `Class`, `SEL`, `bool`,
    /// `std::int8_t` … `long double`, and `void *` for pointers, C strings and, for reading only, C arrays.
    template <class T>
    T get(NSObject &model) const;
    template <class T>
    void set(NSObject &model, std::type_identity_t<runtime::Argument<T>> value) const;

    /// Whether both accessors, which must exist, only read and write a data member.
    bool hasSynthesizedAccessors() const { return _getterMethod->synthesized && _setterMethod->synthesized; }

    Ref<NSString> _name;
    QNEncodingType _type = 0;
    qn::FoundationKind _nsType = qn::FoundationKind::None; ///< of the class; only of objects
    bool _isCNumber = false;                               ///< a boolean up to a long double
    Class _cls = nullptr;        ///< null unless the property names a class that exists
    Class _genericCls = nullptr; ///< of the elements; null for any
    /// Null unless instances have the accessor and it has the type of the property.
    SEL _getter = nullptr;
    SEL _setter = nullptr;
    bool _isKVCCompatible = false;
    bool _isReadByGetter = false;                    ///< whether key-value coding would call the getter, too
    bool _isStructAvailableForKeyedArchiver = false; ///< one of the platform's geometric structures
    bool _hasCustomClassFromDictionary = false;
    bool _namesUnknownClass = false; ///< and no other class replaces it; it may be made later
    Ref<NSString> _mappedToKey;      ///< the first one when there are several; none when it has no key
    Ref<NSArray> _mappedToKeyPath;   ///< one NSString per part; none unless there are at least two
    Ref<NSArray> _mappedToKeyArray;  ///< each an NSString or a path as above; none unless an array was given
    Ref<QNClassPropertyInfo> _info;
    Ref<_QNModelPropertyMeta> _next; ///< the next property of the same key

private:
    void readObjectType();
    void findAccessors(Class cls);

    Method _getterMethod = nullptr;
    Method _setterMethod = nullptr;
};

template <class T>
T _QNModelPropertyMeta::get(NSObject &model) const {
    if constexpr (std::is_same_v<T, void *>) { // stands for pointers of every type, functions' included
        void *pointer = nullptr;
        _getterMethod->invoke(_getterMethod->imp, &model, _getter, nullptr, &pointer);
        return pointer;
    } else
        return reinterpret_cast<T (*)(NSObject *, SEL)>(_getterMethod->imp)(&model, _getter);
}

template <class T>
void _QNModelPropertyMeta::set(NSObject &model, std::type_identity_t<runtime::Argument<T>> value) const {
    if constexpr (std::is_same_v<T, void *>) {
        const void *argument = &value;
        _setterMethod->invoke(_setterMethod->imp, &model, _setter, &argument, nullptr);
    } else
        reinterpret_cast<void (*)(NSObject *, SEL, runtime::Argument<T>)>(_setterMethod->imp)(&model, _setter,
                                                                                              value);
}
