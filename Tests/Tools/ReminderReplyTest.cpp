#include "Tools/zkprinter/ReminderReply.h"

#include <gtest/gtest.h>
#include <random>
#include <regex>

namespace {

TonerHintReading answer(const std::string &words, std::size_t missing = 0) {
    return {TonerHintReading::Outcome::threshold, 5, words, words.size() + missing};
}

} // namespace

TEST(ReminderReply, isBelievedWhenAllOfItIsAThreshold) {
    const std::regex book("[ \t\r\n\v\f]*0*(0|[2-9]|10)[ \t\r\n\v\f]*%?[ \t\r\n\v\f]*");
    const std::vector<std::string> parts = {"0",    "1", "2", "5", "10", "9", " ",
                                            "\r\n", "%", "-", "+", "E",  "."};
    std::mt19937 engine(20261121);
    const auto below = [&](std::size_t end) { return engine() % end; };
    int believed = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string words;
        for (std::size_t count = below(5); count > 0; --count)
            words += parts[below(parts.size())];
        std::smatch match;
        const bool whole = std::regex_match(words, match, book);
        const auto expected = whole ? std::optional(std::stoi(match[1])) : std::nullopt;
        EXPECT_EQ(believableThreshold(answer(words)), expected) << words;
        EXPECT_EQ(believableThreshold(answer(words + '\0' + words)), expected)
            << "the text ends at a zero byte";
        EXPECT_EQ(believableThreshold(answer(words, 1 + below(9))), std::nullopt) << "some of it is missing";
        believed += whole;
    }
    EXPECT_GT(believed, 1000);
    for (const char *const words :
         {"ERROR 17", "-3", "2147483647", "4294967298", "18446744073709551618", "5abc", ""})
        EXPECT_EQ(believableThreshold(answer(words)), std::nullopt) << words;
}

TEST(ReminderReply, isShownHarmlesslyInASentence) {
    EXPECT_EQ(wordsOf(answer("ERROR 17\r\n")), "\"ERROR 17\"");
    EXPECT_EQ(wordsOf(answer("5", 8)), "\"5\" (1 of 9 bytes)");
    EXPECT_EQ(wordsOf(answer("\x1B[31m\xFFü")), "\"\\u001B[31m\uFFFDü\"");
    EXPECT_EQ(wordsOf(answer(std::string(4096, '7'))), "\"" + std::string(60, '7') + "…\"");
}
