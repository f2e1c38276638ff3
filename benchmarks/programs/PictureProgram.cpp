// Gets something of pictures again and again within a process, opening the file each time: what a picture
// costs where the program already runs.
//
//     benchmark_picture embedded|thumbnail|preview|developer ROUNDS FILE…
#include "platform/foundation/Data.h"
#include "platform/foundation/LoadableModule.h"
#include "platform/foundation/URL.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/CGImageThumbnail.h"
#include "platform/imageio/EmbeddedPreviews.h"
#include "platform/imageio/RawDeveloper.h"
#include "platform/uivalues/Bitmap.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>

namespace {

using namespace exifcard;

constexpr int kEmbeddedSize = 160;
constexpr int kListSize = 512;

bool hasThumbnail(const std::string& path, int size) {
    const auto source = CGImageSourceCreateWithURL(URL::fileURLWithPath(path));
    const auto image =
        source ? CGImageSourceCreateThumbnail(*source, CGImageSourceCopyPropertiesAtIndex(*source, 0),
                     {.maximumPixelSize = size, .createWithTransform = true})
               : nullptr;
    const auto bitmap = image ? image->bitmap() : nullptr;
    return bitmap && std::max(bitmap->width, bitmap->height) == size;
}

/// The bytes of the thumbnail in the file, decoded and turned.
bool hasEmbedded(const std::string& path) {
    return hasThumbnail(path, kEmbeddedSize);
}

bool hasListThumbnail(const std::string& path) {
    return hasThumbnail(path, kListSize);
}

/// The bytes of the largest finished picture, read as far as their header.
bool hasPreview(const std::string& path) {
    const auto file = Data::mappedFile(path);
    return file && !embeddedPreviews(*file).empty();
}

/// The same from the module that knows all makers' ways.
bool hasDevelopersPreview(const std::string& path) {
    static const auto* const developer = moduleService<RawDeveloperEntry>("raw", kRawDeveloperEntry);
    const auto file = Data::mappedFile(path);
    return file && developer != nullptr && developer->preview(file->bytes());
}

struct Task {
    std::string_view name;
    bool (*isDone)(const std::string& path);
};

constexpr Task kTasks[] = {
    {"embedded", hasEmbedded},
    {"thumbnail", hasListThumbnail},
    {"preview", hasPreview},
    {"developer", hasDevelopersPreview},
};

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view name = argumentCount > 3 ? arguments[1] : "";
    const auto* const task = std::ranges::find(kTasks, name, &Task::name);
    if (task == std::end(kTasks)) {
        return 2;
    }
    for (long round = std::strtol(arguments[2], nullptr, 10); round > 0; --round) {
        if (!std::all_of(arguments + 3, arguments + argumentCount, task->isDone)) {
            return 1;
        }
    }
    return 0;
}
