#include "Platform/Foundation/Serialization/Archive/NSKeyedArchiver.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/Archive/KeyedCoding.h"
#include "Platform/Foundation/Serialization/PropertyList/BinaryPropertyListWriter.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListUID.h"
#include "Platform/Foundation/System/CocoaError.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Message.h"

#include <unordered_map>

NS_IMPLEMENTATION(NSKeyedArchiver) {}

struct NSKeyedArchiver::State {
    Ref<NSMutableArray> objects = NSMutableArray::arrayWithObjects({u"$null"_ns});
    std::unordered_map<const NSObject *, std::uint64_t> indexes; ///< of the objects met, in `objects`
    std::unordered_map<Class, std::uint64_t> classes;            ///< the same of descriptions of classes
    std::vector<id> kept;            ///< the objects met, so that no new object gets the address of one
    Ref<NSMutableDictionary> values; ///< of the object being written
    unsigned depth = 0;
    Ref<NSError> error;
};

namespace {

id uid(std::uint64_t index) {
    return make<PropertyListUID>(index);
}

} // namespace

NSKeyedArchiver::NSKeyedArchiver() : state_(std::make_unique<State>()) {}
NSKeyedArchiver::~NSKeyedArchiver() = default;

Ref<NSData> NSKeyedArchiver::archivedDataWithRootObject(const id &object, Ref<NSError> *error) {
    const auto archiver = make<NSKeyedArchiver>();
    const auto archive = archiver->finish(object);
    if (archiver->state_->error && error)
        *error = archiver->state_->error;
    return archiver->state_->error ? nullptr : archive;
}

Ref<NSData> NSKeyedArchiver::finish(const id &root) {
    if (!root)
        fail(u"There is no object."_ns);
    const auto top = NSDictionary::dictionaryWithEntries({{u"root"_ns, reference(root)}});
    if (state_->error)
        return nullptr;
    std::string refusal;
    auto archive = writeBinaryPropertyList(
        NSDictionary::dictionaryWithEntries({{u"$version"_ns, NSNumber::numberWithInt(100000)},
                                             {u"$archiver"_ns, u"NSKeyedArchiver"_ns},
                                             {u"$top"_ns, top},
                                             {u"$objects"_ns, state_->objects}}),
        refusal);
    if (!archive)
        fail(NSString::stringWithUTF8String(refusal));
    return archive;
}

id NSKeyedArchiver::reference(const id &object) {
    if (!object || state_->error)
        return uid(0);
    const std::uint64_t index = state_->objects->count();
    const auto [found, isNew] = state_->indexes.emplace(object.get(), index);
    if (!isNew)
        return uid(found->second);
    state_->kept.push_back(object);
    const KeyedCoding *coding = KeyedCoding::ofObject(object);
    const bool isInline = coding && coding->isInline;
    state_->objects->addObject(isInline ? object : NSNull::null()); // a placeholder until it is encoded
    if (!isInline)
        encode(object, index);
    return uid(index);
}

void NSKeyedArchiver::encode(const id &object, std::uint64_t index) {
    static const SEL selector = sel_registerName("encodeWithCoder:");
    const KeyedCoding *coding = KeyedCoding::ofObject(object);
    const Class cls = coding ? coding->cls : object->isa();
    if (!object->respondsToSelector(selector))
        return fail(
            NSString::stringWithFormat("The class \"%s\" has no encodeWithCoder:.", cls->name().c_str()));
    if (state_->depth == deepestNesting)
        return fail(u"The objects nest too deep."_ns);
    ++state_->depth;
    const auto values = NSMutableDictionary::dictionary();
    const auto outer = std::exchange(state_->values, values);
    try {
        objc_msgSend(object, selector, self());
    } catch (const NSException &exception) {
        fail(NSString::stringWithUTF8String(exception.reason()));
    }
    state_->values = outer;
    --state_->depth;
    values->setObject(classReference(cls), u"$class"_ns);
    state_->objects->replaceObjectAtIndex(index, values);
}

id NSKeyedArchiver::classReference(Class cls) {
    const auto [found, isNew] = state_->classes.emplace(cls, state_->objects->count());
    if (isNew) {
        const auto name = [](Class of) { return NSString::stringWithUTF8String(of->name()); };
        const auto names = NSMutableArray::array();
        for (Class each = cls; each; each = each->superclass())
            names->addObject(name(each));
        state_->objects->addObject(
            NSDictionary::dictionaryWithEntries({{u"$classname"_ns, name(cls)}, {u"$classes"_ns, names}}));
    }
    return uid(found->second);
}

void NSKeyedArchiver::encodeObject(const id &object, const Ref<NSString> &key) {
    store(reference(object), key);
}

void NSKeyedArchiver::encodePropertyList(const id &leaf, const Ref<NSString> &key) {
    store(leaf, key);
}

void NSKeyedArchiver::encodeArrayOfObjects(const std::vector<id> &objects, const Ref<NSString> &key) {
    const auto references = NSMutableArray::arrayWithCapacity(objects.size());
    for (const id &object : objects)
        references->addObject(reference(object));
    store(references, key);
}

void NSKeyedArchiver::store(const id &value, const Ref<NSString> &key) {
    const auto name = KeyedCoding::storedKey(key);
    if (state_->values)
        state_->values->setObject(value, name);
}

void NSKeyedArchiver::failWithError(const Ref<NSError> &error) {
    if (!state_->error)
        state_->error = error;
}

void NSKeyedArchiver::fail(const Ref<NSString> &reason) {
    failWithError(cocoaError(NSCoderInvalidValueError, reason));
}
