#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/ConversationOutput.h"
#include "cli/Session.h"
#include "platform/messages/ConversationStore.h"

#include <memory>
#include <optional>
#include <string>

namespace exifcard {
namespace {

struct ConversationOptions {
    std::string name;
    bool sends = false;
    bool discards = false;
};

std::optional<std::string> change(const ConversationStore& store, const ConversationOptions& options) {
    if (options.sends) {
        return store.sendPending(options.name);
    }
    return options.discards ? store.dropPending(options.name) : std::nullopt;
}

ExitStatus showConversation(const ConversationOptions& options, Session& session) {
    const ConversationStore store;
    if (const auto error = change(store, options)) {
        session.fail(*error);
        return session.status();
    }
    const ConversationContent content = store.content(options.name);
    if (content.error) {
        session.fail(*content.error);
        return session.status();
    }
    const SessionOptions& sessionOptions = session.options();
    session.print(sessionOptions.isJSON ? conversationJSON(options.name, content)
                                        : conversationText(options.name, content, sessionOptions.usesColor));
    return session.status();
}

CommandAction declareConversation(CommandOptions& command) {
    auto options = std::make_shared<ConversationOptions>();
    command.value("NAME", options->name, "The conversation")
        .required()
        .named("NAME")
        .checkedBy(conversationNameFault);
    const auto send = command.flag("--send", options->sends, "First send what waits in its input field");
    command.flag("--discard", options->discards, "First drop what waits in its input field").excluding(send);
    return [options](Session& session) { return showConversation(*options, session); };
}

} // namespace

const Command kConversationCommand = {
    .name = "conversation",
    .summary = "Show what a conversation holds, and send or drop what waits in its input field",
    .examples = R"(What was said and what waits:
  exifcard conversation Ann
Send what waits:
  exifcard conversation Ann --send)",
    .declare = declareConversation,
};

} // namespace exifcard
