// What has to be one and the same in the program and in all libraries: classes, exceptions, blocks, and the
// locals of inline functions.
#include "Book.h"

#include <Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h>
#include <Platform/Foundation/Collections/NSArray.h>
#include <Platform/Foundation/Collections/ObjectVisit.h>
#include <Platform/Foundation/Text/NSString.h>
#include <Platform/Runtime/Object/Message.h>
#include <Platform/Runtime/Object/NSBlock.h>

#include <cstdio>

namespace {

class Page : public NSObject {
    NS_CLASS(Page, NSObject)
public:
    Ref<Book> book;
    bool isOdd(std::int32_t number) const { return number % 2 == 1; }
};
NS_IMPLEMENTATION(Page) {
    cls.property<&Page::book>("book", "N").method<&Page::isOdd>("isOdd:");
}

bool raises(const id &object) {
    try {
        static_cast<void>(object->mutableCopy());
        return false;
    } catch (const NSException &exception) {
        return exception.name() == NSInvalidArgumentException;
    }
}

int failures = 0;

void check(const char *what, bool holds) {
    std::printf("%s: %s\n", what, holds ? "yes" : "NO");
    failures += !holds;
}

} // namespace

int main() {
    const auto page = qn::modelWithJSON<Page>(
        u"{\"book\": {\"title\": \"Emma\", \"pages\": \"474\", \"chapters\": [{\"pages\": 9}]}}"_ns);
    const auto book = page->book;
    check("a class of another library is filled",
          book && book->pages == 474 && book->title->isEqual(u"Emma"_ns));
    check("classes are found by name",
          objc_getClass("Book") == Book::class_() && objc_getClass("Page") == Page::class_());
    const auto chapter = as<Book>(book->chapters->objectAtIndex(0));
    check("elements are of their class", chapter && chapter->pages == 9);
    check("objects can be cast",
          dynamic_cast<const Book *>(static_cast<NSObject *>(book.get())) == book.get());
    check("sends know their types", objc_msgSend<bool>(page, sel_registerName("isOdd:"), std::int32_t{3}));
    check("exceptions are caught", raises(page));
    check("blocks have their signature",
          asBlock<void(id)>(makeBlock<void(id)>([](const id &) {})) != nullptr);
    check("texts are written", qn::modelToJSONString(book) != nullptr);
    return failures;
}
