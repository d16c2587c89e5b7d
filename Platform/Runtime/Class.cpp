#include "Platform/Runtime/Class.h"

#include <algorithm>
#include <map>

namespace {

struct Registry {
    std::mutex lock;
    std::map<std::string, Class, std::less<>> classes;
    std::map<std::string, Class (*)(), std::less<>> announced; // not used yet, maybe
    std::vector<Ref<objc_class>> owned;

    Class own(Ref<objc_class> cls) {
        const std::scoped_lock guard(lock);
        return owned.emplace_back(std::move(cls)).get();
    }
    void enter(Class cls) {
        const std::scoped_lock guard(lock);
        classes.emplace(cls->name(), cls);
    }
};

Registry &registry() {
    static auto &theRegistry = *new Registry;
    return theRegistry;
}

std::size_t slotOf(SEL selector, std::size_t mask) {
    return (reinterpret_cast<std::uintptr_t>(selector) >> 4) * 0x9E3779B97F4A7C15u >> 32 & mask;
}

} // namespace

// An immutable open-addressing table, at most half full.
struct objc_class::MethodTable {
    explicit MethodTable(const std::vector<std::unique_ptr<objc_method>> &methods) {
        std::size_t size = 4;
        while (size < 2 * methods.size())
            size *= 2;
        slots.resize(size);
        for (const auto &method : methods) {
            std::size_t slot = slotOf(method->name, size - 1);
            while (slots[slot])
                slot = (slot + 1) & (size - 1);
            slots[slot] = method.get();
        }
    }

    Method find(SEL selector) const {
        const std::size_t mask = slots.size() - 1;
        for (std::size_t slot = slotOf(selector, mask); slots[slot]; slot = (slot + 1) & mask)
            if (slots[slot]->name == selector)
                return slots[slot];
        return nullptr;
    }

    std::vector<Method> slots;
};

objc_class::objc_class(std::string name, Class superclass, Class metaClass)
    : name_(std::move(name)), superclass_(superclass), metaClass_(metaClass) {}

objc_class::~objc_class() = default;

Class objc_class::isa() const {
    return metaClass_ ? metaClass_ : NSObject::class_()->metaClass();
}

bool objc_class::isSubclassOf(Class other) const {
    for (const objc_class *cls = this; cls; cls = cls->superclass_)
        if (cls == other)
            return true;
    return false;
}

Method objc_class::findMethod(SEL selector) const {
    for (const objc_class *cls = this; cls; cls = cls->superclass_)
        if (const MethodTable *table = cls->table_.load(std::memory_order_acquire))
            if (const Method method = table->find(selector))
                return method;
    return nullptr;
}

namespace {

template <class T>
bool addNamed(std::vector<std::unique_ptr<T>> &list, T member) {
    if (std::ranges::any_of(list, [&](const auto &each) { return each->name == member.name; }))
        return false;
    list.push_back(std::make_unique<T>(std::move(member)));
    return true;
}

template <class T>
std::vector<const T *> pointers(const std::vector<std::unique_ptr<T>> &list) {
    std::vector<const T *> result;
    result.reserve(list.size());
    for (const auto &each : list)
        result.push_back(each.get());
    return result;
}

} // namespace

bool objc_class::addMethod(objc_method method) {
    const std::scoped_lock guard(writing_);
    const MethodTable *current = table_.load(std::memory_order_relaxed);
    if (current && current->find(method.name))
        return false;
    methods_.push_back(std::make_unique<objc_method>(std::move(method)));
    publications_.push_back(std::make_unique<MethodTable>(methods_));
    table_.store(publications_.back().get(), std::memory_order_release);
    return true;
}

std::vector<Method> objc_class::methods() const {
    const std::scoped_lock guard(writing_);
    return pointers(methods_);
}

bool objc_class::addIvar(objc_ivar ivar) {
    const std::scoped_lock guard(writing_);
    return addNamed(ivars_, std::move(ivar));
}

bool objc_class::addProperty(objc_property property) {
    const std::scoped_lock guard(writing_);
    return addNamed(properties_, std::move(property));
}

std::vector<Ivar> objc_class::ivars() const {
    const std::scoped_lock guard(writing_);
    return pointers(ivars_);
}

std::vector<objc_property_t> objc_class::properties() const {
    const std::scoped_lock guard(writing_);
    return pointers(properties_);
}

Ivar objc_class::findIvar(std::string_view name) const {
    for (const objc_class *cls = this; cls; cls = cls->superclass_)
        for (const Ivar ivar : cls->ivars())
            if (ivar->name == name)
                return ivar;
    return nullptr;
}

void objc_class::addProtocol(std::string_view name) {
    const std::scoped_lock guard(writing_);
    protocols_.emplace_back(name);
}

bool objc_class::conformsToProtocol(std::string_view name) const {
    for (const objc_class *cls = this; cls; cls = cls->superclass_) {
        const std::scoped_lock guard(cls->writing_);
        if (std::ranges::find(cls->protocols_, name) != cls->protocols_.end())
            return true;
    }
    return false;
}

Class objc_class::registerClass(const char *name, Class superclass,
                                const std::function<void(Class)> &declare) {
    const Class metaSuper = superclass ? superclass->metaClass_ : nullptr;
    const Class metaClass = registry().own(make<objc_class>(name, metaSuper, nullptr));
    const Class cls = registry().own(make<objc_class>(name, superclass, metaClass));
    // The root's meta-class inherits from the root class, so class objects answer the root's operations too.
    if (!superclass)
        metaClass->superclass_ = cls;
    if (declare)
        declare(cls);
    registry().enter(cls);
    return cls;
}

void runtime::announceClass(const char *name, Class (*find)()) {
    const std::scoped_lock guard(registry().lock);
    registry().announced.emplace(name, find);
}

Class objc_getClass(std::string_view name) {
    std::unique_lock guard(registry().lock);
    if (const auto found = registry().classes.find(name); found != registry().classes.end())
        return found->second;
    const auto found = registry().announced.find(name);
    if (found == registry().announced.end())
        return nullptr;
    const auto find = found->second;
    guard.unlock(); // the class enters the registry itself
    return find();
}

id class_createInstance(Class cls) {
    return cls && cls->instantiate ? cls->instantiate() : nullptr;
}
