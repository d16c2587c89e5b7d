// A value that crosses a call of a method known only by its encodings, and the object that stands for it.
//
//     BoxedValue pages("i");
//     pages.set(NSNumber::numberWithInt(320));           // true
//     const void *arguments[] = {pages.argument()};
//     setter->invoke(setter->imp, book, setter->name, arguments, nullptr);
//
// | type                    | as an object                                                      |
// |-------------------------|-------------------------------------------------------------------|
// | object                  | itself                                                            |
// | Class                   | the class object                                                  |
// | B c C s S i I q Q f d   | NSNumber of that type; any number is converted when set           |
// | D                       | NSNumber of a double                                              |
// | structure, union, array | NSValue of the type; only a value of exactly that type is taken   |
// | SEL, pointer            | the same                                                          |
// | void                    | none                                                              |
//
// Threads: one at a time.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <cstddef>
#include <memory>
#include <string_view>

#pragma GCC visibility push(default)

class BoxedValue {
public:
    /// `encoding` is one that a method has, of one type, and is there as long as the value.
    explicit BoxedValue(std::string_view encoding);
    BoxedValue(BoxedValue &&) = default;

    /// False, and nothing set, when the object does not fit the type. None fits objects and classes only.
    bool set(const id &object);
    /// What `objc_method::invoke` takes for the value that was set; valid until the value is moved.
    const void *argument();

    /// Where `objc_method::invoke` makes its result.
    void *result();
    /// The result as an object.
    id object() const;

private:
    bool isObject() const { return kind_ == '@'; }
    void *bytes() { return large_ ? large_.get() : static_cast<void *>(small_); }
    const void *bytes() const { return large_ ? large_.get() : static_cast<const void *>(small_); }
    template <class T>
    T &as();
    template <class T>
    const T &as() const;

    const std::string_view encoding_;
    const char kind_;             ///< the first character of the encoding that is no qualifier
    const void *first_ = nullptr; ///< an array crosses as the address of its first element
    id object_;
    // Of all but objects: numbers and most structures need no memory of their own.
    alignas(std::max_align_t) std::byte small_[sizeof(std::max_align_t)] = {};
    std::unique_ptr<std::max_align_t[]> large_;
};

#pragma GCC visibility pop
