#include "categories/NSData+URL.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/TemporaryFiles.h"

namespace exifcard {
namespace {

constexpr const char* kUsualFileName = "tempImage";

void logFailure(const std::string& failure) {
    debugLog("ERROR %@", {failure});
    debugLog("Error %@", {failure});
}

} // namespace

std::optional<URL> temporaryURLForImageNSData(const std::optional<Data>& data) {
    return temporaryURLForImageNSData(data, kUsualFileName);
}

std::optional<URL> temporaryURLForImageNSData(const std::optional<Data>& data, const std::string& fileName) {
    if (!data) {
        return std::nullopt;
    }
    const std::string name = lastPathComponent(fileName); // A file's name is not to be trusted.
    const std::string folder = temporaryDirectory() + stringByDeletingPathExtension(name);
    debugLog("FOLDER %@", {folder});
    if (!isWritableFile(temporaryDirectory())) {
        debugLog("Else %@", {folder});
        return std::nullopt;
    }
    if (const auto failure = makeOneFolder(folder)) {
        logFailure(*failure);
    }
    // Intended: beside the folder, not in it; a name without extension leaves its point.
    const std::string path = folder + "." + pathExtension(name);
    if (!writeFileAtomically(path, *data)) {
        logFailure(lastFileError());
        return std::nullopt;
    }
    const URL url = URL::fileURLWithPath(path);
    debugLog("FOLDER %@", {url.absoluteString()});
    return url;
}

void deleteTemporaryFileAtURL(const URL& url) {
    // Intended: temporary files stay.
    static_cast<void>(isDeletableFile(url.path()));
}

} // namespace exifcard
