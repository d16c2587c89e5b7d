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
// | selector                                   | of the | C++                            | what it tells    |
// |--------------------------------------------|--------|--------------------------------|------------------|
// | `modelCustomPropertyMapper`                | class  | `Ref<NSDictionary> ()`         | by property: its
// key, with dots a path of keys, or an array of those of which the first with a value counts | |
// `modelContainerPropertyGenericClass`       | class  | `Ref<NSDictionary> ()`         | by property: the
// class of its elements, or the name of one | | `modelPropertyBlacklist`, `…Whitelist`     | class  |
// `Ref<NSArray> ()`              | the properties left out; the only ones taken | |
// `modelCustomClassForDictionary:`           | class  | `Class (Ref<NSDictionary>)`    | the class to make
// for it; null for the usual | | `modelCustomWillTransformFromDictionary:`  | object | `Ref<NSDictionary>
// (Ref<NSDictionary>)` | the dictionary to map instead; none fails | | `modelCustomTransformFromDictionary:`
// | object | `bool (Ref<NSDictionary>)`     | asked after mapping: whether it succeeded | |
// `modelCustomTransformToDictionary:`        | object | `bool (Ref<NSMutableDictionary>)` | asked after
// writing: whether it succeeded |
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
