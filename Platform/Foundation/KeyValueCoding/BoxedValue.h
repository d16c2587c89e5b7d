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
#include <string>
#include <vector>

#pragma GCC visibility push(default)

class BoxedValue {
public:
    /// `encoding` is one that a method has, of one type.
    explicit BoxedValue(std::string encoding);
    BoxedValue(const BoxedValue &) = delete;
    BoxedValue &operator=(const BoxedValue &) = delete;

    /// False, and nothing set, when the object does not fit the type. None fits objects and classes only.
    bool set(const id &object);
    /// What `objc_method::invoke` takes for the value that was set.
    const void *argument();

    /// Where `objc_method::invoke` makes its result.
    void *result();
    /// The result as an object.
    id object() const;

private:
    bool isObject() const { return kind_ == '@'; }
    template <class T>
    T &as();
    template <class T>
    const T &as() const;

    const std::string encoding_;
    const char kind_; ///< the first character of the encoding that is no qualifier
    id object_;
    std::vector<std::max_align_t> bytes_; ///< of all but objects
    const void *first_ = nullptr;         ///< an array crosses as the address of its first element
};

#pragma GCC visibility pop
