#include "Platform/Runtime/Class.h"

#include <map>

namespace {

struct Registry {
    std::mutex lock;
    std::map<std::string, Class, std::less<>> classes;
    std::vector<Ref<objc_class>> owned;

    Class own(Ref<objc_class> cls) {
        const std::scoped_lock guard(lock);
        owned.push_back(cls);
        return cls.get();
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
    std::vector<Method> list;
    for (const auto &method : methods_)
        list.push_back(method.get());
    return list;
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

Class objc_getClass(std::string_view name) {
    const std::scoped_lock guard(registry().lock);
    const auto found = registry().classes.find(name);
    return found == registry().classes.end() ? nullptr : found->second;
}

id class_createInstance(Class cls) {
    return cls && cls->instantiate ? cls->instantiate() : nullptr;
}

bool class_addMethod(Class cls, SEL selector, IMP imp, std::string types, const std::type_info &signature) {
    return cls && selector && imp && cls->addMethod({selector, std::move(types), imp, &signature});
}
