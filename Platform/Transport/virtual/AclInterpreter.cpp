#include "Platform/Transport/virtual/AclInterpreter.h"

#include "Platform/Ascii/Ascii.h"

#include <algorithm>
#include <array>

namespace transport {

namespace {

constexpr std::string_view universalExit = "\x1B%-12345X";
constexpr std::size_t longestLine = 256;
constexpr std::size_t frameHeaderSize = 16;

std::size_t bigEndian16(const std::vector<std::uint8_t> &bytes, std::size_t offset) {
    return static_cast<std::size_t>(bytes[offset] << 8 | bytes[offset + 1]);
}

// The words of a PJL line, in upper case; an equals sign is a word of its own.
std::vector<std::string> wordsOf(std::string_view line) {
    std::vector<std::string> words;
    bool continues = false;
    for (const char character : line) {
        const bool blank = character == ' ' || character == '\t' || character == '\r';
        const bool alone = character == '=';
        if (!blank && (alone || !continues))
            words.emplace_back();
        if (!blank)
            words.back().push_back(ascii::upperCase(character));
        continues = !blank && !alone;
    }
    return words;
}

} // namespace

void AclInterpreter::feed(std::span<const std::uint8_t> bytes, const FrameHandler &handler) {
    for (const std::uint8_t byte : bytes)
        feed(byte, handler);
}

void AclInterpreter::feed(std::uint8_t byte, const FrameHandler &handler) {
    if (mode_ == Mode::Frames) {
        feedFrame(byte, handler);
    } else if (completesExit(byte)) {
        line_.clear();
        mode_ = Mode::Lines;
    } else if (mode_ == Mode::Lines) {
        feedLine(byte);
    }
}

// ESC is only the first byte of UEL, so after a mismatch the search can only start over.
bool AclInterpreter::completesExit(std::uint8_t byte) {
    const char character = static_cast<char>(byte);
    if (character != universalExit[exitMatched_]) {
        exitMatched_ = character == universalExit[0] ? 1 : 0;
        return false;
    }
    exitMatched_ = (exitMatched_ + 1) % universalExit.size();
    return exitMatched_ == 0;
}

void AclInterpreter::feedLine(std::uint8_t byte) {
    if (byte == '\n')
        endLine();
    else if (line_.size() < longestLine)
        line_.push_back(static_cast<char>(byte));
}

void AclInterpreter::endLine() {
    static constexpr std::array<std::string_view, 5> enterAcl = {"@PJL", "ENTER", "LANGUAGE", "=", "ACL"};
    const std::vector<std::string> words = wordsOf(line_);
    line_.clear();
    if (std::ranges::equal(words, enterAcl))
        mode_ = Mode::Frames;
    else if (!words.empty() && (words[0] != "@PJL" || (words.size() > 1 && words[1] == "ENTER")))
        mode_ = Mode::BetweenJobs;
}

void AclInterpreter::feedFrame(std::uint8_t byte, const FrameHandler &handler) {
    static constexpr std::uint8_t marker[] = {0x00, 0xAC};
    if (frame_.size() < sizeof marker && byte != marker[frame_.size()]) {
        frame_.clear();
        mode_ = Mode::BetweenJobs;
        feed(byte, handler);
        return;
    }
    frame_.push_back(byte);
    if (frame_.size() < frameHeaderSize || frame_.size() < frameHeaderSize + bigEndian16(frame_, 4))
        return;
    const auto *text = reinterpret_cast<const char *>(frame_.data());
    handler({.command = static_cast<std::uint16_t>(bigEndian16(frame_, 2)),
             .data = std::string_view(text, frame_.size()).substr(frameHeaderSize)});
    frame_.clear();
}

} // namespace transport
