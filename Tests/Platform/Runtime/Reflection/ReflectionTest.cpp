#include "Platform/Runtime/Reflection/Reflection.h"
#include "Platform/Foundation/KeyValueCoding/NSKeyValueCoding.h"
#include "Platform/Foundation/Numbers/CGGeometry.h"
#include "Platform/Foundation/Text/NSObjCRuntime.h"
#include "Platform/Runtime/Object/Message.h"
#include "Platform/Runtime/Object/NSBlock.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TextTable.h"

#include <sstream>

namespace {

class Author : public NSObject {
    NS_CLASS(Author, NSObject)
public:
    Ref<NSString> name;
};
NS_IMPLEMENTATION(Author) {
    cls.property<&Author::name>("name", "N");
}

class Book : public NSObject {
    NS_CLASS(Book, NSObject)
public:
    enum class Binding : std::uint16_t { paper, cloth };
    Ref<NSArray> words() const { return title ? title->componentsSeparatedByString(u" "_ns) : nullptr; }
    bool isOpen() const { return open; }
    void setOpen(bool value) { open = value; }
    std::int32_t visible = 0;

    Ref<NSString> title;
    Ref<NSMutableArray> list;
    Weak<Author> author;
    id anything;
    Class kind = nullptr;
    SEL action = nullptr;
    Ref<Block<int()>> block;
    const char *text = nullptr;
    int *pointer = nullptr;
    long double longest = 0;
    long long large = 0;
    char letter = 0;
    Binding binding = Binding::paper;
    bool open = false;
    CGRect frame;
    std::int16_t numbers[3] = {};

private:
    double secret_ = 0.5;
};
NS_IMPLEMENTATION(Book) {
    cls.property<&Book::title>("title", "N,C", {"P1", "P2"})
        .property<&Book::list, Author>("list", "C")
        .property<&Book::author>("author")
        .property<&Book::anything>("anything", "&,N", {"Author"})
        .property<&Book::kind>("kind")
        .property<&Book::action>("action")
        .property<&Book::block>("block", "C")
        .property<&Book::text>("text")
        .property<&Book::pointer>("pointer")
        .property<&Book::longest>("longest", "R")
        .property<&Book::large>("x")
        .property<&Book::letter>("letter", "N,Vinitial,Sput:,Gtake")
        .property<&Book::binding>("binding")
        .property<&Book::words>("words", "N")
        .property<&Book::isOpen, &Book::setOpen>("open", "GisOpen,N")
        .property<&Book::frame>("frame")
        .property<&Book::numbers>("numbers")
        .property<&Book::secret_>("épaisseur", "R")
        .property<Ref<NSString>>("later", "D,N")
        .ivar<&Book::visible>("visible")
        .protocol("Readable");
}

std::string attributesOf(objc_property_t property) {
    std::string text;
    for (const auto &[name, value] : property_copyAttributeList(property))
        text += (text.empty() ? "" : ",") + name + value;
    return text;
}

} // namespace

TEST(EncodedType, tellsLengthAndSize) {
    for (const auto &[encoding, expected] : rowsOf(ZK_TABLES "/Reflection/Encodings.txt")) {
        std::ostringstream told;
        const auto type = runtime::firstType(encoding);
        type ? told << type->length << " " << type->size << " " << type->alignment : told << "none";
        EXPECT_EQ(told.str(), expected) << encoding;
        const bool endsEarly = encoding[0] == 'r' || encoding[0] == '@';
        for (std::size_t cut = 0; type && cut < type->length && !endsEarly; ++cut)
            EXPECT_FALSE(runtime::firstType(encoding.substr(0, cut))) << encoding << " " << cut;
    }
    EXPECT_FALSE(runtime::firstType(std::string(1 << 20, '^') + "v")) << "nested too deep";
    EXPECT_FALSE(runtime::firstType(std::string(1 << 20, '[')));
}

TEST(Reflection, propertiesAndTheirAttributes) {
    std::vector<std::pair<std::string, std::string>> list;
    for (const objc_property_t property : class_copyPropertyList(Book::class_()))
        list.emplace_back(property_getName(property), attributesOf(property));
    EXPECT_EQ(list, rowsOf(ZK_TABLES "/Reflection/Properties.txt"));
    for (const char *selector : {"title", "setTitle:", "setX:", "take", "put:", "words", "isOpen",
                                 "setOpen:", "setNumbers:", "épaisseur", "setBinding:"})
        EXPECT_TRUE(Book::class_()->findMethod(sel_registerName(selector))) << selector;
    for (const char *selector : {"letter", "setLetter:", "setWords:", "setLongest:", "open", "later",
                                 "setLater:", "visible", "setÉpaisseur:"})
        EXPECT_FALSE(Book::class_()->findMethod(sel_registerName(selector))) << selector;
    EXPECT_EQ(runtime::setterName("épaisseur"), "setÉpaisseur:");
    EXPECT_EQ(runtime::setterName("URL") + runtime::setterName("_x"), "setURL:set_x:");
    EXPECT_EQ(runtime::setterName("𐐨x"), "set𐐀x:") << "a character of two units";
    EXPECT_EQ(class_copyIvarList(Book::class_()).size(), 17u) << "computed and dynamic properties have none";
    EXPECT_TRUE(class_conformsToProtocol(Book::class_(), "Readable"));
    EXPECT_FALSE(class_conformsToProtocol(Author::class_(), "Readable"));
    const auto properties = class_copyPropertyList(Book::class_());
    EXPECT_EQ(properties[2]->cls(), Author::class_());
    EXPECT_EQ(properties[1]->elementClass(), Author::class_());
}

namespace {

class Draft : public NSObject {
    NS_CLASS(Draft, NSObject)
public:
    Ref<NSString> text;
    std::int32_t pages = 0, words = 0;
    Weak<Author> author;
    std::int32_t takePages() const { return pages; }
    void putPages(std::int32_t value) { pages = 2 * value; }
    void putWords(std::int32_t value) { words = 3 * value; }
    void putText(std::int64_t) {}
};
NS_IMPLEMENTATION(Draft) {
    cls.method<&Draft::putPages>("setPages:")
        .property<&Draft::pages>("pages")
        .property<&Draft::words>("words")
        .method<&Draft::putWords>("setWords:")
        .property<&Draft::text>("text");
}

} // namespace

TEST(Property, anAccessorOfTheClassWins) {
    const auto draft = make<Draft>();
    draft->setValue(number(5), u"pages"_ns);
    draft->setValue(number(5), u"words"_ns);
    EXPECT_TRUE(draft->pages == 10 && draft->words == 15) << "listed before the property and after it";
}

TEST(Property, whatWouldBeIgnoredIsRefused) {
    using Builder = ClassBuilder<Draft>;
    const auto refusal = [](const std::function<void(Builder &)> &declare) {
        return complaint([&] {
            objc_registerSubclass<Draft>("Refused", [&](Class made) {
                Builder builder(made);
                declare(builder);
                runtime::checkAccessors(made);
            });
        });
    };
    const std::string start = "NSInvalidArgumentException class Refused", ofN = ", property \"n\": ";
    for (const auto &[attributes, reason] : rowsOf(ZK_TABLES "/Reflection/RefusedAttributes.txt"))
        EXPECT_EQ(refusal([&](Builder &cls) { cls.property<&Draft::pages>("n", attributes.c_str()); }),
                  start + ofN + reason);
    const std::pair<std::function<void(Builder &)>, std::string> table[] = {
        {[](Builder &cls) { cls.property<&Draft::text>("n", "C,&"); },
         ofN + "of the attributes C, & and W only one can hold"},
        {[](Builder &cls) { cls.property<&Draft::text>("n", "W"); },
         ofN + "the attribute W and a weak variable go together"},
        {[](Builder &cls) { cls.property<&Draft::author>("n", "&"); },
         ofN + "the attribute W and a weak variable go together"},
        {[](Builder &cls) { cls.property<&Draft::takePages, &Draft::putPages>("n", "R"); },
         ofN + "it is read-only and has a setter"},
        {[](Builder &cls) { cls.property<&Draft::pages>(""); }, ", property \"\": it has no name"},
        {[](Builder &cls) { cls.property<&Draft::pages, Author>("n"); },
         ofN + "only collections have elements"},
        {[](Builder &cls) { cls.property<&Draft::text, Author>("n"); },
         ofN + "only collections have elements"},
        {[](Builder &cls) { cls.property<&Draft::pages>("n", "", {"P"}); },
         ofN + "only objects of a class have protocols"},
        {[](Builder &cls) { cls.property<Ref<Block<void()>>>("n", "D", {"P"}); },
         ofN + "only objects of a class have protocols"},
        {[](Builder &cls) { cls.property<&Draft::text>("n", "", {"<Q>"}); },
         ofN + "a protocol's name is malformed"},
        {[](Builder &cls) { cls.key("k"); }, ", property \"\": a key has to follow its property"},
        {[](Builder &cls) { cls.property<&Draft::pages>("n").key("a").key("b"); },
         ofN + "it has its keys twice"},
        {[](Builder &cls) { cls.property<&Draft::pages>("n").key("a", ""); }, ofN + "a key is empty"},
        {[](Builder &cls) { cls.property<&Draft::text>("n").property<&Draft::pages>("n"); },
         ofN + "it is declared twice"},
        {[](Builder &cls) { cls.property<&Draft::pages>("m", "Gn").property<&Draft::pages>("n"); },
         ofN + "the class has another n"},
        {[](Builder &cls) { cls.property<&Draft::text>("n").method<&Draft::putText>("setN:"); },
         ofN + "setN: is no accessor of the type @\"NSString\", its types are v24@0:8q16"},
        {[](Builder &cls) { cls.property<std::int32_t>("n").method<&Draft::putText>("n"); },
         ofN + "n is no accessor of the type i, its types are v24@0:8q16"},
        {[](Builder &cls) { cls.method<&Draft::putPages>("setText:"); },
         ", property \"text\": setText: is no accessor of the type @\"NSString\", its types are v20@0:8i16"},
        {[](Builder &cls) { cls.property<&Draft::pages>("m").property<&Draft::words>("n", "V_m"); },
         ": the instance variable _m is declared twice"},
        {[](Builder &cls) { cls.method<&Draft::takePages>("n").method<&Draft::takePages>("n"); },
         ": the operation n is declared twice"},
        {[](Builder &cls) { cls.protocol("P").protocol("P"); }, ": the protocol P is declared twice"},
        {[](Builder &cls) { cls.protocol(""); }, ": the protocol's name \"\" is malformed"},
        {[](Builder &cls) { cls.instantiate(&make<Draft>).instantiate(&make<Draft>); },
         ": the way to make instances is declared twice"},
        {[](Builder &cls) { cls.instantiate(nullptr); }, ": the way to make instances is none"},
    };
    for (const auto &[declare, reason] : table)
        EXPECT_EQ(refusal(declare), start + reason);
    EXPECT_EQ(refusal([](Builder &cls) { cls.property<&Draft::pages>("text"); }), "") << "it hides the other";
    EXPECT_TRUE(objc_getClass("Refused")) << "what was refused left nothing behind";
}

TEST(Reflection, methodsArgumentByArgument) {
    for (const auto &[selector, expected] : {std::pair{"frame", "{CGRect={CGPoint=dd}{CGSize=dd}} @ : "},
                                             {"setFrame:", "v @ : {CGRect={CGPoint=dd}{CGSize=dd}} "},
                                             {"setNumbers:", "v @ : [3s] "}}) {
        const Method method = Book::class_()->findMethod(sel_registerName(selector));
        std::string types = method_copyReturnType(method);
        for (unsigned i = 0; i <= method_getNumberOfArguments(method); ++i)
            types += " " + method_copyArgumentType(method, i);
        EXPECT_EQ(types, expected);
        EXPECT_EQ(method_copyArgumentType(method, ~0u), "");
    }
    const Method setter = Book::class_()->findMethod("setFrame:"_sel);
    EXPECT_STREQ(method_getTypeEncoding(setter), "v48@0:8{CGRect={CGPoint=dd}{CGSize=dd}}16");
    EXPECT_EQ(*setter->signature, typeid(void (*)(NSObject *, SEL, CGRect)));
    const auto book = make<Book>();
    reinterpret_cast<void (*)(NSObject *, SEL, CGRect)>(method_getImplementation(setter))(
        book.get(), method_getName(setter), {{1, 2}, {3, 4}});
    EXPECT_EQ(book->frame, (CGRect{{1, 2}, {3, 4}}));
}

TEST(Reflection, nullHandlesAndUnknownNames) {
    EXPECT_TRUE(!NSClassFromString(u"Nobody"_ns) && !NSClassFromString(nullptr) &&
                !NSStringFromClass(nullptr) && !NSSelectorFromString(nullptr) &&
                !objc_getMetaClass("Nobody"));
    EXPECT_TRUE(!class_getSuperclass(nullptr) && !class_isMetaClass(nullptr) && !ivar_getName(nullptr) &&
                !ivar_getOffset(nullptr) && !method_getName(nullptr) &&
                !method_getNumberOfArguments(nullptr));
    EXPECT_THAT(class_copyMethodList(nullptr), IsEmpty());
    EXPECT_THAT(property_copyAttributeList(nullptr), IsEmpty());
}

TEST(Reflection, classesAndMembersMadeAtRunTime) {
    const Class made = objc_registerSubclass<Book>("Atlas", [](Class cls) {
        class_addMethod(
            cls, "maps"_sel, +[](NSObject *, SEL) { return 12; });
    });
    ASSERT_TRUE(made);
    EXPECT_EQ(objc_registerSubclass<Book>("Atlas"), nullptr) << "the name is taken";
    for (const char *name : {"", static_cast<const char *>(nullptr)})
        EXPECT_NE(complaint([&] { objc_registerSubclass<Book>(name); }), "");
    const id atlas = class_createInstance(objc_getClass("Atlas"));
    EXPECT_TRUE(atlas->isMemberOfClass(made) && as<Book>(atlas));
    EXPECT_EQ(objc_msgSend<std::int32_t>(atlas, "maps"_sel), 12);
    EXPECT_EQ(text(atlas->valueForKey(u"maps"_ns)), "12");
    EXPECT_TRUE(class_addProperty(made, "maps", {{"T", "i"}, {"R", ""}}));
    EXPECT_FALSE(class_addProperty(made, "maps", {}) || class_addProperty(nullptr, "maps", {}));
    EXPECT_EQ(attributesOf(class_copyPropertyList(made).front()), "Ti,R");
}

TEST(Property, storesCopiesOrWatches) {
    const auto book = make<Book>();
    const auto text = make<NSMutableString>(u"mutable");
    objc_msgSend(book, "setTitle:"_sel, text);
    text->setString(u"changed"_ns);
    EXPECT_EQ(book->title->utf8(), "mutable");
    EXPECT_FALSE(as<NSMutableString>(book->title));
    const auto list = NSMutableArray::array();
    objc_msgSend(book, "setList:"_sel, list);
    EXPECT_TRUE(book->list && book->list != list) << "a copy that the member can take";
    auto author = make<Author>();
    objc_msgSend(book, "setAuthor:"_sel, author);
    EXPECT_EQ(objc_msgSend<id>(book, "author"_sel), author);
    author = nullptr;
    EXPECT_EQ(objc_msgSend<id>(book, "author"_sel), nullptr);
    objc_msgSend(book, "setBlock:"_sel, makeBlock<void(int)>([](int) {}));
    EXPECT_EQ(book->block, nullptr) << "a block of another signature is another class";
}

TEST(KeyValueCoding, roundTripsEveryKindOfValue) {
    const auto book = make<Book>();
    int target = 0;
    const std::int16_t numbers[3] = {1, -2, 3};
    const std::pair<const char *, id> table[] = {
        {"title", u"Maps"_ns},
        {"anything", number(true)},
        {"kind", Author::class_()->self()},
        {"kind", nullptr},
        {"action", NSValue::valueWith("open"_sel)},
        {"block", makeBlock<int()>([] { return 1; })},
        {"text", NSValue::valueWith(static_cast<const char *>("abc"))},
        {"pointer", NSValue::valueWithPointer(&target)},
        {"x", number(INT64_MIN)},
        {"initial", number(std::int8_t{-3})},
        {"binding", number(std::uint16_t{1})},
        {"open", number(true)},
        {"longest", number(0.25)},
        {"frame", NSValue::valueWith(CGRect{{1, 2}, {3, 4}})},
        {"numbers", NSValue::valueWithBytes(numbers, "[3s]")},
        {"épaisseur", number(2.5)},
        {"visible", number(-1)},
    };
    for (const auto &[key, value] : table) {
        book->setValue(value, string(key));
        const id read = book->valueForKey(string(key));
        EXPECT_TRUE(value ? value->isEqual(read) : !read) << key << ": " << text(read);
    }
    EXPECT_TRUE(book->numbers[1] == -2 && book->open && book->pointer == &target);
    EXPECT_EQ(text(book->valueForKey(u"words"_ns)), text(book->words()));
    book->setValue(number(300.7), u"initial"_ns);
    EXPECT_EQ(book->letter, 44) << "numbers are narrowed";

    const auto author = make<Author>();
    author->name = u"Ann"_ns;
    book->author = author;
    EXPECT_EQ(text(valueForKeyPath(book, u"author.name"_ns)), "Ann");
    EXPECT_EQ(valueForKeyPath(book, u"list.name"_ns), nullptr);
    const auto dictionary = NSMutableDictionary::dictionary();
    dictionary->setValue(book, u"count"_ns);
    EXPECT_EQ(dictionary->valueForKey(u"count"_ns), book);
    dictionary->setValue(nullptr, u"count"_ns);
    EXPECT_EQ(dictionary->count(), 0u);
}

TEST(KeyValueCoding, refusesWhatDoesNotFit) {
    const auto book = make<Book>();
    const std::tuple<id, const char *, std::string> table[] = {
        {nullptr, "x",
         "NSInvalidArgumentException -[Book setValue:forKey:]: none does not fit the key \"x\""},
        {nullptr, "frame", "NSInvalidArgumentException"},
        {u"5"_ns, "x", "NSInvalidArgumentException"},
        {u"5"_ns, "kind", "NSInvalidArgumentException"},
        {NSValue::valueWith(CGSize{1, 2}), "frame", "NSInvalidArgumentException"},
        {number(1), "pointer", "NSInvalidArgumentException"},
        {book, "words", "NSUnknownKeyException"},
        {book, "pages", "NSUnknownKeyException"},
        {book, "", "NSUnknownKeyException"},
    };
    for (const auto &[value, key, expected] : table)
        EXPECT_THAT(complaint([&] { book->setValue(value, string(key)); }), StartsWith(expected)) << key;
    const std::string unknown = "NSUnknownKeyException -[Book valueForKey:]: there is no value for the key ";
    EXPECT_EQ(complaint([&] { book->valueForKey(u"setX:"_ns); }), unknown + "\"setX:\"");
    EXPECT_EQ(raised([&] { book->valueForKey(nullptr); }), "NSUnknownKeyException");
    EXPECT_EQ(complaint([&] { book->valueForKey(u"pages"_ns); }), unknown + "\"pages\"");
    EXPECT_FALSE(runtime::findSelector("getPages") || runtime::findSelector("isPages")) << "not kept";
}

TEST(Value, bytesWithTheirType) {
    const auto size = NSValue::valueWith(CGSize{1, 2});
    EXPECT_EQ(size->objCType(), "{CGSize=dd}");
    EXPECT_EQ(size->getValue<CGSize>(), (CGSize{1, 2}));
    EXPECT_TRUE(size->isEqual(NSValue::valueWith(CGSize{1, 2})) && size->copy() == size);
    EXPECT_EQ(size->hash(), NSValue::valueWith(CGSize{1, 2})->hash());
    EXPECT_FALSE(size->isEqual(NSValue::valueWith(CGPoint{1, 2})) || size->isEqual(nullptr));
    const std::uint8_t bytes[] = {1, 2, 0xfe, 4};
    EXPECT_EQ(text(NSValue::valueWithBytes(bytes, "[4C]")), "{length = 4, bytes = 0x0102fe04}");
    EXPECT_EQ(text(NSValue::valueWithPointer(bytes)),
              NSString::stringWithFormat("%p", static_cast<const void *>(bytes))->utf8());
    EXPECT_EQ(NSValue::valueWithPointer(bytes)->pointerValue(), bytes);
    EXPECT_EQ(size->pointerValue(), nullptr);
    for (const char *type : {"", "v", "ii", "@", "{S=@}", "{Opaque}", "nonsense"})
        EXPECT_THAT(complaint([&] { NSValue::valueWithBytes(bytes, type); }), HasSubstr("no bytes of type"))
            << type;
    EXPECT_THAT(complaint([&] { size->getValue<float>(); }), HasSubstr("has not 4 bytes"));

    const Ref<NSValue> number = NSNumber::numberWithShort(-2), single = ::number(1.5f);
    EXPECT_EQ(number->getValue<std::int16_t>(), -2);
    EXPECT_EQ(single->getValue<float>(), 1.5f);
    EXPECT_FALSE(NSValue::valueWith(std::int16_t{-2})->isEqual(number) ||
                 number->isEqual(NSValue::valueWith(std::int16_t{-2})));
}
