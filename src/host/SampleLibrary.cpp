#include "host/SampleLibrary.h"

#include "host/Settling.h"
#include "library/ExifManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/URL.h"
#include "platform/messages/ConversationStore.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/import/Importer.h"
#include "sending/Conversations.h"
#include "sending/PhotoSending.h"
#include "settings/PersistanceManager.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <optional>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

void sendPhoto(const std::shared_ptr<const MSConversation>& conversation, const std::string& file) {
    const auto isDone = std::make_shared<std::atomic<bool>>(false);
    std::shared_ptr<ExifInformation> record;
    SampleLibrary::runOnQueue(
        [&record, &file] { record = ExifManager::exifinformationFromNSURL(URL::fileURLWithPath(file)); });
    if (!record) {
        return;
    }
    PhotoSending(conversation)
        .sendPhotoWithEXIF(
            record,
            [file](const PhotoSending::ImageDataHandler& handler) { handler(Data::mappedFile(file)); },
            [isDone](const PhotoSendingResult&) { *isDone = true; });
    waitUntil([isDone] { return isDone->load(); });
}

} // namespace

void SampleLibrary::runOnQueue(const std::function<void()>& work) {
    const auto isDone = std::make_shared<std::atomic<bool>>(false);
    DispatchQueue::globalQueue().async([work, isDone] {
        work();
        *isDone = true;
    });
    waitUntil([isDone] { return isDone->load(); }, std::chrono::minutes(10));
}

SampleLibrary::SampleLibrary() {
    const QByteArray home = _home.path().toLocal8Bit();
    qputenv("XDG_CONFIG_HOME", home + "/config");
    qputenv("XDG_DATA_HOME", home + "/data");
    // Nothing is kept for later: a picture that is still being made at the end would bring the folder back.
    qputenv("XDG_CACHE_HOME", "/dev/null");
    PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Authorized);
}

std::string SampleLibrary::import(const std::vector<std::string>& files) {
    const fs::path folder = fs::path(_home.path().toStdString()) / "Photos";
    std::error_code error;
    fs::create_directory(folder, error);
    for (const std::string& file : files) {
        fs::copy_file(file, folder / fs::path(file).filename(), fs::copy_options::skip_existing, error);
        if (error) {
            return "cannot read " + file + ": " + error.message();
        }
    }
    std::string fault;
    runOnQueue([&folder, &fault] {
        ImportHandlers handlers = {.onProblem = [](const ImportProblem&) {},
            .onNotice = [](std::string_view) {},
            .onProgress = [](const ImportProgress&) {}};
        fault = Importer(PhotoCatalogue::shared(), std::move(handlers), 2)
                    .importTrees({folder.string()})
                    .error.value_or("");
    });
    return fault;
}

std::string SampleLibrary::fillConversation(const std::string& name, const std::vector<std::string>& files) {
    const std::shared_ptr<const MSConversation> conversation = conversationNamed(name);
    std::string fault;
    for (const std::string& file : files) {
        // One share text shows what it is; more would push the photos out of sight.
        PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(&file == &files.front());
        sendPhoto(conversation, file);
        if (&file != &files.back()) {
            runOnQueue([&name, &fault] { fault = ConversationStore().sendPending(name).value_or(fault); });
        }
    }
    return fault;
}

} // namespace exifcard
