// Instance variables and properties, and how a class declares them.
//
//     class Book : public NSObject {
//         NS_CLASS(Book, NSObject)
//     public:
//         Ref<NSString> title;
//         std::int32_t pages = 0;
//         Weak<Author> author;
//         Ref<NSArray> chapters;
//         double weight() const;
//     };
//
//     NS_IMPLEMENTATION(Book) {
//         cls.property<&Book::title>("title", "C,N");   // T@"NSString",C,N,V_title
//         cls.property<&Book::pages>("pages", "N");     // Ti,N,V_pages
//         cls.property<&Book::author>("author");        // T@"Author",W,V_author
//         cls.property<&Book::weight>("weight", "N");   // Td,R,N: computed, and without a setter
//         cls.property<&Book::chapters, Chapter>("chapters");   // T@"NSArray",&,V_chapters: holds Chapters
//         cls.property<&Book::shelf>("shelf").key("place.shelf"); // models find it in JSON under that path
//     }
//
// A property of a data member also declares the instance variable and the accessors `title` and `setTitle:`.
// A method of that name which the class lists, before or after, is used as the accessor instead. Private
// members may be named, since the declaration is part of the class.
//
// A declaration that contradicts itself or another one of the class raises NSInvalidArgumentException: a
// second property or instance variable of the same name, an accessor that is not of the property's type,
// attributes that exclude each other. So does one without effect, e.g. an element class for a property that
// is not a collection, or a key that does not follow a property.
//
// The attributes are separated by commas; they are stored in the order `TRC&WDNGSV`:
//
// | attribute | meaning                                                                                   |
// |-----------|-------------------------------------------------------------------------------------------|
// | `R`       | read-only: no setter. Added to a computed property that has no setter.                    |
// | `C`       | the setter stores a copy, immutable unless the member takes only mutable objects          |
// | `&`, `W`  | the property owns, or weakly refers to, its object. Added as the member's type requires.  |
// | `D`       | dynamic: the class has accessors from elsewhere; only the property itself is declared     |
// | `N`       | not atomic. Accessors take no lock, with or without it.                                   |
// | `Gname`   | the getter is called `name`                                                               |
// | `Sname:`  | the setter is called `name:`                                                              |
// | `Vname`   | the instance variable is called `name` instead of "_" and the property's name             |
#pragma once

#include "Platform/Runtime/Object/Method.h"

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

struct objc_ivar {
    std::string name;
    std::string types;     ///< e.g. `@"NSString"`
    std::ptrdiff_t offset; ///< in bytes, from the start of the instance
    objc_method load;      ///< reads it like a getter
    objc_method store;     ///< writes it like a setter; never copies
};
using Ivar = const objc_ivar *;

struct objc_property_attribute_t {
    std::string name; ///< one letter
    std::string value;
};

struct objc_property {
    std::string name;
    std::vector<objc_property_attribute_t> attributes; ///< "T" first, "V" last
    /// Return the property's class and the class of its elements, when the declaration gives them; else null.
    Class (*cls)() = nullptr;
    Class (*elementClass)() = nullptr;
    /// The keys of the declaration, under which models find the property in JSON; empty: its name.
    std::vector<std::string> keys{};
};
using objc_property_t = const objc_property *;

namespace runtime {

using Protocols = std::initializer_list<const char *>;

/// The name of a property's setter, "setTitle:" for "title". Defined in Foundation, since the first letter
/// need not be ASCII.
std::string setterName(std::string_view property);

/// The encoding of a variable that holds an object, with its class and protocols: `@"NSString<P1><P2>"`.
std::string objectEncoding(const char *className, Protocols protocols);

/// What the C++ types say about a property or an instance variable.
struct Declaration {
    std::string type;
    bool isObject = false;
    bool isWeak = false;
    Class (*cls)() = nullptr;
    Class (*elementClass)() = nullptr;
    bool mayHoldObjects = false; ///< a collection, or any object
    Protocols protocols{};
    std::optional<std::ptrdiff_t> offset{};
    std::optional<objc_method> get{};
    std::optional<objc_method> set{};
    std::optional<objc_method> setCopy{};
};

// These raise NSInvalidArgumentException for a declaration that contradicts an earlier one or has no effect.
void declareProperty(Class cls, Declaration declaration, const std::string &name,
                     std::string_view attributes);
/// For the property of that name, which may have none yet.
void declareKeys(Class cls, const std::string &property, std::vector<std::string> keys);
void declareIvar(Class cls, const Declaration &declaration, const std::string &name);
void declareMethod(Class cls, objc_method method, const char *selector);
void declareProtocol(Class cls, std::string_view name);
/// To be called when everything is declared. Raises NSInvalidArgumentException when an accessor does not have
/// its property's type; either of the two may be inherited.
void checkAccessors(Class cls);

template <class M>
Declaration declarationOf(Protocols protocols) {
    if constexpr (isObject<M>) {
        using T = typename M::element_type;
        constexpr bool isAny = std::is_same_v<T, NSObject>;
        if constexpr (isBlock<T>)
            return {.type = "@?", .isObject = true, .protocols = protocols};
        else
            return {.type = objectEncoding(T::declaredName, protocols),
                    .isObject = true,
                    .isWeak = isWeak<M>,
                    .cls = isAny ? nullptr : &T::class_,
                    .mayHoldObjects = isAny || requires(const T &object){*object.begin();
    }
    , .protocols = protocols
};
}
else return {.type = typeEncoding<M>(), .protocols = protocols};
}

template <class T, class M, M T::*Member>
std::ptrdiff_t offsetOf() {
    // Only addresses are taken; no object is needed for that.
    alignas(T) static std::byte place[sizeof(T)];
    const auto *object = reinterpret_cast<const T *>(place);
    return reinterpret_cast<const std::byte *>(std::addressof(object->*Member)) -
           reinterpret_cast<const std::byte *>(static_cast<const NSObject *>(object));
}

template <class T, class M, M T::*Member>
Declaration declarationOfMember(Protocols protocols) {
    using Access = MemberAccess<T, M, Member>;
    const std::string type = typeEncoding<M>();
    Declaration declaration = declarationOf<M>(protocols);
    declaration.offset = offsetOf<T, M, Member>();
    const std::string size = std::to_string(16 + std::max(sizeof(int), isObject<M> ? 8 : sizeof(Result<M>)));
    const auto synthesized = [](objc_method method) {
        method.synthesized = true;
        return method;
    };
    declaration.get = synthesized(makeMethod(nullptr, &Access::get, type + "16@0:8"));
    declaration.set = synthesized(makeMethod(nullptr, &Access::set, "v" + size + "@0:8" + type + "16"));
    declaration.setCopy = declaration.set;
    if constexpr (isRef<M>)
        declaration.setCopy = synthesized(makeMethod(nullptr, &Access::setCopy, declaration.set->types));
    return declaration;
}

/// The declaration of a property from a data member or from a member function without arguments.
template <auto Member>
struct MemberDeclaration;

template <class T, class M, M T::*Member>
struct MemberDeclaration<Member> {
    static Declaration declaration(Protocols protocols) {
        if constexpr (std::is_function_v<M>) {
            using Value = std::remove_cvref_t<std::invoke_result_t<M T::*, T &>>;
            Declaration declaration = declarationOf<Value>(protocols);
            declaration.get = methodOf<Member>();
            return declaration;
        } else
            return declarationOfMember<T, M, Member>(protocols);
    }
};

} // namespace runtime

#pragma GCC visibility pop
