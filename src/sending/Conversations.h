#pragma once

#include "platform/messages/MSConversation.h"

#include <memory>
#include <string>

namespace exifcard {

/// A conversation of this user, whose pictures are stored as upright JPEG files without metadata.
/// @param name  As `ConversationStore` takes it; there need not be such a conversation yet.
std::shared_ptr<MSConversation> conversationNamed(std::string name);

} // namespace exifcard
