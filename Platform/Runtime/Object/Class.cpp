#include "Platform/Runtime/Object/Class.h"

#include "Platform/Runtime/Object/NSException.h"

#include <algorithm>
#include <bit>

namespace {

std::size_t slotOf(SEL selector, std::size_t mask) {
    return (reinterpret_cast<std::uintptr_t>(selector) >> 4) * 0x9E3779B97F4A7C15u >> 32 & mask;
}

} // namespace

// An open-addressing table, at most half full. One thread at a time fills free slots; readers see a method
// there or not yet.
struct objc_class::MethodTable {
    explicit MethodTable(const std::vector<Method> &methods)
        : mask(std::bit_ceil(std::max<std::size_t>(4, 2 * methods.size())) - 1) {
        for (const Method each : methods)
            set(each);
    }

    bool holdsJust(const std::vector<Method> &methods) const {
        std::size_t held = 0;
        for (std::size_t slot = 0; slot <= mask; ++slot)
            held += slots[slot].load(std::memory_order_relaxed) ? 1u : 0u;
        return held == methods.size() &&
               std::ranges::all_of(methods, [&](Method each) { return find(each->name) == each; });
    }
    bool hasRoomFor(std::size_t methods) const { return 2 * methods <= mask + 1; }

    Method find(SEL selector) const {
        for (std::size_t slot = slotOf(selector, mask);; slot = (slot + 1) & mask)
            if (const Method method = slots[slot].load(std::memory_order_acquire);
                !method || method->name == selector)
                return method;
    }

    /// In the place of one of the same name, if there is any.
    void set(Method method) {
        for (std::size_t slot = slotOf(method->name, mask);; slot = (slot + 1) & mask)
            if (const Method other = slots[slot].load(std::memory_order_relaxed);
                !other || other->name == method->name)
                return slots[slot].store(method, std::memory_order_release);
    }

    using Slot = std::atomic<Method>;
    const std::size_t mask;
    const std::unique_ptr<Slot[]> slots = std::make_unique<Slot[]>(mask + 1);
};

constinit std::atomic<std::uint64_t> objc_class::theChanges = 0;

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

Method objc_class::ownMethod(SEL selector) const {
    const MethodTable *table = ownMethods();
    return table ? table->find(selector) : nullptr;
}

void objc_class::publish(Method method) {
    MethodTable *const table = ownMethods();
    if (exchanges_.empty() && table && table->hasRoomFor(methods_.size()))
        table->set(method);
    else
        publishAll();
}

void objc_class::publishAll() {
    const auto methods = exchangedMethods();
    auto found = std::ranges::find_if(tables_, [&](const auto &each) { return each->holdsJust(methods); });
    if (found == tables_.end())
        found = tables_.insert(found, std::make_unique<MethodTable>(methods));
    table_.store(found->get(), std::memory_order_release);
}

bool objc_class::addMethod(objc_method method) {
    runtime::Agreement::check(*this, method);
    const locking::MutexLock guard(writing_);
    if (ownMethod(method.name))
        return false;
    methods_.push_back(std::make_unique<objc_method>(std::move(method)));
    publish(methods_.back().get());
    return true;
}

bool objc_class::declareMethod(objc_method method) {
    const auto same = [&](const auto &each) { return each->name == method.name; };
    {
        const locking::MutexLock guard(writing_);
        if (const auto found = std::ranges::find_if(methods_, same); found != methods_.end()) {
            if ((*found)->synthesized == method.synthesized)
                return false;
            if (method.synthesized)
                return true; // the class has its own
            const auto replaced = std::exchange(*found, std::make_unique<objc_method>(std::move(method)));
            publish(found->get());
            return true;
        }
    }
    return addMethod(std::move(method));
}

std::vector<Method> objc_class::methods() const {
    const locking::MutexLock guard(writing_);
    return exchangedMethods();
}

std::uint64_t objc_class::exchangeMethods(SEL first, SEL second) {
    const auto refuse = [&](const std::string &fault) {
        throw NSException(NSInvalidArgumentException, "class " + name_ + ": " + sel_getName(first) + " and " +
                                                          sel_getName(second) +
                                                          " cannot be exchanged: " + fault);
    };
    if (first == second)
        refuse("they are the same");
    const locking::MutexLock guard(writing_);
    const auto find = [&](SEL selector) { return selector ? findMethod(selector) : nullptr; };
    const Method foundFirst = find(first), foundSecond = find(second);
    if (!foundFirst || !foundSecond)
        refuse(std::string("there is no ") + sel_getName(foundFirst ? second : first));
    if (foundFirst->types != foundSecond->types)
        refuse("their types are " + foundFirst->types + " and " + foundSecond->types);
    exchanges_.push_back({++lastExchange_, first, second, inheritedMethod(first), inheritedMethod(second)});
    publishAll();
    theChanges.fetch_add(1, std::memory_order_release);
    return lastExchange_;
}

void objc_class::takeBack(std::uint64_t exchange) {
    const locking::MutexLock guard(writing_);
    if (std::erase_if(exchanges_, [&](const Exchange &each) { return each.number == exchange; }) == 0)
        return;
    publishAll();
    theChanges.fetch_add(1, std::memory_order_release);
}

Method objc_class::inheritedMethod(SEL selector) const {
    if (std::ranges::any_of(methods_, [&](const auto &each) { return each->name == selector; }))
        return nullptr;
    for (const Exchange &each : exchanges_) { // one of the same types for all of them
        if (each.first == selector)
            return each.inheritedFirst;
        if (each.second == selector)
            return each.inheritedSecond;
    }
    return superclass_->findMethod(selector);
}

Method objc_class::underName(Method method, SEL selector) const {
    const auto isSame = [&](const auto &each) {
        return each->name == selector && each->imp == method->imp && each->types == method->types;
    };
    if (isSame(method))
        return method;
    if (const auto found = std::ranges::find_if(methods_, isSame); found != methods_.end())
        return found->get();
    if (const auto found = std::ranges::find_if(renamed_, isSame); found != renamed_.end())
        return found->get();
    renamed_.push_back(std::make_unique<objc_method>(*method));
    renamed_.back()->name = selector;
    return renamed_.back().get();
}

std::vector<Method> objc_class::exchangedMethods() const {
    auto methods = pointers(methods_);
    const auto indexOf = [&](SEL selector, Method inherited) {
        const auto found = std::ranges::find(methods, selector, &objc_method::name);
        const auto index = static_cast<std::size_t>(found - methods.begin());
        if (found == methods.end())
            methods.push_back(inherited);
        return index;
    };
    for (const Exchange &each : exchanges_) {
        const std::size_t first = indexOf(each.first, each.inheritedFirst),
                          second = indexOf(each.second, each.inheritedSecond);
        const Method was = methods[first];
        methods[first] = underName(methods[second], each.first);
        methods[second] = underName(was, each.second);
    }
    return methods;
}

bool objc_class::addIvar(objc_ivar ivar) {
    const locking::MutexLock guard(writing_);
    return addNamed(ivars_, std::move(ivar));
}

bool objc_class::addProperty(objc_property property) {
    const locking::MutexLock guard(writing_);
    return addNamed(properties_, std::move(property));
}

bool objc_class::setPropertyKeys(std::string_view property, std::vector<std::string> keys) {
    const locking::MutexLock guard(writing_);
    const auto found = std::ranges::find(properties_, property,
                                         [](const auto &each) -> std::string_view { return each->name; });
    if (found == properties_.end() || !(*found)->keys.empty())
        return false;
    (*found)->keys = std::move(keys);
    return true;
}

std::vector<Ivar> objc_class::ivars() const {
    const locking::MutexLock guard(writing_);
    return pointers(ivars_);
}

std::vector<objc_property_t> objc_class::properties() const {
    const locking::MutexLock guard(writing_);
    return pointers(properties_);
}

Ivar objc_class::findIvar(std::string_view name) const {
    for (const objc_class *cls = this; cls; cls = cls->superclass_)
        for (const Ivar ivar : cls->ivars())
            if (ivar->name == name)
                return ivar;
    return nullptr;
}

bool objc_class::addProtocol(std::string_view name) {
    const locking::MutexLock guard(writing_);
    if (std::ranges::find(protocols_, name) != protocols_.end())
        return false;
    protocols_.emplace_back(name);
    return true;
}

bool objc_class::conformsToProtocol(std::string_view name) const {
    for (const objc_class *cls = this; cls; cls = cls->superclass_) {
        const locking::MutexLock guard(cls->writing_);
        if (std::ranges::find(cls->protocols_, name) != cls->protocols_.end())
            return true;
    }
    return false;
}

Class objc_class::makeClass(const std::string &name, Class superclass, const Declare &declare) {
    const Class metaSuper = superclass ? superclass->metaClass_ : nullptr;
    const auto metaClass = make<objc_class>(name, metaSuper, nullptr);
    const auto cls = make<objc_class>(name, superclass, metaClass.get());
    // The root's meta-class inherits from the root class, so class objects answer the root's operations too.
    if (!superclass)
        metaClass->superclass_ = cls.get();
    if (declare)
        declare(cls.get());
    runtime::ClassRegistry::shared().enter(cls, metaClass);
    return cls.get();
}

Class objc_class::declareClass(const runtime::ClassAnnouncement &announcement, Class superclass,
                               const Declare &declare) {
    const std::string name = announcement.name();
    if (!runtime::ClassRegistry::shared().claim(name, &announcement))
        throw NSException(NSInvalidArgumentException, "two classes of the program are named " + name);
    return makeClass(name, superclass, [&](Class cls) {
        declare(cls);
        runtime::checkAccessors(cls);
    });
}

Class objc_class::registerClass(const char *name, Class superclass, const Declare &declare) {
    if (!name || !*name)
        throw NSException(NSInvalidArgumentException, "a class cannot be made at run time without a name");
    auto &registry = runtime::ClassRegistry::shared();
    if (!registry.claim(name, nullptr))
        return nullptr;
    try {
        return makeClass(name, superclass, declare);
    } catch (...) {
        registry.abandon(name);
        throw;
    }
}

void runtime::declareInstantiation(Class cls, objc_class::Instantiate function, bool isFirst) {
    if (!isFirst || !function)
        throw NSException(NSInvalidArgumentException, "class " + cls->name() +
                                                          ": the way to make instances is " +
                                                          (function ? "declared twice" : "none"));
    cls->instantiate = std::move(function);
}

Class objc_getClass(std::string_view name) {
    return runtime::ClassRegistry::shared().find(name);
}

Class runtime::findForeignClass(std::string_view name) {
    try {
        return objc_getClass(name);
    } catch (const NSException &) { // a mistake in the program: raised again when it uses the class itself
        return nullptr;
    }
}

id class_createInstance(Class cls) {
    return cls && cls->instantiate ? cls->instantiate() : nullptr;
}
