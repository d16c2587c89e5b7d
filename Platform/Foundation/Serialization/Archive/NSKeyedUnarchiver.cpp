#include "Platform/Foundation/Serialization/Archive/NSKeyedUnarchiver.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/Archive/KeyedCoding.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedArchiver.h"
#include "Platform/Foundation/Serialization/PropertyList/BinaryPropertyListReader.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListUID.h"
#include "Platform/Foundation/System/CocoaError.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Message.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

NS_IMPLEMENTATION(NSKeyedUnarchiver) {}

namespace {

constexpr unsigned deepest = NSKeyedArchiver::deepestNesting;

/// The weight of an object that refers to one that is still being read.
constexpr std::uint64_t endless = std::uint64_t{1} << 60;

/// What comparing an object with another may cost and how deep it nests, shared parts counted each time. A
/// limit on objects and depth would not do: where sets share what they hold, each level at least doubles the
/// comparisons, and a handful of objects more makes a level.
struct Measure {
    std::uint64_t weight = 1;
    unsigned height = 0;

    void add(std::uint64_t more) { weight = std::min(endless, weight + more); }
};

/// The cost of comparing or hashing an object of a program's own, which may have dozens of values.
constexpr std::uint64_t weightOfOwn = 256;

/// The cost of comparing or hashing a text or data, in steps about as long as those of other objects.
std::uint64_t weightOfLeaf(const id &leaf) {
    const auto text = as<NSString>(leaf);
    const auto data = as<NSData>(leaf);
    return 1 + (text ? text->length() : data ? data->length() : 0) / 64;
}

bool isLeaf(const id &value) {
    return as<NSString>(value) || as<NSNumber>(value) || as<NSData>(value);
}

struct Slot {
    enum { Untouched, Open, Done } state = Untouched;
    bool wasHandedOut = false; ///< while open
    id object;                 ///< none while open, unless `initWithCoder:` is running on it
    Measure measure;
};

} // namespace

struct NSKeyedUnarchiver::State {
    std::vector<Class> allowed;
    std::vector<id> objects; ///< as they stand in the archive
    std::vector<Slot> slots; ///< what became of them
    std::unordered_map<std::uint64_t, Class> classes;
    Ref<NSDictionary> values; ///< of the object being read
    Measure measure;          ///< of the object being read, as far as it is
    unsigned depth = 0;
    std::uint64_t budget = 0; ///< what comparisons may still cost
    Ref<NSError> error;
};

NSKeyedUnarchiver::NSKeyedUnarchiver(std::vector<Class> allowed) : state_(std::make_unique<State>()) {
    state_->allowed = std::move(allowed);
}
NSKeyedUnarchiver::~NSKeyedUnarchiver() = default;

id NSKeyedUnarchiver::unarchivedObjectOfClasses(const std::vector<Class> &classes, const Ref<NSData> &archive,
                                                Ref<NSError> *error) {
    const auto unarchiver = make<NSKeyedUnarchiver>(classes);
    const id root = unarchiver->decodeRoot(archive);
    if (unarchiver->state_->error && error)
        *error = unarchiver->state_->error;
    return unarchiver->state_->error ? nullptr : root;
}

id NSKeyedUnarchiver::decodeRoot(const Ref<NSData> &archive) {
    const std::string_view bytes =
        archive ? std::string_view(reinterpret_cast<const char *>(archive->bytes()), archive->length())
                : std::string_view();
    if (!bytes.starts_with("bplist"))
        return fail(u"The archive is not a binary property list."_ns);
    std::string refusal;
    const id any = readBinaryPropertyList(bytes, {NSPropertyListMutabilityOptions::Immutable, true}, refusal);
    if (!any)
        return fail(NSString::stringWithFormat("The archive is damaged. %s", refusal.c_str()));
    const auto list = as<NSDictionary>(any);
    if (!list || !u"NSKeyedArchiver"_ns->isEqual(list->objectForKey(u"$archiver"_ns)) ||
        !NSNumber::numberWithInt(100000)->isEqual(list->objectForKey(u"$version"_ns)))
        return fail(u"The property list is not a keyed archive."_ns);
    const auto objects = as<NSArray>(list->objectForKey(u"$objects"_ns));
    const auto top = as<NSDictionary>(list->objectForKey(u"$top"_ns));
    if (!objects || !u"$null"_ns->isEqual(objects->firstObject()))
        return fail(u"The archive has no objects."_ns);
    if (!top || !top->objectForKey(u"root"_ns))
        return fail(u"The archive has no root object."_ns);
    state_->objects = objects->allObjects();
    state_->slots.resize(state_->objects.size());
    state_->budget = (std::uint64_t{1} << 24) + 32 * bytes.size();
    return decodeReference(top->objectForKey(u"root"_ns));
}

id NSKeyedUnarchiver::decodeReference(const id &reference) {
    if (state_->error)
        return nullptr;
    const auto uid = as<PropertyListUID>(reference);
    if (!uid || uid->index() >= state_->objects.size())
        return fail(u"A value that should refer to an object refers to none."_ns);
    if (uid->index() == 0)
        return nullptr;
    Slot &slot = state_->slots[uid->index()];
    if (slot.state == Slot::Untouched)
        decode(uid->index());
    if (state_->error)
        return nullptr;
    if (slot.state == Slot::Open) {
        if (!slot.object)
            return fail(u"A collection holds itself."_ns);
        slot.wasHandedOut = true;
        state_->measure.add(endless);
        return slot.object;
    }
    if (state_->depth + slot.measure.height > deepest)
        return fail(u"The objects nest too deep."_ns);
    state_->measure.add(slot.measure.weight);
    state_->measure.height = std::max(state_->measure.height, slot.measure.height);
    return slot.object;
}

/// Fills the slot, or fails.
void NSKeyedUnarchiver::decode(std::uint64_t index) {
    Slot &slot = state_->slots[index];
    const id &value = state_->objects[index];
    const auto values = as<NSDictionary>(value);
    if (isLeaf(value)) {
        if (isAllowed(value->isa()))
            slot = {.state = Slot::Done, .object = value, .measure = {weightOfLeaf(value), 0}};
        return;
    }
    const Class cls = values ? classOf(values->objectForKey(u"$class"_ns)) : nullptr;
    if (!cls) {
        fail(NSString::stringWithFormat("The object %lu is of no known class.",
                                        static_cast<unsigned long>(index)));
        return;
    }
    if (!isAllowed(cls))
        return;
    if (state_->depth == deepest) {
        fail(u"The objects nest too deep."_ns);
        return;
    }
    slot.state = Slot::Open;
    const auto outerValues = std::exchange(state_->values, values);
    const auto outerMeasure = std::exchange(state_->measure, Measure());
    ++state_->depth;
    slot.object = decodeContents(cls, index);
    --state_->depth;
    state_->values = outerValues;
    slot.measure = {state_->measure.weight, state_->measure.height + 1};
    state_->measure = outerMeasure;
    slot.state = Slot::Done;
    if (!slot.object)
        fail(NSString::stringWithFormat("The values of the object %lu make no \"%s\".",
                                        static_cast<unsigned long>(index), cls->name().c_str()));
    else
        isAllowed(slot.object->isa()); // an `initWithCoder:` may have given another object
}

id NSKeyedUnarchiver::decodeContents(Class cls, std::uint64_t index) try {
    static const SEL selector = sel_registerName("initWithCoder:");
    if (!cls->findMethod(selector)) {
        const KeyedCoding *coding = KeyedCoding::ofClass(cls);
        return coding ? coding->decode(*this) : nullptr;
    }
    state_->measure.add(weightOfOwn);
    const id made = class_createInstance(cls);
    state_->slots[index].object = made;
    const id object = objc_msgSend<id>(made, selector, self());
    return object != made && state_->slots[index].wasHandedOut ? nullptr : object;
} catch (const NSException &exception) { // the values are not what `initWithCoder:` expects
    return fail(NSString::stringWithUTF8String(exception.reason()));
}

Class NSKeyedUnarchiver::classOf(const id &reference) {
    const auto uid = as<PropertyListUID>(reference);
    if (!uid || uid->index() >= state_->objects.size())
        return nullptr;
    const auto [found, isNew] = state_->classes.emplace(uid->index(), nullptr);
    const auto description = as<NSDictionary>(state_->objects[uid->index()]);
    if (isNew && description)
        found->second = KeyedCoding::classNamed(as<NSString>(description->objectForKey(u"$classname"_ns)));
    return found->second;
}

bool NSKeyedUnarchiver::isAllowed(Class cls) {
    const bool allowed = std::any_of(state_->allowed.begin(), state_->allowed.end(),
                                     [cls](Class each) { return cls->isSubclassOf(each); });
    if (!allowed)
        fail(NSString::stringWithFormat("The class \"%s\" is not allowed.", cls->name().c_str()));
    return allowed;
}

id NSKeyedUnarchiver::encodedValue(const Ref<NSString> &key) const {
    const auto name = KeyedCoding::storedKey(key);
    return state_->values && !state_->error ? state_->values->objectForKey(name) : nullptr;
}

bool NSKeyedUnarchiver::containsValueForKey(const Ref<NSString> &key) {
    return encodedValue(key) != nullptr;
}

id NSKeyedUnarchiver::decodeObjectForKey(const Ref<NSString> &key) {
    const id value = encodedValue(key);
    return value ? decodeReference(value) : nullptr;
}

id NSKeyedUnarchiver::decodePropertyListForKey(const Ref<NSString> &key) {
    id value = encodedValue(key);
    if (value && !isLeaf(value))
        return fail(NSString::stringWithFormat("The value of \"%@\" is no text, number or data.", key));
    if (value)
        state_->measure.add(weightOfLeaf(value));
    return value;
}

std::optional<std::vector<id>> NSKeyedUnarchiver::decodeArrayOfObjectsForKey(const Ref<NSString> &key) {
    const auto references = as<NSArray>(encodedValue(key));
    if (!references)
        return std::nullopt;
    std::vector<id> objects;
    for (const id &reference : references->allObjects()) {
        objects.push_back(decodeReference(reference));
        if (!objects.back())
            return std::nullopt;
    }
    return objects;
}

// Whoever puts the objects into a table hashes each of them and compares it with those that are alike, as a
// table here does. Shared parts and many alike would make that take forever.
std::optional<std::vector<id>> NSKeyedUnarchiver::decodeDistinctObjectsForKey(const Ref<NSString> &key) {
    auto objects = decodeArrayOfObjectsForKey(key);
    if (!objects)
        return std::nullopt;
    const auto references = as<NSArray>(encodedValue(key));
    ObjectTable compared(objects->size());
    for (NSUInteger i = 0; i < objects->size(); ++i) {
        const id &object = (*objects)[i];
        const Slot &slot = state_->slots[as<PropertyListUID>(references->objectAtIndex(i))->index()];
        const std::uint64_t weight = slot.state == Slot::Done ? slot.measure.weight : endless;
        const std::uint64_t times = weight <= state_->budget ? 1 + compared.alike(object) : 1;
        if (weight > state_->budget / times) {
            fail(u"The elements of a set or the keys of a dictionary cost too much to compare."_ns);
            return std::nullopt;
        }
        state_->budget -= weight * times;
        state_->measure.add(weight * times);
        compared.add(object, nullptr);
    }
    return objects;
}

void NSKeyedUnarchiver::failWithError(const Ref<NSError> &error) {
    if (!state_->error)
        state_->error = error;
}

id NSKeyedUnarchiver::fail(const Ref<NSString> &reason) {
    failWithError(cocoaError(NSCoderReadCorruptError, reason));
    return nullptr;
}
