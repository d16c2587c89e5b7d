// The descriptions of collections: the old property-list form, indented by four blanks per level.
#pragma once

#include "Platform/Foundation/Collections/ObjectVisit.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <algorithm>
#include <string>
#include <utility>

#pragma GCC visibility push(default)

using DescriptionVisit = ObjectVisit<struct DescribingCollections>;

/// For as long as something is described that may hold the same objects over and over: what is written of it
/// on the thread, by whoever describes a part of it, stays within a bound. Whoever finds it used up writes
/// `rest` instead of the items that are left.
class DescriptionLength {
public:
    /// The text of each collection is copied into that of the one around it: so many levels count as another.
    static constexpr NSUInteger levelsThatCount = 16;
    static constexpr NSUInteger most = NSUInteger{1} << 23; ///< and the last text whole, and ends of lines
    static constexpr std::u16string_view rest = u"...";

    DescriptionLength() : isOutermost_(!std::exchange(isUnderWay, true)) {
        if (isOutermost_)
            left = most;
    }
    DescriptionLength(const DescriptionLength &) = delete;
    DescriptionLength &operator=(const DescriptionLength &) = delete;
    ~DescriptionLength() {
        if (isOutermost_)
            isUnderWay = false;
    }

    static bool isUsedUp() { return left == 0; }
    static void use(NSUInteger units) { left -= std::min(left, units); }

private:
    static inline thread_local constinit bool isUnderWay = false;
    static inline thread_local constinit NSUInteger left = 0;

    const bool isOutermost_;
};

/// The text that `describe` makes of the collection, or the root object's "<Class: 0x…>" within just that and
/// below 512 collections: of one that holds itself, and of one that nests very deep, there would be no end.
template <class Describe>
Ref<NSString> collectionDescription(const NSObject &collection, const Describe &describe) {
    if (!DescriptionVisit::admits(collection))
        return collection.NSObject::description();
    const DescriptionVisit visit(collection);
    const DescriptionLength length;
    const Ref<NSString> text = describe();
    DescriptionLength::use(text->length() / DescriptionLength::levelsThatCount);
    return text;
}

/// The text of one element of a collection at `indent` levels: collections span lines, texts are quoted
/// unless they are plain words, characters beyond ASCII become "\Uxxxx". With a locale, elements that know
/// `descriptionWithLocale:` are asked for that. Within `collectionDescription`.
std::u16string collectionElementDescription(const id &element, const id &locale, NSUInteger indent);

/// The blanks in front of a line. More than 512 levels count as 512.
std::u16string indentation(NSUInteger levels);

/// The text in quotes, with `\"`, `\\`, `\n`, `\r`, `\t`, and `\Uxxxx` for other code units outside 0x20 to
/// 0x7E.
std::u16string quotedDescription(const std::u16string &units);

#pragma GCC visibility pop
