#include "Tools/zkprinter/Printers/ReminderReply.h"

#include "Tests/Support/Random.h"

#include <regex.h>

namespace {

TonerHintReading answer(const std::string &words, std::size_t missing = 0) {
    return {TonerHintReading::Outcome::threshold, 5, words, words.size() + missing};
}

/// What a whole answer may look like, as an expression with the threshold as its group.
class Book : NoCopies {
public:
    Book() {
        const std::string blanks = "[ \t\r\n\v\f]*";
        const std::string whole = "^" + blanks + "0*(0|[2-9]|10)" + blanks + "%?" + blanks + "$";
        EXPECT_EQ(regcomp(&expression_, whole.c_str(), REG_EXTENDED), 0);
    }
    ~Book() { regfree(&expression_); }

    std::optional<int> threshold(const std::string &words) const {
        std::array<regmatch_t, 2> parts;
        if (regexec(&expression_, words.c_str(), parts.size(), parts.data(), 0) != 0)
            return std::nullopt;
        return std::stoi(words.substr(static_cast<std::size_t>(parts[1].rm_so)));
    }

private:
    regex_t expression_;
};

} // namespace

TEST(ReminderReply, isBelievedWhenAllOfItIsAThreshold) {
    const Book book;
    const std::vector<std::string> parts = {"0",    "1", "2", "5", "10", "9", " ",
                                            "\r\n", "%", "-", "+", "E",  "."};
    Random random(20261121);
    int believed = 0;
    for (int round = 0; round < 20'000; ++round) {
        const std::string words = random.text(parts, 5);
        const auto expected = book.threshold(words);
        EXPECT_EQ(believableThreshold(answer(words)), expected) << words;
        EXPECT_EQ(believableThreshold(answer(words + '\0' + words)), expected)
            << "the text ends at a zero byte";
        EXPECT_EQ(believableThreshold(answer(words, 1 + random.below(9))), std::nullopt)
            << "some of it is missing";
        believed += expected.has_value();
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
