#include "cli/CommandOptions.h"
#include "cli/CommandQueue.h"
#include "cli/Commands.h"
#include "cli/ConversationOutput.h"
#include "cli/FileCommand.h"
#include "cli/JsonWriter.h"
#include "cli/PhotoFile.h"
#include "cli/Session.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/messages/ConversationStore.h"
#include "sending/Conversations.h"
#include "sending/PhotoSending.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

namespace exifcard {
namespace {

constexpr double kFrameQuality = 0.9; // A bubble shows it small.

struct SendOptions {
    FileArguments files;
    std::string conversation;
    bool sendsNow = false;
};

/// The bytes from which the message's picture is made: the file's own, or one of a video's frame.
std::optional<Data> pictureData(const ExifInformation& record, const std::string& name) {
    if (!isVideo(record)) {
        return Data::mappedFile(name);
    }
    return record.thumbNailImage
               ? std::optional(UIImageJPEGRepresentation(*record.thumbNailImage, kFrameQuality))
               : std::nullopt;
}

/// Puts one photo into the conversation's input field, and sends it where that is wanted.
/// @return One sentence about what failed, or nothing.
PhotoSendingResult sendPhoto(
    const std::shared_ptr<ExifInformation>& record, const std::string& name, const SendOptions& options) {
    PhotoSendingResult result;
    DispatchSemaphore isInserted(0);
    PhotoSending(conversationNamed(options.conversation))
        .sendPhotoWithEXIF(
            record, [&](const auto& resultHandler) { resultHandler(pictureData(*record, name)); },
            [&](const PhotoSendingResult& sent) {
                result = sent;
                isInserted.signal();
            });
    isInserted.wait();
    if (!result.error && options.sendsNow) {
        result.error = ConversationStore().sendPending(options.conversation);
    }
    return result;
}

/// What a sending has just left in the conversation: its bubble and the text after it.
ConversationContent sentEntries(const SendOptions& options) {
    ConversationContent content = ConversationStore().content(options.conversation);
    const auto isMessage = [](const ConversationEntry& entry) {
        return entry.kind == ConversationEntry::Kind::Message;
    };
    const auto last = std::find_if(content.entries.rbegin(), content.entries.rend(), isMessage);
    if (last == content.entries.rend()) {
        content.entries.clear(); // Another program took it away meanwhile.
    } else {
        content.entries.erase(content.entries.begin(), last.base() - 1);
    }
    return content;
}

std::string sentJSON(const std::string& name, const SendOptions& options, const PhotoSendingResult& result) {
    const ConversationContent sent = sentEntries(options);
    JsonWriter json;
    json.beginObject().file(name).key("conversation").text(options.conversation).key("message");
    if (sent.entries.empty()) {
        json.null();
    } else {
        writeEntry(json, sent.entries.front());
    }
    json.key("text").textOrNull(result.text).endObject();
    return json.take() + "\n";
}

FileResult sendFile(const std::string& name, const SendOptions& options, const SessionOptions& session) {
    const auto record = readPhoto(name);
    if (!record) {
        return failedFile(name, "read", causeOfFailure(name), session.isJSON);
    }
    const PhotoSendingResult result = sendPhoto(record, name, options);
    if (result.error) {
        return failedFile(name, "send", *result.error, session.isJSON);
    }
    if (session.isJSON) {
        return {.output = sentJSON(name, options, result)};
    }
    return {.output = conversationText(options.conversation, sentEntries(options), session.usesColor)};
}

ExitStatus sendFiles(const SendOptions& options, Session& session) {
    if (!options.sendsNow && !isOneFile(options.files)) {
        return session.refuse("an input field holds one photo; several files need --now");
    }
    return runOnQueue([&] {
        const auto work = [&](const std::string& name) { return sendFile(name, options, session.options()); };
        return runOverFiles(options.files, session, work, /*mostJobs=*/1);
    });
}

CommandAction declareSend(CommandOptions& command) {
    auto options = std::make_shared<SendOptions>();
    declareFiles(command, options->files);
    command.value("--to", options->conversation, "The conversation, which need not exist yet")
        .required()
        .named("NAME")
        .checkedBy(conversationNameFault);
    command.flag("--now", options->sendsNow, "Send it, instead of leaving it in the input field");
    return [options](Session& session) { return sendFiles(*options, session); };
}

} // namespace

const Command kSendCommand = {
    .name = "send",
    .summary = "Put a photo with a caption of its settings into a conversation",
    .examples = R"(Into the input field, in place of what waits there:
  exifcard send photo.jpg --to Ann
Several at once, sent:
  exifcard send --now --to Ann one.jpg two.jpg)",
    .declare = declareSend,
};

} // namespace exifcard
