#pragma once

#include "host/Settling.h"
#include "platform/messages/ConversationStore.h"

#include <gtest/gtest.h>

#include <functional>

namespace exifcard {

/// Runs the main queue until the condition holds; a test that waits in vain fails.
inline void expectSoon(const std::function<bool()>& condition) {
    EXPECT_TRUE(waitUntil(condition, std::chrono::seconds(10)));
}

/// A message with this caption and no picture.
inline MSMessage messageWithCaption(const std::string& caption) {
    MSMessage message;
    message.layout.caption = caption;
    return message;
}

} // namespace exifcard
