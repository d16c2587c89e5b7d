// Exchanges what two selectors of a class call, for as long as one wants.
//
//     {
//         const auto swap = qn::swapMethods<Printer>("reset"_sel, "loggedReset"_sel);
//         objc_msgSend(printer, "reset"_sel);   // runs loggedReset(), which sends "loggedReset" for the
//         original
//     }
//     objc_msgSend(printer, "reset"_sel);       // runs reset()
//
// Only sends are redirected, also those by `performSelector`, key-value coding and the model mapping; a C++
// call of a member function is none. Subclasses inherit the exchange unless they have their own method. A
// method that the class inherits is exchanged for this class alone: its superclass and its siblings keep it.
// The class then has its own method of that name, which no longer follows what happens to the superclass's.
//
// Swaps of one class may be undone in any order: what remains is as if the undone one had never been made.
//
// Threads: any. A send finds either both methods as before or both exchanged, takes no lock and costs what it
// did before. An implementation that calls the original by its other name must not be running while the swap
// is made or undone: that name would call itself. Records of QNClassInfo are to be marked afterwards; those
// of the model mapping notice.
#pragma once

#include "Platform/Runtime/Object/Class.h"

#include <utility>

#pragma GCC visibility push(default)

namespace qn {

/// A swap that is undone with its holder.
class [[nodiscard]] MethodSwap {
public:
    /// For `swapMethods`. Raises NSInvalidArgumentException as that does.
    MethodSwap(Class cls, SEL first, SEL second)
        : cls_(cls), exchange_(cls ? cls->exchangeMethods(first, second) : 0) {}
    MethodSwap(MethodSwap &&other) noexcept
        : cls_(std::exchange(other.cls_, nullptr)), exchange_(other.exchange_) {}
    MethodSwap &operator=(MethodSwap &&other) noexcept {
        std::swap(cls_, other.cls_);
        std::swap(exchange_, other.exchange_);
        return *this;
    }
    ~MethodSwap() { undo(); }

    /// Does nothing for one that was undone, kept or moved from.
    void undo() {
        if (cls_)
            std::exchange(cls_, nullptr)->takeBack(exchange_);
    }
    /// Leaves the methods exchanged for good.
    void keep() { cls_ = nullptr; }

private:
    Class cls_;
    std::uint64_t exchange_;
};

/// Of instances. Does nothing for a null class. Raises NSInvalidArgumentException, which names class and
/// selectors, when the class neither has nor inherits one of them, when their types differ, and for two equal
/// selectors.
inline MethodSwap swapMethods(Class cls, SEL first, SEL second) {
    return {cls, first, second};
}
/// Of the class object.
inline MethodSwap swapClassMethods(Class cls, SEL first, SEL second) {
    return {cls ? cls->metaClass() : nullptr, first, second};
}

/// The same with the class as a type.
template <class T>
MethodSwap swapMethods(SEL first, SEL second) {
    return swapMethods(T::class_(), first, second);
}
template <class T>
MethodSwap swapClassMethods(SEL first, SEL second) {
    return swapClassMethods(T::class_(), first, second);
}

} // namespace qn

#pragma GCC visibility pop
