#pragma once

namespace exifcard {

/// For how many seconds a frame is shown: shorter delays than 0.02 s are taken for an oversight and read as
/// 0.1.
constexpr double shownDelay(double delay) {
    return delay < 0.02 ? 0.1 : delay;
}

} // namespace exifcard
