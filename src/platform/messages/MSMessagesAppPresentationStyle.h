#pragma once

namespace exifcard {

/// How much room the host gives to an extension; the platform's numbers.
enum class MSMessagesAppPresentationStyle {
    Compact = 0,    ///< A panel below the conversation.
    Expanded = 1,   ///< Nearly the whole screen.
    Transcript = 2, ///< Inside a bubble; cannot be asked for.
};

} // namespace exifcard
