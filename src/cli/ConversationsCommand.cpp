#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/JsonWriter.h"
#include "cli/Session.h"
#include "platform/messages/ConversationStore.h"

#include <string>

namespace exifcard {
namespace {

ExitStatus listConversations(Session& session) {
    const ConversationNames conversations = ConversationStore().conversations();
    if (conversations.error) {
        session.fail(*conversations.error);
        return session.status();
    }
    for (const std::string& name : conversations.names) {
        const std::string line =
            session.options().isJSON
                ? JsonWriter().beginObject().key("conversation").text(name).endObject().take()
                : displayLine(name);
        session.print(line + "\n");
    }
    return session.status();
}

CommandAction declareConversations(CommandOptions& /*command*/) {
    return listConversations;
}

} // namespace

const Command kConversationsCommand = {
    .name = "conversations",
    .summary = "List the conversations, the one changed last first",
    .examples = R"(By name:
  exifcard conversations)",
    .declare = declareConversations,
};

} // namespace exifcard
