// The operations by which a model class changes how it is mapped. All are optional. A class declares those it
// has, and the compiler refuses a function of another type:
//
//     class Book : public NSObject {
//         NS_CLASS(Book, NSObject)
//     public:
//         Ref<NSString> title, author;
//         Ref<NSArray> chapters;
//         static Ref<NSDictionary> mapper() {
//             return NSDictionary::dictionaryWithEntries({{u"author"_ns, u"credits.author"_ns}});
//         }
//     };
//     NS_IMPLEMENTATION(Book) {
//         cls.property<&Book::title>("title", "C")
//             .property<&Book::author>("author", "C")
//             .property<&Book::chapters, Chapter>("chapters", "C")
//             .implement<qn::hooks::modelCustomPropertyMapper, &Book::mapper>();
//     }
//
// Of the class object:
//
//   modelCustomPropertyMapper           Ref<NSDictionary> ()
//       By property: its key, a path of keys with dots between them, or an array of either, of which the
//       first with a value counts.
//   modelContainerPropertyGenericClass  Ref<NSDictionary> ()
//       By property: the class of its elements, or the name of one.
//   modelPropertyBlacklist              Ref<NSArray> ()
//       The properties to leave out.
//   modelPropertyWhitelist              Ref<NSArray> ()
//       The only properties to map.
//   modelCustomClassForDictionary:      Class (Ref<NSDictionary>)
//       The class to make for the dictionary; null for the usual one.
//
// Of instances:
//
//   modelCustomWillTransformFromDictionary:  Ref<NSDictionary> (Ref<NSDictionary>)
//       The dictionary to map instead; with none the mapping fails.
//   modelCustomTransformFromDictionary:      bool (Ref<NSDictionary>)
//       Asked after mapping: whether it succeeded.
//   modelCustomTransformToDictionary:        bool (Ref<NSMutableDictionary>)
//       Asked after writing: whether it succeeded.
//
// A hook may also be declared by its selector like any operation: `classMethod<&Book::mapper>(…)`. One of
// another type then raises NSInvalidArgumentException when it is declared or added.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Runtime/Object/Operation.h"

#pragma GCC visibility push(default)

namespace qn::hooks {

template <class Signature>
using OfClass = runtime::ClassOperation<Signature>;
template <class Signature>
using OfInstances = runtime::InstanceOperation<Signature>;
using Dictionary = Ref<NSDictionary>;

inline constexpr OfClass<Dictionary()> modelCustomPropertyMapper{"modelCustomPropertyMapper"};
inline constexpr OfClass<Dictionary()> modelContainerPropertyGenericClass{
    "modelContainerPropertyGenericClass"};
inline constexpr OfClass<Ref<NSArray>()> modelPropertyBlacklist{"modelPropertyBlacklist"};
inline constexpr OfClass<Ref<NSArray>()> modelPropertyWhitelist{"modelPropertyWhitelist"};
inline constexpr OfClass<Class(Dictionary)> modelCustomClassForDictionary{"modelCustomClassForDictionary:"};
inline constexpr OfInstances<Dictionary(Dictionary)> modelCustomWillTransformFromDictionary{
    "modelCustomWillTransformFromDictionary:"};
inline constexpr OfInstances<bool(Dictionary)> modelCustomTransformFromDictionary{
    "modelCustomTransformFromDictionary:"};
inline constexpr OfInstances<bool(Ref<NSMutableDictionary>)> modelCustomTransformToDictionary{
    "modelCustomTransformToDictionary:"};

/// The result of the class's hook without arguments; none without the hook.
id ask(Class cls, SEL hook);
/// The result of `modelCustomClassForDictionary:`; null without the hook.
Class customClass(Class cls, const Ref<NSDictionary> &dictionary);

} // namespace qn::hooks

#pragma GCC visibility pop
