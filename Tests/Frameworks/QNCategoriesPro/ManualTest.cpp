// The examples of the manual's pages that have no test of their own: a test per page.
#include "Frameworks/QNCategoriesPro/Atomically.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+QNJSON.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDate/NSDate+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+QNURL.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSMutableArray/NSMutableArray+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNHTML.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSTimer/NSTimer+QNCommon.h"
#include "Frameworks/QNCategoriesPro/QNThreadSafeArray.h"
#include "Frameworks/QNCategoriesPro/QNTimer.h"
#include "Platform/Dispatch/Queues/MainQueue.h"
#include "Platform/Foundation/Text/NSLocale.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"
#include "Tests/Support/Testing.h"
#include "Tests/Support/Ticker.h"
#include "Tests/Support/TimeZoneScope.h"

TEST(Manual, objects) {
    const Ref<NSString> name = u"Desk 3"_ns;
    const auto printers = NSArray::arrayWithObjects({name, NSNumber::numberWithInt(5)});
    const id second = printers->objectAtIndex(1);
    EXPECT_FALSE(as<NSString>(second)) << "it is a number";
    if (const auto threshold = as<NSNumber>(second))
        EXPECT_EQ(threshold->intValue(), 5);
    try {
        printers->objectAtIndex(2);
        FAIL();
    } catch (const NSException &error) {
        EXPECT_EQ(error.name(), "NSRangeException");
    }
}

TEST(Manual, text) {
    EXPECT_EQ(text(qn::stringByTrim(u"  5 % \n"_ns)), "5 %");
    EXPECT_EQ(text(qn::URLEncode(u"a b/ü?"_ns)), "a%20b/%C3%BC?");
    EXPECT_EQ(text(qn::URLDecode(u"100%"_ns)), "(none)"); // an escape that is not complete
    EXPECT_EQ(text(qn::stringFromFileSize(1536)), "1.50KB");
    EXPECT_EQ(text(qn::MIMEType(u"manual.pdf"_ns)), "application/pdf");
    EXPECT_EQ(qn::compareVesion(u"1.9"_ns, u"1.10"_ns), -1); // 1.10 is later
    EXPECT_EQ(text(qn::numberValue(u"0x1F"_ns)), "31");
    EXPECT_EQ(qn::unsignedCharValue(u"no number"_ns), 0);
}

TEST(Manual, data) {
    const auto bytes = qn::dataValue(u"toner"_ns);
    EXPECT_EQ(text(qn::hexString(bytes)), "746F6E6572");
    EXPECT_EQ(text(qn::UTF8String(qn::dataWithHexString(u"74 6F"_ns))), "to");
    EXPECT_EQ(text(qn::base64EncodedString(bytes)), "dG9uZXI=\n");
    EXPECT_EQ(text(qn::crc32String(bytes)), "4dfd3f9f");
    EXPECT_EQ(text(qn::MD5_string(bytes)), "BB1F7F9274DC4D89A90748F8E76D0DDD");

    const auto key = qn::dataWithHexString(qn::SHA256_string(u"a long passphrase"_ns));
    const auto secret = qn::AES256EncryptWithKey(bytes, key, nullptr);
    EXPECT_EQ(secret->length(), 16u);
    EXPECT_EQ(text(qn::UTF8String(qn::AES256DecryptWithkey(secret, key, nullptr))), "toner");
    EXPECT_FALSE(qn::AES256DecryptWithkey(bytes, key, nullptr)); // not whole blocks
}

TEST(Manual, collections) {
    const auto settings = as<NSDictionary>(qn::jsonValueDecoded(u"{\"threshold\": \"5\", \"ask\": null}"_ns));
    EXPECT_EQ(qn::intValueForKey(settings, u"threshold"_ns, 10), 5);
    EXPECT_EQ(qn::intValueForKey(settings, u"ask"_ns, 10), 10);
    EXPECT_EQ(text(qn::jsonString(settings)), R"({"threshold":"5","ask":null})");
    EXPECT_EQ(text(qn::queryStringFromParameters(settings)), "ask&threshold=5");

    const auto jobs = NSMutableArray::arrayWithObjects({u"copy"_ns, u"scan"_ns});
    qn::prependObject(jobs, u"print"_ns);
    EXPECT_EQ(text(qn::popFirstObject(jobs)), "print");
    EXPECT_EQ(text(qn::objectOrNilAtIndex(jobs, 7)), "(none)");

    const auto propertyList = qn::plistData(jobs);
    EXPECT_TRUE(qn::arrayWithPlistData(propertyList)->isEqualToArray(jobs));
}

TEST(Manual, guardedCollections) {
    const auto jobs = QNThreadSafeArray::array();
    dispatch::onThreads(4, [&](int) {
        for (int i = 0; i < 100; ++i)
            qn::atomically<NSMutableArray>(jobs, [](NSMutableArray &contents) {
                contents.addObject(u"even"_ns); // other threads see both or none
                contents.addObject(u"odd"_ns);
            });
    });
    EXPECT_EQ(jobs->count(), 800u);
    EXPECT_EQ(text(jobs->objectAtIndex(798)), "even");
}

namespace {

class Clock : public NSObject {
    NS_CLASS(Clock, NSObject)
public:
    void tick(const Ref<QNTimer> &) { ++ticks; }
    int ticks = 0;
};
NS_IMPLEMENTATION(Clock) {
    cls.method<&Clock::tick>("tick:");
}

class ManualTimers : public OnManualClock {};

} // namespace

TEST_F(ManualTimers, run) {
    const auto target = make<Clock>();
    const auto timer = QNTimer::timerWithTimeInterval(2.0, target, sel_registerName("tick:"), true);

    int runs = 0;
    const auto counting = makeBlock<void(const Ref<NSTimer> &)>([&](const Ref<NSTimer> &) { ++runs; });
    const auto blockTimer = qn::scheduledTimerWithTimeInterval(1.0, counting, true);
    qn::pauseTimer(blockTimer);
    qn::resumeTimerAfterTimeInterval(blockTimer, 3.0);

    for (int second = 0; second < 4; ++second)
        advanceAndRun(1s);
    dispatch::mainQueue().drain();
    EXPECT_EQ(target->ticks, 2);
    EXPECT_EQ(runs, 2);
    timer->invalidate();
    blockTimer->invalidate();
}

TEST(Manual, dates) {
    const TimeZoneScope zone(u"Europe/Berlin");
    const auto date = qn::dateWithString(u"2014-01-31T12:24:48Z"_ns); // any of the forms listed below
    EXPECT_EQ(qn::hour(date), 13);
    EXPECT_EQ(qn::weekday(date), 6); // a Friday
    EXPECT_EQ(text(qn::ISOFormatString(date)), "2014-01-31T13:24:48+0100");
    EXPECT_EQ(qn::day(qn::dateByAddingMonths(date, 1)), 28); // February has no 31st
    const auto posix = NSLocale::posixLocale();
    EXPECT_EQ(text(qn::stringWithFormat(date, u"EEEE, d MMMM yyyy"_ns, nullptr, posix)),
              "Friday, 31 January 2014");
    EXPECT_FALSE(qn::dateWithString(u"2014-02-30"_ns)); // no such day
}

TEST(Manual, html) {
    EXPECT_EQ(text(qn::stringByEscapingForHTML(u"a < é"_ns)), "a &lt; é");
    EXPECT_EQ(text(qn::stringByEscapingForAsciiHTML(u"a < é"_ns)), "a &lt; &eacute;");
    EXPECT_EQ(text(qn::stringByUnescapingFromHTML(u"&copy; &#xe9; &amp;lt; &nonsense;"_ns)),
              "© é &lt; &nonsense;");
    EXPECT_EQ(text(qn::stringByConvertingHTMLToPlainText(u"Toner <b>low</b>:\n  order <!-- 5 % -->now"_ns)),
              "Toner low: order now");
    EXPECT_EQ(text(qn::stringWithNewLinesAsBRs(u"one\r\ntwo"_ns)), "one<br />two");
}
