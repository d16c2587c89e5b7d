#include "Platform/Transport/ReadLimit.h"

#include <algorithm>

namespace transport {

using std::chrono::milliseconds;

std::optional<milliseconds> ReadLimit::begin(dispatch::Instant now, milliseconds timeout) {
    start_ = start_.value_or(now);
    const milliseconds longest =
        written_ ? 2 * std::max(timeout, shortestTimeout) : std::max(timeout, longestDrain);
    const auto left = std::chrono::ceil<milliseconds>(*start_ + longest - now);
    over_ = over_ || reads_ == mostReads || left <= milliseconds(0);
    if (over_)
        return std::nullopt;
    ++reads_;
    shortened_ = left < timeout;
    return std::min(left, timeout);
}

tl_usb_status ReadLimit::end(tl_usb_status status) {
    if (status != TL_USB_ERROR_TIMEOUT)
        return status;
    over_ = shortened_;
    start_.reset();
    reads_ = 0;
    return over_ ? TL_USB_ERROR_ENDLESS : status;
}

} // namespace transport
