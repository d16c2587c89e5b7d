// Finds the ACL frames in the bytes a printer receives.
//
//   UEL | PJL lines ... "@PJL ENTER LANGUAGE=ACL" LF | frame ... | UEL
//
// | in             | on                              | goes to                                   |
// |----------------|---------------------------------|-------------------------------------------|
// | between jobs   | UEL                             | lines                                     |
// |                | anything else                   | between jobs (print data, dropped)        |
// | lines          | UEL, empty line, other PJL line | lines                                     |
// |                | ENTER LANGUAGE=ACL              | frames                                    |
// |                | another language, another text  | between jobs                              |
// | frames         | 00 AC and the rest of a frame   | frames, after handing the frame over      |
// |                | anything else                   | between jobs, which looks for UEL in it   |
//
// UEL inside a frame's data is data. Memory is bounded: one frame (65,551 bytes) and one line; the rest of a
// longer line is dropped. Not thread-safe.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace transport {

struct AclFrame {
    std::uint16_t command;
    std::string_view data; // valid during the call that hands the frame over
};

class AclInterpreter {
public:
    using FrameHandler = std::function<void(const AclFrame &)>;

    /// Takes the next bytes, which may be split anywhere, and calls the handler for each frame that they
    /// complete.
    void feed(std::span<const std::uint8_t> bytes, const FrameHandler &handler);

private:
    enum class Mode { BetweenJobs, Lines, Frames };

    void feed(std::uint8_t byte, const FrameHandler &handler);
    bool completesExit(std::uint8_t byte);
    void feedLine(std::uint8_t byte);
    void endLine();
    void feedFrame(std::uint8_t byte, const FrameHandler &handler);

    Mode mode_ = Mode::BetweenJobs;
    std::size_t exitMatched_ = 0; // bytes of UEL seen so far
    std::string line_;
    std::vector<std::uint8_t> frame_;
};

} // namespace transport
