// The example of docs/models.md, compiled and run; the page's blocks of C++ are quotations from here.
#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelDescription.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/CGGeometry.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedArchiver.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedUnarchiver.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/TimeZoneScope.h"

#include <gtest/gtest.h>

class Person : public NSObject {
    NS_CLASS(Person, NSObject)
public:
    Ref<NSString> name;
    Ref<NSString> mail;
};
NS_PROPERTIES(Person, name, mail)

class Office : public NSObject {
    NS_CLASS(Office, NSObject)
public:
    Ref<NSString> name;
    Ref<NSArray> staff;
};
NS_PROPERTIES(Office, name, (staff, Person))

class Job : public NSObject {
    NS_CLASS(Job, NSObject)
public:
    Ref<NSString> title;
    std::int32_t pages = 0;
    bool spooled = false;

    static Ref<NSArray> whitelist() { return NSArray::arrayWithObjects({u"title"_ns, u"pages"_ns}); }
};
NS_IMPLEMENTATION(Job) {
    cls.property<&Job::title>("title", "C,N")
        .property<&Job::pages>("pages", "N")
        .property<&Job::spooled>("spooled", "N")
        .implement<qn::hooks::modelPropertyWhitelist, &Job::whitelist>();
}

class Device : public NSObject {
    NS_CLASS(Device, NSObject)
public:
    Ref<NSString> serial;
    Ref<NSString> password; // never mapped

    static Ref<NSArray> blacklist() { return NSArray::arrayWithObjects({u"password"_ns}); }
    static Class classFor(const Ref<NSDictionary> &dictionary);

    id copy() const override { return qn::modelCopy(self()); }
    NSUInteger hash() const override { return qn::modelHash(self()); }
    bool isEqual(const id &other) const override { return qn::modelIsEqual(self(), other); }
    Ref<NSString> description() const override { return qn::modelDescription(self()); }
    void encodeWithCoder(const Ref<NSCoder> &coder) { qn::modelEncodeWithCoder(self(), coder); }
    id initWithCoder(const Ref<NSCoder> &coder) { return qn::modelInitWithCoder(self(), coder); }
};
NS_IMPLEMENTATION(Device) {
    cls.property<&Device::serial>("serial", "C,N")
        .property<&Device::password>("password", "C,N")
        .implement<qn::hooks::modelPropertyBlacklist, &Device::blacklist>()
        .implement<qn::hooks::modelCustomClassForDictionary, &Device::classFor>()
        .implement<coding::encodeWithCoder, &Device::encodeWithCoder>()
        .implement<coding::initWithCoder, &Device::initWithCoder>();
}

class Printer : public Device {
    NS_CLASS(Printer, Device)
public:
    bool color = false, shared = false;
    std::int8_t offset = 0;
    std::uint8_t trays = 0;
    std::int16_t tilt = 0;
    std::uint16_t port = 0;
    std::int32_t balance = 0;
    std::uint32_t flags = 0;
    std::int64_t debt = 0;
    std::uint64_t printed = 0;
    float density = 0;
    double level = 0;
    long double drift = 0;
    CGSize paper;             // a structure: set by an NSValue, never by JSON
    Ref<NSString> name, room; // "name" or else "title"; "place.room"
    std::int32_t floor = 0;   // "place.floor"
    Ref<NSDate> installed;
    Ref<NSURL> address;
    Class driver = nullptr;                        // by name
    Ref<Person> contact;                           // a nested model
    Ref<NSArray> jobs;                             // of Job
    Ref<NSDictionary> people;                      // of Person
    Weak<Printer> substitute;                      // watched, not owned
    double remaining() const { return 1 - level; } // computed, hence read-only: not mapped

    static Ref<NSDictionary> mapper();
    static Ref<NSDictionary> generics();
    Ref<NSDictionary> willTransform(const Ref<NSDictionary> &dictionary) const;
    bool didTransform(const Ref<NSDictionary> &dictionary) const;
    bool toDictionary(const Ref<NSMutableDictionary> &dictionary) const;
};
NS_IMPLEMENTATION(Printer) {
    cls.property<&Printer::color>("color", "N")
        .property<&Printer::shared>("shared", "N,GisShared,SputShared:") // accessors of other names
        .property<&Printer::offset>("offset", "N")
        .property<&Printer::trays>("trays", "N")
        .property<&Printer::tilt>("tilt", "N")
        .property<&Printer::port>("port", "N")
        .property<&Printer::balance>("balance", "N")
        .property<&Printer::flags>("flags", "N")
        .property<&Printer::debt>("debt", "N")
        .property<&Printer::printed>("printed", "N")
        .property<&Printer::density>("density", "N")
        .property<&Printer::level>("level", "N")
        .property<&Printer::drift>("drift", "N")
        .property<&Printer::paper>("paper", "N")
        .property<&Printer::name>("name", "C,N")
        .property<&Printer::room>("room", "C,N")
        .property<&Printer::floor>("floor", "N")
        .property<&Printer::installed>("installed", "N")
        .property<&Printer::address>("address", "N")
        .property<&Printer::driver>("driver", "N")
        .property<&Printer::contact>("contact", "N")
        .property<&Printer::jobs, Job>("jobs", "C,N")
        .property<&Printer::people>("people", "C,N")
        .property<&Printer::substitute>("substitute", "N")
        .property<&Printer::remaining>("remaining", "N")
        .implement<qn::hooks::modelCustomPropertyMapper, &Printer::mapper>()
        .implement<qn::hooks::modelContainerPropertyGenericClass, &Printer::generics>()
        .implement<qn::hooks::modelCustomWillTransformFromDictionary, &Printer::willTransform>()
        .implement<qn::hooks::modelCustomTransformFromDictionary, &Printer::didTransform>()
        .implement<qn::hooks::modelCustomTransformToDictionary, &Printer::toDictionary>();
}

/// A dictionary for a device that has trays makes a printer.
Class Device::classFor(const Ref<NSDictionary> &dictionary) {
    return dictionary->objectForKey(u"trays"_ns) ? Printer::class_() : nullptr;
}

Ref<NSDictionary> Printer::mapper() {
    return NSDictionary::dictionaryWithEntries(
        {{u"name"_ns, NSArray::arrayWithObjects({u"name"_ns, u"title"_ns})},
         {u"room"_ns, u"place.room"_ns},
         {u"floor"_ns, u"place.floor"_ns}});
}

Ref<NSDictionary> Printer::generics() {
    return NSDictionary::dictionaryWithEntries({{u"people"_ns, Person::class_()->self()}}); // or its name
}

/// Before mapping: what to map instead.
Ref<NSDictionary> Printer::willTransform(const Ref<NSDictionary> &dictionary) const {
    const auto wrapped = as<NSDictionary>(dictionary->objectForKey(u"printer"_ns));
    return wrapped ? wrapped : dictionary;
}

/// After mapping: whether the model is sound.
bool Printer::didTransform(const Ref<NSDictionary> &) const {
    return name != nullptr;
}

/// After writing: what else to write, and whether to write at all.
bool Printer::toDictionary(const Ref<NSMutableDictionary> &dictionary) const {
    dictionary->setObject(u"printer"_ns, u"kind"_ns);
    return true;
}

namespace {

const char document[] = R"({
    "serial": "A1", "password": "x", "color": "YES", "shared": 1,
    "offset": -3, "trays": "2", "tilt": -300, "port": 9100.9, "balance": -70000, "flags": 4000000000,
    "debt": -5000000000, "printed": 5000000000, "density": 0.5, "level": 0.25, "drift": 1.5,
    "title": "Office", "place": {"room": 12, "floor": 3}, "remaining": 7,
    "installed": "2014-01-20T13:24:48+0100", "address": " ipp://printers.example/office ",
    "driver": "NSObject", "contact": {"name": "Ada", "mail": null},
    "jobs": [{"title": "Letter", "pages": 2, "spooled": true}, "no job"],
    "people": {"desk": {"name": "Grace"}}
})";

TEST(ModelExample, isMappedAndWritten) {
    const TimeZoneScope greenwich(u"GMT");
    const auto json = string(document);
    const auto printer = as<Printer>(qn::modelWithJSON<Device>(json));
    ASSERT_TRUE(printer);
    EXPECT_FALSE(qn::modelWithJSON<Printer>(u"{\"trays\": 1}"_ns)) << "it has no name";

    printer->setValue(NSValue::valueWith(CGSize{210, 297}), u"paper"_ns);
    EXPECT_EQ(text(qn::modelToJSONString(printer)),
              R"({"name":"Office","place":{"room":"12","floor":3},"color":true,"shared":true,)"
              R"("offset":-3,"trays":2,"tilt":-300,"port":9100,"balance":-70000,"flags":4000000000,)"
              R"("debt":-5000000000,"printed":5000000000,"density":0.5,"level":0.25,"drift":1.5,)"
              R"("installed":"2014-01-20T12:24:48+0000","address":"ipp:\/\/printers.example\/office",)"
              R"("driver":"NSObject","contact":{"name":"Ada"},"jobs":[{"title":"Letter","pages":2}],)"
              R"("people":{"desk":{"name":"Grace"}},"serial":"A1","kind":"printer"})");
}

TEST(ModelExample, areMadeByTheDozen) {
    const auto list = u"[{\"name\": \"Ada\"}, 7, {\"name\": \"Grace\"}]"_ns;
    const auto table = u"{\"desk\": {\"name\": \"Grace\"}}"_ns;
    const auto people = qn::modelArrayWithClass<Person>(list);
    const auto places = qn::modelDictionaryWithClass<Person>(table);
    EXPECT_EQ(text(qn::modelToJSONString(people)), R"([{"name":"Ada"},{"name":"Grace"}])");
    EXPECT_EQ(text(as<Person>(places->objectForKey(u"desk"_ns))->name), "Grace");
    const auto office =
        qn::modelWithJSON<Office>(u"{\"name\": \"Hall\", \"staff\": [{\"mail\": \"a@b\"}]}"_ns);
    EXPECT_EQ(text(as<Person>(office->staff->objectAtIndex(0))->mail), "a@b");
    EXPECT_EQ(Office::class_()->properties().size(), 2u);
    EXPECT_EQ(qn::modelArrayWithClass<Person>(table), nullptr);
}

TEST(ModelExample, isCopiedComparedAndArchived) {
    const auto spare = make<Printer>();
    const auto printer = make<Printer>();
    printer->name = u"Office"_ns;
    printer->paper = {210, 297};
    printer->substitute = spare;

    const auto copy = as<Printer>(printer->copy());
    EXPECT_TRUE(copy != printer && copy->isEqual(printer) && copy->hash() == printer->hash());
    EXPECT_EQ(copy->substitute.lock(), spare);
    copy->paper.width = 148;
    EXPECT_FALSE(copy->isEqual(printer));
    printer->substitute.reset();

    const auto archive = NSKeyedArchiver::archivedDataWithRootObject(printer);
    const auto again = as<Printer>(NSKeyedUnarchiver::unarchivedObjectOfClasses(
        {Printer::class_(), NSString::class_(), NSValue::class_()}, archive));
    ASSERT_TRUE(again);
    EXPECT_TRUE(again->isEqual(printer));
}

} // namespace
