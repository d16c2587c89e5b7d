#include "Manager/PrinterStatus.h"

#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Manager/ScriptedTransport.h"

namespace {

using Outcome = PrinterStatus::Outcome;

const Lines isNormal = {"printer status normal"}, isNotNormal = {"printer status not normal"};
const Lines noJson = {"NSData 转 NSDictionary 失败", "Error Domain:NSCocoaErrorDomain", "错误代码：3840",
                      "错误描述：The data couldn’t be read because it isn’t in the correct format.",
                      "错误恢复建议：(null)"};
const std::string isEmpty = "NSString 为空\n";

} // namespace

TEST(PrinterStatus, judgesWhatTheTransportAnswers) {
    const struct {
        std::int32_t status;
        std::optional<const char *> text;
        Outcome outcome;
        std::int64_t value;
        Lines log; // behind the text itself
        std::string error;
    } rows[] = {
        // The transport fails, whatever it does to the pointer.
        {-2, {}, Outcome::noAnswer, 0, {}, "获取状态失败, -2\n"},
        {-5, nullptr, Outcome::noAnswer, 0, {}, "获取状态失败, -5\n"},
        {7, R"({"printer_status":3})", Outcome::noAnswer, 0, {}, "获取状态失败, 7\n"},
        // It succeeds without a text.
        {0, {}, Outcome::unreadable, 0, {}, isEmpty},
        {0, nullptr, Outcome::unreadable, 0, {}, isEmpty},
        {0, "", Outcome::unreadable, 0, {}, isEmpty},
        {0, "{\"printer_status\":3,\"\xFF\":0}", Outcome::unreadable, 0, {}, isEmpty},
        // The text is no object.
        {0, "READY", Outcome::unreadable, 0, noJson, ""},
        {0, R"({"printer_status":3} 1)", Outcome::unreadable, 0, noJson, ""},
        {0, "3", Outcome::unreadable, 0, noJson, ""},
        {0, R"([{"printer_status":3}])", Outcome::notNormal, 0, isNotNormal, ""},
        // Values.
        {0, R"({"printer_status":3})", Outcome::normal, 3, isNormal, ""},
        {0, R"({"printer_status":1,"x":[{}]})", Outcome::normal, 1, isNormal, ""},
        {0, R"({"printer_status":0})", Outcome::notNormal, 0, isNotNormal, ""},
        {0, R"({"printer_status":2})", Outcome::notNormal, 2, isNotNormal, ""},
        {0, R"({"printer_status":4})", Outcome::notNormal, 4, isNotNormal, ""},
        {0, R"({"printer_status":"3"})", Outcome::normal, 3, isNormal, ""},
        {0, R"({"printer_status":3.0})", Outcome::normal, 3, isNormal, ""},
        {0, R"({})", Outcome::notNormal, 0, isNotNormal, ""},
        {0, R"({"printer_status":null})", Outcome::notNormal, 0, isNotNormal, ""},
        {0, R"({"printer_status":[3]})", Outcome::notNormal, 0, isNotNormal, ""},
        // Beyond 32 and 64 bits nothing wraps around to 3.
        {0, R"({"printer_status":4294967299})", Outcome::notNormal, 4294967299, isNotNormal, ""},
        {0, R"({"printer_status":18446744073709551619})", Outcome::notNormal, INT64_MAX, isNotNormal, ""},
        {0, R"({"printer_status":-1e300})", Outcome::notNormal, INT64_MIN, isNotNormal, ""},
    };
    LogLines log;
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row.status << " " << testing::PrintToString(row.text));
        ScriptedTransport transport;
        transport.infoStatus = row.status;
        transport.infoText = row.text;
        testing::internal::CaptureStderr();
        const PrinterStatus status = readPrinterStatus(textOf(sampleUri));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), row.error);
        EXPECT_EQ(status.outcome, row.outcome);
        EXPECT_EQ(status.isNormal(), row.outcome == Outcome::normal);
        EXPECT_EQ(status.value, row.value);
        EXPECT_EQ(status.transportStatus, row.status);
        const char *const given = row.text.value_or("");
        std::string shown = given ? given : "(null)";
        if (const auto broken = shown.find('\xFF'); broken != std::string::npos)
            shown.replace(broken, 1, "\uFFFD"); // the log is UTF-8 whatever a printer sends
        Lines lines = {"str:" + shown};
        lines.insert(lines.end(), row.log.begin(), row.log.end());
        EXPECT_EQ(log.take(), lines);
        EXPECT_EQ(transport.takeCalls(), Lines{std::string("info ") + sampleUri + " 0 2 2000 1"});
    }
}

TEST(PrinterStatus, textFromThePrinterIsOneLogLine) {
    ScriptedTransport transport;
    transport.infoText = "{\n \"printer_status\": 3, \"%s%n\": \"\x1B[2J\"}\n";
    LogLines log;
    readPrinterStatus(nullptr);
    EXPECT_EQ(log.take().front(), R"(str:{\n "printer_status": 3, "%s%n": "\u001B[2J"})");
    EXPECT_EQ(transport.takeCalls(), Lines{"info  0 2 2000 1"}) << "no URI is an empty one";
}

TEST(PrinterStatus, textWithHalfACharacterCannotBeEncoded) {
    LogLines log;
    testing::internal::CaptureStderr();
    const PrinterStatus status = parsePrinterStatus(u"{\"printer_status\": 3, \"\xD83D\": 0}"_ns);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "NSString 转NSData失败\n");
    EXPECT_EQ(status.outcome, Outcome::unreadable);
    EXPECT_EQ(log.take(), Lines{});
}
