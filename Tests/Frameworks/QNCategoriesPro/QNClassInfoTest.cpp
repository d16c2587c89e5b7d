#include "Frameworks/QNCategoriesPro/QNClassInfo.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"
#include "Tests/Support/Testing.h"

namespace {

class Parcel : public NSObject {
    NS_CLASS(Parcel, NSObject)
public:
    Ref<NSString> title;
    std::int32_t x = 0;
    bool isHeavy() const { return x > 10; }
    static std::int32_t count() { return 3; }
};
NS_IMPLEMENTATION(Parcel) {
    cls.property<&Parcel::title>("title", "C,N", {"P1", "P2"})
        .property<&Parcel::x>("x")
        .property<&Parcel::isHeavy>("heavy", "GisHeavy")
        .classMethod<&Parcel::count>("count");
}

class PlainParcel : public Parcel {
    NS_CLASS(PlainParcel, Parcel)
};
NS_IMPLEMENTATION(PlainParcel) {}

Ref<QNClassPropertyInfo> propertyNamed(Class cls, const Ref<NSString> &name) {
    return as<QNClassPropertyInfo>(QNClassInfo::classInfoWithClass(cls)->propertyInfos()->objectForKey(name));
}

/// What a property of these attributes says of its object type.
Ref<QNClassPropertyInfo> propertyOfType(const std::string &encoding) {
    static std::deque<objc_property> kept;
    kept.push_back({"p", {{"N", ""}, {"T", encoding}, {"C", ""}, {"?", "ignored"}}});
    return QNClassPropertyInfo::initWithProperty(&kept.back());
}

bool addMethod(Class cls, const std::string &name) {
    return class_addMethod(
        cls, sel_registerName(name), +[](NSObject *, SEL) { return true; });
}

} // namespace

TEST(QNEncodingType, ofEveryEncoding) {
    const char *inOrder[] = {"?", "v", "B", "c", "C", "s",  "S",  "i",           "I",      "q", "Q",   "f",
                             "d", "D", "@", "#", ":", "@?", "^v", "{CGSize=dd}", "(U=fi)", "*", "[4i]"};
    for (std::size_t i = 0; i < std::size(inOrder); ++i)
        EXPECT_EQ(QNEncodingGetType(inOrder[i]), i) << inOrder[i];
    const std::string qualifiers = "rnNoORV";
    for (std::size_t i = 0; i < qualifiers.size(); ++i)
        EXPECT_EQ(QNEncodingGetType((qualifiers[i] + std::string("v")).c_str()), (0x100u << i) + 1) << i;
    const std::pair<const char *, QNEncodingType> table[] = {{nullptr, 0},
                                                             {"", 0},
                                                             {"l", 7},
                                                             {"L", 8},
                                                             {"@?<v@?>", 14},
                                                             {"rV", 0x4100},
                                                             {"nNoORrV@?", 0x7F00 | 17},
                                                             {"iN", 7}};
    for (const auto &[encoding, type] : table)
        EXPECT_EQ(QNEncodingGetType(encoding), type) << (encoding ? encoding : "null");
}

TEST(QNClassInfo, propertiesAreDecoded) {
    const auto title = propertyNamed(Parcel::class_(), u"title"_ns);
    EXPECT_EQ(title->type(),
              QNEncodingTypeObject | QNEncodingTypePropertyCopy | QNEncodingTypePropertyNonatomic);
    EXPECT_EQ(title->cls(), NSString::class_());
    EXPECT_EQ(text(title->typeEncoding()) + " " + joined(title->protocols()) + " " + text(title->ivarName()),
              "@\"NSString<P1><P2>\" P1 P2 _title");
    EXPECT_STREQ(sel_getName(title->getter()), "title");
    EXPECT_STREQ(sel_getName(title->setter()), "setTitle:");
    const auto heavy = propertyNamed(Parcel::class_(), u"heavy"_ns);
    EXPECT_EQ(heavy->type(),
              QNEncodingTypeBool | QNEncodingTypePropertyReadonly | QNEncodingTypePropertyCustomGetter);
    EXPECT_STREQ(sel_getName(heavy->getter()), "isHeavy");
    EXPECT_STREQ(sel_getName(heavy->setter()), "setHeavy:") << "derived although the class has none";
    EXPECT_FALSE(heavy->ivarName() || heavy->protocols() || heavy->cls());

    const std::tuple<const char *, Class, const char *> table[] = {
        {"@", nullptr, "(none)"},
        {"@\"Parcel\"", Parcel::class_(), "(none)"},
        {"@\"Nobody\"", nullptr, "(none)"},
        {"@\"<P1>\"", nullptr, "P1"},
        {"@\"NSString<><P2>\"", NSString::class_(), "P2"},
        {"@\"Parcel<P1", Parcel::class_(), "P1"},
        {"@\"", nullptr, "(none)"},
        {"@Parcel", nullptr, "(none)"}};
    for (const auto &[encoding, cls, protocols] : table) {
        const auto info = propertyOfType(encoding);
        EXPECT_EQ(info->cls(), cls) << encoding;
        EXPECT_EQ(joined(info->protocols()), protocols) << encoding;
        EXPECT_EQ(info->type(), QNEncodingTypeObject | QNEncodingTypePropertyCopy)
            << "the type replaces the attributes before it";
    }
}

TEST(QNClassInfo, methodsAndInstanceVariablesAreDecoded) {
    const auto info = QNClassInfo::classInfoWithClassName(u"Parcel"_ns);
    const auto setter = as<QNClassMethodInfo>(info->methodInfos()->objectForKey(u"setX:"_ns));
    EXPECT_EQ(text(setter->name()), "setX:");
    EXPECT_TRUE(setter->sel() == "setX:"_sel && setter->imp() == setter->method()->imp);
    EXPECT_EQ(text(setter->typeEncoding()) + " " + text(setter->returnTypeEncoding()), "v20@0:8i16 v");
    EXPECT_EQ(joined(setter->argumentTypeEncodings()), "@ : i");
    const auto x = as<QNClassIvarInfo>(info->ivarInfos()->objectForKey(u"_x"_ns));
    EXPECT_TRUE(text(x->typeEncoding()) == "i" && x->type() == QNEncodingTypeInt32);
    const auto parcel = make<Parcel>();
    EXPECT_EQ(reinterpret_cast<char *>(static_cast<NSObject *>(parcel.get())) + x->offset(),
              reinterpret_cast<char *>(&parcel->x));

    objc_method bare{nullptr, "", nullptr, nullptr, nullptr};
    EXPECT_EQ(QNClassMethodInfo::initWithMethod(&bare)->argumentTypeEncodings(), nullptr);
    EXPECT_FALSE(QNClassIvarInfo::initWithIvar(nullptr) || QNClassMethodInfo::initWithMethod(nullptr) ||
                 QNClassPropertyInfo::initWithProperty(nullptr) || QNClassInfo::initWithClass(nullptr) ||
                 QNClassInfo::classInfoWithClass(nullptr) || QNClassInfo::classInfoWithClassName(nullptr) ||
                 QNClassInfo::classInfoWithClassName(u"Nobody"_ns));
}

TEST(QNClassInfo, recordsFormTheHierarchyOfTheClasses) {
    const auto plain = QNClassInfo::classInfoWithClass(PlainParcel::class_());
    const auto parcel = QNClassInfo::classInfoWithClass(Parcel::class_());
    EXPECT_EQ(QNClassInfo::classInfoWithClass(PlainParcel::class_()), plain);
    EXPECT_EQ(plain->superClassInfo(), parcel) << "from the same cache";
    EXPECT_TRUE(plain->propertyInfos() && plain->ivarInfos() && plain->methodInfos());
    EXPECT_EQ(plain->propertyInfos()->count() + plain->ivarInfos()->count() + plain->methodInfos()->count(),
              0u);
    EXPECT_TRUE(!plain->isMeta() && plain->superCls() == Parcel::class_() &&
                plain->metaCls() == PlainParcel::class_()->metaClass());
    EXPECT_EQ(plain->name()->utf8(), "PlainParcel");
    const auto root = parcel->superClassInfo();
    EXPECT_TRUE(root->cls() == NSObject::class_() && !root->superCls() && !root->superClassInfo());

    const auto meta = QNClassInfo::classInfoWithClass(Parcel::class_()->metaClass());
    EXPECT_TRUE(meta != parcel && meta->isMeta() && !meta->metaCls());
    EXPECT_TRUE(meta->methodInfos()->objectForKey(u"count"_ns));
    EXPECT_FALSE(parcel->methodInfos()->objectForKey(u"count"_ns));
}

TEST(QNClassInfo, isRebuiltByTheNextLookupWhenMarked) {
    const Class cls = objc_registerSubclass<Parcel>("MarkedParcel");
    const auto info = QNClassInfo::classInfoWithClass(cls);
    addMethod(cls, "later");
    const auto has = [&] { return info->methodInfos()->objectForKey(u"later"_ns) != nullptr; };
    EXPECT_EQ(QNClassInfo::classInfoWithClass(cls), info);
    EXPECT_FALSE(has()) << "nobody said that the class changed";
    info->setNeedUpdate();
    EXPECT_TRUE(info->needUpdate() && !has()) << "reading a record does not rebuild it";
    EXPECT_EQ(QNClassInfo::classInfoWithClass(cls), info);
    EXPECT_TRUE(!info->needUpdate() && has());
}

TEST(QNClassInfo, twoThreadsMissAtOnce) {
    for (int round = 0; round < 20; ++round) {
        const Class cls = objc_registerSubclass<Parcel>(("Raced" + std::to_string(round)).c_str());
        Ref<QNClassInfo> infos[2];
        dispatch::onThreads(2, [&](int thread) { infos[thread] = QNClassInfo::classInfoWithClass(cls); });
        const auto kept = QNClassInfo::classInfoWithClass(cls);
        EXPECT_TRUE(kept == infos[0] || kept == infos[1]);
        for (const auto &info : infos)
            EXPECT_TRUE(info->cls() == cls && info->methodInfos() && info->superClassInfo());
    }
}

TEST(QNClassInfo, isReadWhileItIsRebuilt) {
    constexpr int additions = 200;
    const Class cls = objc_registerSubclass<Parcel>("GrowingParcel");
    const auto info = QNClassInfo::classInfoWithClass(cls);
    std::thread writer([&] {
        for (int i = 0; i < additions; ++i) {
            addMethod(cls, "grown" + std::to_string(i));
            info->setNeedUpdate();
            QNClassInfo::classInfoWithClass(cls);
        }
    });
    for (NSUInteger seen = 0; seen < additions;) {
        const NSUInteger count = info->methodInfos()->count();
        EXPECT_GE(count, seen);
        EXPECT_EQ(QNClassInfo::classInfoWithClass(cls), info);
        seen = count;
    }
    writer.join();
    EXPECT_FALSE(info->needUpdate());
}
