// Associated values: what other code keeps with an object whose class has no room for it. They are gone with
// their owner; an object without any takes not a byte more, and one look at a counter when it ends.
//
//     constexpr char noteKey = 0;
//     runtime::setAssociatedValue(book, &noteKey, text, runtime::Association::copied);
//     runtime::associatedValue(book, &noteKey);
//
// A key is an address that nothing else uses as one; the byte there is never read.
//
// | association | what is kept                                                                           |
// |-------------|----------------------------------------------------------------------------------------|
// | `strong`    | the value, as long as its owner lives. A value that leads back to the owner, through   |
// |             | whatever it owns, keeps it for ever: that is for the caller to avoid.                  |
// | `copied`    | its `copy`, in the same way                                                            |
// | `weak`      | the value as long as something else owns it; none afterwards                           |
//
// Of `strong` and `copied` there are `…Nonatomic` ones. Every value may be read, set and removed by several
// threads at a time. A nonatomic one promises that no thread replaces it while another has a look at it,
// which alone makes `peekAssociatedValue` safe.
//
// Threads: any.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

namespace runtime {

enum class Association : unsigned char { strong, strongNonatomic, copied, copiedNonatomic, weak };

/// Replaces the owner's value of that key; none removes it. Does nothing for an owner of none. What is
/// replaced is let go of before it returns. Raises NSInvalidArgumentException for a null key, and when the
/// value is to be copied and cannot be; the old value stays then.
void setAssociatedValue(const id &owner, const void *key, const id &value,
                        Association association = Association::strong);
/// None without one.
id associatedValue(const id &owner, const void *key);
/// The same without sharing ownership: valid until it is replaced or the owner ends. Null without one. Raises
/// NSInvalidArgumentException for a value that is atomic or weak, as it may go at any time.
NSObject *peekAssociatedValue(const id &owner, const void *key);
void removeAssociatedValue(const id &owner, const void *key);
/// Those of all keys, also of code that the caller does not know.
void removeAssociatedValues(const id &owner);

} // namespace runtime

#pragma GCC visibility pop
