#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/FileCommand.h"
#include "cli/JsonWriter.h"
#include "cli/PhotoFile.h"
#include "cli/Session.h"
#include "metadata/ExifInformation.h"

#include <memory>
#include <string>

namespace exifcard {
namespace {

FileResult shareTextOf(const std::string& name, bool isJSON) {
    const auto record = readPhoto(name);
    if (!record) {
        return failedFile(name, "read", causeOfFailure(name), isJSON);
    }
    const std::string text = record->shortExifStringsForShare();
    if (!isJSON) {
        return {.output = displayLines(text)};
    }
    return {.output = JsonWriter().beginObject().file(name).key("text").text(text).endObject().take() + "\n"};
}

CommandAction declareShare(CommandOptions& command) {
    auto files = std::make_shared<FileArguments>();
    declareFiles(command, *files);
    return [files](Session& session) {
        return runOverFiles(*files, session,
            [&session](const std::string& name) { return shareTextOf(name, session.options().isJSON); });
    };
}

} // namespace

const Command kShareCommand = {
    .name = "share",
    .summary = "Print the short text that goes along with a photo",
    .examples = R"(Of one photo:
  exifcard share photo.jpg
Into the clipboard:
  exifcard share photo.jpg | wl-copy)",
    .declare = declareShare,
};

} // namespace exifcard
