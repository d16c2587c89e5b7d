// The example of docs/models.md, compiled and run: its classes are those of the page, and the page quotes
// from here.
#include "pages/models.h"

#include <gtest/gtest.h>

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
        qn::modelWithJSON<Office>(u"{\"name\": \"Hall\", \"people\": [{\"mail\": \"a@b\"}]}"_ns);
    EXPECT_EQ(text(as<Person>(office->staff->objectAtIndex(0))->mail), "a@b");
    EXPECT_EQ(text(qn::modelToJSONString(office)), R"({"title":"Hall","people":[{"mail":"a@b"}]})");
    EXPECT_EQ(Office::class_()->properties().size(), 2u);
    EXPECT_EQ(qn::modelArrayWithClass<Person>(table), nullptr);
}

TEST(ModelExample, saysWhatDidNotFit) {
    Ref<NSError> error;
    const auto jobs = qn::modelArrayWithClass<Job>(u"[{\"pages\": 2},\n {\"pages\": \"many\"}]"_ns, &error);
    EXPECT_EQ(jobs->count(), 2u);
    EXPECT_EQ(text(error->localizedDescription()),
              "Job.pages cannot be \"many\", which is no number: [1].pages, line 2, column 12");
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
    const auto again = NSKeyedUnarchiver::unarchivedObjectOf<Printer, NSString, NSValue>(archive);
    ASSERT_TRUE(again);
    EXPECT_TRUE(again->isEqual(printer));
}

} // namespace
