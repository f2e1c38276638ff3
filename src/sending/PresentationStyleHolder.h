#pragma once

#include "platform/messages/MSMessagesAppPresentationStyle.h"

namespace exifcard {

/// Whoever shows the extension and can give it more or less room.
class PresentationStyleHolder {
public:
    PresentationStyleHolder() = default;
    virtual ~PresentationStyleHolder() = default;
    PresentationStyleHolder(const PresentationStyleHolder&) = delete;
    PresentationStyleHolder& operator=(const PresentationStyleHolder&) = delete;

    /// Both on the main queue.
    virtual MSMessagesAppPresentationStyle presentationStyle() const = 0;
    virtual void requestPresentationStyle(MSMessagesAppPresentationStyle presentationStyle) = 0;
};

} // namespace exifcard
