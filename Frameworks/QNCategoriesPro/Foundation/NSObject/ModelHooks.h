// The operations by which a model class changes how it is mapped. All are optional; a class declares those it
// has with the runtime:
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
//             .property<&Book::chapters>("chapters", "C", {"Chapter"}) // of the class Chapter
//             .classMethod<&Book::mapper>("modelCustomPropertyMapper");
//     }
//
// Of the class object:
//
//   modelCustomPropertyMapper           Ref<NSDictionary> ()
//       By property: its key, with dots a path of keys, or an array of those, of which the first that has a
//       value counts.
//   modelContainerPropertyGenericClass  Ref<NSDictionary> ()
//       By property: the class of its elements, or the name of one.
//   modelPropertyBlacklist              Ref<NSArray> ()
//       The properties left out.
//   modelPropertyWhitelist              Ref<NSArray> ()
//       The only ones taken.
//   modelCustomClassForDictionary:      Class (Ref<NSDictionary>)
//       The class to make for it; null for the usual one.
//
// Of instances:
//
//   modelCustomWillTransformFromDictionary:  Ref<NSDictionary> (Ref<NSDictionary>)
//       The dictionary to map instead; none fails.
//   modelCustomTransformFromDictionary:      bool (Ref<NSDictionary>)
//       Asked after mapping: whether it succeeded.
//   modelCustomTransformToDictionary:        bool (Ref<NSMutableDictionary>)
//       Asked after writing: whether it succeeded.
//
// A hook of another C++ type raises NSInvalidArgumentException when it is called.
#pragma once

#include "Platform/Runtime/NSObject.h"

class NSDictionary;

namespace qn::hooks {

SEL modelCustomPropertyMapper();
SEL modelContainerPropertyGenericClass();
SEL modelPropertyBlacklist();
SEL modelPropertyWhitelist();
SEL modelCustomClassForDictionary();
SEL modelCustomWillTransformFromDictionary();
SEL modelCustomTransformFromDictionary();
SEL modelCustomTransformToDictionary();

/// What the class answers to a hook without arguments; none without the hook.
id ask(Class cls, SEL hook);
/// What the class answers to `modelCustomClassForDictionary:`; null without the hook.
Class customClass(Class cls, const Ref<NSDictionary> &dictionary);

} // namespace qn::hooks
