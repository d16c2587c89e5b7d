// Keyed archives: every kind of object there and back, shared and cyclic ones, hostile bytes.
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedArchiver.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedUnarchiver.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Platform/Foundation/Serialization/PropertyList/PropertyListUID.h"
#include "Platform/Foundation/System/NSError.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/RandomObjects.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/TextTable.h"

using namespace std::literals;

/// A class of a program's own with every kind of value.
class ArchiveNode : public NSObject {
    NS_CLASS(ArchiveNode, NSObject)
public:
    enum Conduct : std::int32_t { Plain, RefusesToBeRead, Raises, GivesAnother };

    void encodeWithCoder(const Ref<NSCoder> &coder) {
        coder->encodeObject(name, u"$name"_ns);
        coder->encodeObject(next, u"next"_ns);
        coder->encodeObject(owner.lock(), u"owner"_ns);
        coder->encodeInt(conduct, u"conduct"_ns);
        coder->encodeInt64(INT64_MIN, u"wide"_ns);
        coder->encodeBool(true, u"flag"_ns);
        coder->encodeFloat(0.5f, u"narrow"_ns);
        coder->encodeDouble(0.1, u"floating"_ns);
        coder->encodeBytes("\0\1", 2, u"bytes"_ns);
    }

    id initWithCoder(const Ref<NSCoder> &coder) {
        name = as<NSString>(coder->decodeObjectForKey(u"$name"_ns));
        next = coder->decodeObjectForKey(u"next"_ns);
        owner = coder->decodeObjectForKey(u"owner"_ns);
        conduct = coder->decodeIntForKey(u"conduct"_ns);
        const auto bytes = coder->decodeBytesForKey(u"bytes"_ns);
        readAll = coder->decodeInt64ForKey(u"wide"_ns) == INT64_MIN && coder->decodeBoolForKey(u"flag"_ns) &&
                  coder->decodeFloatForKey(u"narrow"_ns) == 0.5f &&
                  coder->decodeDoubleForKey(u"floating"_ns) == 0.1 && text(bytes) == "<0001>" &&
                  coder->containsValueForKey(u"next"_ns) && !coder->containsValueForKey(u"missing"_ns) &&
                  !coder->decodeObjectForKey(u"missing"_ns) && coder->decodeInt32ForKey(u"missing"_ns) == 0;
        if (conduct == Raises)
            throw NSException(NSGenericException, "no such node");
        return conduct == RefusesToBeRead ? nullptr
               : conduct == GivesAnother  ? id(make<ArchiveNode>())
                                          : self();
    }

    Ref<NSString> name;
    id next;
    Weak<NSObject> owner;
    std::int32_t conduct = Plain;
    bool readAll = false;
};

class Contradictory : public NSObject {
    NS_CLASS(Contradictory, NSObject)
};

NS_IMPLEMENTATION(Contradictory) {
    cls.protocol("P").protocol("P");
}

NS_IMPLEMENTATION(ArchiveNode) {
    cls.method<&ArchiveNode::encodeWithCoder>("encodeWithCoder:")
        .method<&ArchiveNode::initWithCoder>("initWithCoder:");
}

namespace {

const std::vector<Class> anything = {NSObject::class_()};

Ref<NSData> archived(const id &object) {
    return NSKeyedArchiver::archivedDataWithRootObject(object);
}

std::string told(const Ref<NSError> &error) {
    return text(error->userInfo()->objectForKey(NSDebugDescriptionErrorKey()));
}

/// The object, or the reason why there is none.
std::string read(const Ref<NSData> &archive, const std::vector<Class> &classes = anything) {
    Ref<NSError> error;
    const id object = NSKeyedUnarchiver::unarchivedObjectOfClasses(classes, archive, &error);
    return error ? told(error) : text(object);
}

id readBack(const id &object) {
    return NSKeyedUnarchiver::unarchivedObjectOfClasses(anything, archived(object));
}

Ref<ArchiveNode> node(const id &next = nullptr, std::int32_t conduct = ArchiveNode::Plain) {
    const auto made = make<ArchiveNode>();
    made->name = u"node"_ns;
    made->next = next;
    made->conduct = conduct;
    return made;
}

// Archives made by hand.

/// An object of JSON as it stands in an archive: "#4" refers to the object 4.
id withReferences(const id &object) {
    if (const auto text = as<NSString>(object); text && text->hasPrefix(u"#"_ns))
        return make<PropertyListUID>(static_cast<std::uint64_t>(text->substringFromIndex(1)->integerValue()));
    if (const auto array = as<NSArray>(object)) {
        auto elements = array->allObjects();
        std::ranges::transform(elements, elements.begin(), withReferences);
        return arrayOf(elements);
    }
    const auto dictionary = as<NSDictionary>(object);
    for (const id &key : dictionary ? dictionary->allKeys() : NSArray::array())
        as<NSMutableDictionary>(dictionary)->setObject(withReferences(dictionary->objectForKey(key)), key);
    return object;
}

/// The objects, in JSON, stand behind "$null" and the classes: 1 NSArray, 2 NSSet, 3 ArchiveNode. The first
/// is 4, the root.
Ref<NSData> archive(const std::string &objects) {
    const std::string json =
        R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$top": {"root": "#4"}, "$objects": )"
        R"(["$null", {"$classname": "NSArray"}, {"$classname": "NSSet"}, {"$classname": "ArchiveNode"})" +
        (objects.empty() ? "]}" : "," + objects + "]}");
    const id list = NSJSONSerialization::JSONObjectWithData(dataOf(json),
                                                            NSJSONReadingOptions::MutableContainers, nullptr);
    return NSPropertyListSerialization::dataWithPropertyList(withReferences(list),
                                                             NSPropertyListFormat::BinaryFormat_v1_0);
}

std::string reference(std::uint64_t index) {
    return "\"#" + std::to_string(index) + "\"";
}

std::string collection(std::uint64_t cls, const std::string &elements) {
    return R"({"$class": )" + reference(cls) + R"(, "NS.objects": [)" + elements + "]}";
}

/// A chain of `count` arrays, each in the next; read inside out when `inTurn`, so that reading nests little.
Ref<NSData> chain(std::uint64_t count, bool inTurn) {
    std::string outermost = reference(inTurn ? count + 3 : 5), others;
    for (std::uint64_t index = count + 2; inTurn && index >= 5; --index)
        outermost += "," + reference(index);
    for (std::uint64_t index = 5; index < count + 3; ++index)
        others += "," + collection(1, reference(index + 1));
    return archive(collection(1, outermost) + others + "," + collection(1, ""));
}

} // namespace

TEST(KeyedArchive, bringsEveryKindBack) {
    const auto attributed =
        NSMutableAttributedString::attributedStringWithString(string(std::string(300, 'a')));
    attributed->addAttribute(u"k"_ns, u"1"_ns, {2, 200});
    const auto decimal = [](const std::string &digits) {
        return NSDecimalNumber::decimalNumberWithString(string(digits));
    };
    const id list = arrayOf({u"a"_ns, NSArray::array(), NSNull::null()});
    const id table = dictionaryOf({{u"k"_ns, list}, {list, u"v"_ns}}), data = dataOf("\0\1"sv);
    const id set = setOf({u"a"_ns, number(1)});
    const id one = NSAttributedString::attributedStringWithString(u"one"_ns, as<NSDictionary>(table));
    const auto location = NSURL::URLWithString(u"usb://Zelkor/L200?serial=1"_ns);
    for (const id &object :
         arrayOf({u"激光"_ns, number(double{-INFINITY}), decimal("-12.50"), decimal("0"), decimal("x"),
                  decimal(std::string(38, '9')), decimal("-1e164"), decimal("1e-128"), data, NSNull::null(),
                  NSDate::dateWithTimeIntervalSinceReferenceDate(-0.25), list, table, location, set, one,
                  NSAttributedString::attributedStringWithString(u""_ns), attributed->copy()})) {
        const id again = readBack(object);
        ASSERT_TRUE(again && again->isEqual(object)) << text(object) << " is " << text(again);
        EXPECT_TRUE(again->isa() == object->isa() || as<NSNumber>(again));
        EXPECT_EQ(as<NSDecimalNumber>(again) != nullptr, as<NSDecimalNumber>(object) != nullptr);
    }
    for (const id &object : {id(u"a"_ns), data, list, table, set, one}) {
        const id changeable = object->mutableCopy(), again = readBack(changeable);
        ASSERT_TRUE(again && again->isEqual(object));
        EXPECT_EQ(again->isa(), changeable->isa());
    }
    EXPECT_EQ(text(readBack(attributed)), text(attributed));
    RandomObjects random(41, RandomObjects::Kind::PropertyList);
    for (int round = 0; round < 300; ++round) {
        const id object = random.container(), again = readBack(object);
        ASSERT_TRUE(again && again->isEqual(object)) << text(object);
    }
}

TEST(KeyedArchive, isReadByOthers) {
    const auto one = NSMutableString::string();
    one->setString(u"one"_ns);
    const TemporaryFolder folder;
    const auto bytes = archived(arrayOf({one, u"two"_ns, one}));
    folder.put("ours", contents(bytes));
    const std::string command =
        "python3 -c 'import plistlib, sys; print(plistlib.load(sys.stdin.buffer))' <'" +
        folder.file("ours").string() + "' >'" + folder.file("theirs").string() + "'";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    const auto expected = NSData::dataWithContentsOfFile(ZK_TABLES "/Serialization/Archive/SeenByOthers.txt");
    EXPECT_EQ(folder.get("theirs"), contents(expected));
}

TEST(KeyedArchive, keepsWhatIsSharedAndWhatLeadsBack) {
    const auto leaf = node();
    const auto both = as<NSArray>(readBack(arrayOf({leaf, node(leaf)})));
    const auto first = as<ArchiveNode>(both->objectAtIndex(0)),
               second = as<ArchiveNode>(both->objectAtIndex(1));
    EXPECT_EQ(second->next, first);
    EXPECT_TRUE(first->readAll && second->readAll);
    EXPECT_EQ(text(first->name), "node");
    // A cycle through a program's own objects, here by a list and a weak reference.
    const auto root = node(), child = node();
    child->owner = root;
    root->next = arrayOf({child});
    const auto again = as<ArchiveNode>(readBack(root));
    EXPECT_EQ(as<ArchiveNode>(as<NSArray>(again->next)->firstObject())->owner.lock(), again);
    const auto itself = NSMutableArray::array();
    itself->addObject(itself);
    EXPECT_EQ(read(archived(itself)), "A collection holds itself.");
    itself->removeAllObjects();
    // A set would compare the child while the root is not read yet.
    root->next = setOf({child});
    EXPECT_EQ(read(archived(root)),
              "The elements of a set or the keys of a dictionary cost too much to compare.");
    root->conduct = ArchiveNode::GivesAnother;
    root->next = child;
    EXPECT_EQ(read(archived(root)), "The values of the object 1 make no \"ArchiveNode\".");
}

TEST(KeyedArchive, makesOnlyWhatIsAllowed) {
    const auto books = archived(arrayOf({node(), u"text"_ns}));
    const Class list = NSArray::class_(), own = ArchiveNode::class_(), words = NSString::class_();
    EXPECT_THAT(read(books, {list, own, words}), testing::HasSubstr("ArchiveNode: 0x"));
    EXPECT_EQ(read(books, {own, words}), "The class \"NSArray\" is not allowed.");
    EXPECT_EQ(read(books, {list, words}), "The class \"ArchiveNode\" is not allowed.");
    EXPECT_EQ(read(books, {list, own}), "The class \"NSString\" is not allowed.");
    EXPECT_EQ(read(books, {}), "The class \"NSArray\" is not allowed.");
    EXPECT_NE(NSKeyedUnarchiver::unarchivedObjectOfClass(list, archived(NSMutableArray::array())), nullptr);
    EXPECT_EQ(read(archived(NSMutableArray::array()), {NSMutableDictionary::class_()}),
              "The class \"NSMutableArray\" is not allowed.");
    EXPECT_EQ(read(archived(node(nullptr, ArchiveNode::RefusesToBeRead))),
              "The values of the object 1 make no \"ArchiveNode\".");
    EXPECT_EQ(read(archived(node(nullptr, ArchiveNode::Raises))), "no such node");
}

TEST(KeyedArchive, refusesToWrite) {
    id deep = NSArray::array();
    for (int i = 1; i < 512; ++i)
        deep = arrayOf({deep});
    EXPECT_TRUE(readBack(deep)->isEqual(deep));
    const std::pair<id, std::string> table[] = {
        {nullptr, "There is no object."},
        {arrayOf({make<NSObject>()}), "The class \"NSObject\" has no encodeWithCoder:."},
        {arrayOf({node(), ArchiveNode::class_()->self()}), // described before
         "The class \"ArchiveNode\" has no encodeWithCoder:."},
        {arrayOf({deep}), "The objects nest too deep."},
        {make<NSString>(std::u16string{0xDC00}),
         "At $objects[1]: expected a text in which no surrogate stands alone."},
    };
    for (const auto &[object, reason] : table) {
        Ref<NSError> error;
        EXPECT_EQ(NSKeyedArchiver::archivedDataWithRootObject(object, &error), nullptr);
        EXPECT_EQ(told(error), reason);
    }
    const auto coder = make<NSKeyedArchiver>();
    EXPECT_EQ(raised([&] { return coder->encodeBool(true, nullptr), 0; }), NSInvalidArgumentException);
    EXPECT_EQ(raised([&] { return coder->decodeBoolForKey(u"k"_ns); }), NSInvalidArgumentException);
}

TEST(KeyedArchive, refusesHostileArchives) {
    for (const auto &[objects, reason] : rowsOf(ZK_TABLES "/Serialization/Archive/Refused.txt"))
        EXPECT_EQ(read(archive(objects)), reason) << objects;
    std::string tower = collection(2, reference(5)); // of arrays that hold the next one twice
    for (std::uint64_t i = 6; i < 206; ++i)
        tower += "," + collection(1, reference(i) + "," + reference(i));
    tower += "," + collection(1, "");
    const auto alike = [](std::uint64_t count, const std::string &element) { // arrays of it, in a set
        std::string elements, arrays;
        for (std::uint64_t i = 5; i < 5 + count; ++i) {
            elements += (i > 5 ? "," : "") + reference(i);
            arrays += "," + collection(1, reference(5 + count));
        }
        return archive(collection(2, elements) + arrays + "," + element);
    };
    const std::string deep = "The objects nest too deep.";
    const std::string costly = "The elements of a set or the keys of a dictionary cost too much to compare.";
    const std::pair<Ref<NSData>, std::string> table[] = {
        {nullptr, "The archive is not a binary property list."},
        {dataOf("bplist00"), "The archive is damaged. Byte 8: expected a trailer of 32 bytes."},
        {NSPropertyListSerialization::dataWithPropertyList(NSDictionary::dictionary(),
                                                           NSPropertyListFormat::BinaryFormat_v1_0),
         "The property list is not a keyed archive."},
        {chain(513, false), deep},
        {chain(10000, false), deep},
        {chain(10000, true), deep},
        {archive(tower), costly},
    };
    for (const auto &[bytes, reason] : table)
        EXPECT_EQ(read(bytes), reason);
    EXPECT_EQ(read(archive("\"fine\"")), "fine");
    EXPECT_EQ(read(alike(20000, "\"text\"")), "{(\n    (\n        text\n    )\n)}");
    EXPECT_EQ(read(chain(512, false)).substr(0, 1), "(");
    const auto whole = archived(node());
    for (NSUInteger length = 0; length < whole->length(); ++length)
        EXPECT_THAT(read(whole->subdataWithRange({0, length})), testing::StartsWith("The archive is"));
}

TEST(KeyedArchive, anyMutationIsReadOrRefused) {
    RandomObjects random(42, RandomObjects::Kind::PropertyList);
    std::size_t accepted = 0;
    for (int round = 0; round < 4000; ++round) {
        const auto attributed = NSMutableAttributedString::attributedStringWithString(u"abc"_ns);
        attributed->addAttribute(u"k"_ns, NSDecimalNumber::decimalNumberWithString(u"1.5"_ns), {1, 1});
        const auto bytes = random.mutated(
            contents(archived(arrayOf({random.container(2), setOf({random.text()}), node(attributed)}))),
            "\0\1\4\xA1\x80"sv);
        Ref<NSError> error;
        const id object = NSKeyedUnarchiver::unarchivedObjectOfClasses(anything, dataOf(bytes), &error);
        accepted += object != nullptr;
        ASSERT_FALSE(object && error);
    }
    EXPECT_GT(accepted, 200u);
}
