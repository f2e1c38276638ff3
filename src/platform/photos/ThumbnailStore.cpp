#include "platform/photos/ThumbnailStore.h"

#include "platform/foundation/Data.h"
#include "platform/foundation/FilePaths.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/photos/AssetRow.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include <unistd.h>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

constexpr double kJpegQuality = 0.85;
/// What does not fit a thumbnail was written by someone else.
constexpr std::size_t kLargestFile = std::size_t(4) << 20U;

std::string folder() {
    return cacheFolder() + "/thumbnails";
}

/// Spread over folders, for long ones are slow.
std::string pathOfKey(std::string_view key) {
    const std::string name = uuidFromBytes(key);
    return fmt::format("{}/{}/{}", folder(), name.substr(0, 2), name);
}

/// A JPEG, or a PNG of what is transparent.
Data encoded(const UIImage& thumbnail) {
    const auto bitmap = thumbnail.bitmap();
    if (!bitmap) {
        return {};
    }
    constexpr int kWithAlpha = 4;
    bool isOpaque = true;
    for (std::size_t alpha = 3; bitmap->channels == kWithAlpha && alpha < bitmap->pixels.size(); alpha += 4) {
        isOpaque = isOpaque && bitmap->pixels[alpha] == 0xff;
    }
    return isOpaque ? UIImageJPEGRepresentation(thumbnail, kJpegQuality)
                    : UIImagePNGRepresentation(thumbnail);
}

/// Without waiting for the disk: a thumbnail that a power cut leaves broken is made again.
bool writeQuickly(const std::string& path, const Data& bytes) {
    static std::atomic<unsigned> count = 0;
    const std::string temporary = fmt::format("{}.{}-{}", path, ::getpid(), ++count);
    {
        std::ofstream file(temporary, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    std::error_code error; // The folder may be cleared meanwhile.
    if (fs::file_size(temporary, error) == bytes.size() && ::rename(temporary.c_str(), path.c_str()) == 0) {
        return true;
    }
    ::unlink(temporary.c_str());
    return false;
}

struct StoredThumbnail {
    fs::path path;
    fs::file_time_type written;
    std::uint64_t bytes = 0;
};

std::vector<StoredThumbnail> storedThumbnails() {
    std::vector<StoredThumbnail> thumbnails;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder(), error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code entryError;
        StoredThumbnail thumbnail{entry->path(), entry->last_write_time(entryError), 0};
        if (entry->is_regular_file(entryError)) {
            thumbnail.bytes = entry->file_size(entryError);
            thumbnails.push_back(std::move(thumbnail));
        }
    }
    return thumbnails;
}

} // namespace

std::shared_ptr<UIImage> ThumbnailStore::thumbnail(std::string_view key) const {
    const auto bytes = Data::mappedFile(pathOfKey(key));
    return bytes && bytes->size() <= kLargestFile ? imageWithData(*bytes) : nullptr;
}

void ThumbnailStore::store(std::string_view key, const UIImage& thumbnail) {
    const Data bytes = encoded(thumbnail);
    const std::string path = pathOfKey(key);
    if (bytes.empty() || !makeFolder(fs::path(path).parent_path().string()) || !writeQuickly(path, bytes)) {
        return;
    }
    // The first one looks too: what other programs wrote counts as well.
    if (_bytesUntilTrim <= bytes.size()) {
        _bytesUntilTrim = _mostBytes / 4;
        trim();
    } else {
        _bytesUntilTrim -= bytes.size();
    }
}

void ThumbnailStore::trim() const {
    auto thumbnails = storedThumbnails();
    std::uint64_t total = 0;
    for (const StoredThumbnail& thumbnail : thumbnails) {
        total += thumbnail.bytes;
    }
    if (total <= _mostBytes) {
        return;
    }
    std::ranges::sort(thumbnails, {}, &StoredThumbnail::written);
    for (const StoredThumbnail& thumbnail : thumbnails) {
        if (total <= _mostBytes / 4 * 3) {
            return;
        }
        std::error_code ignored;
        fs::remove(thumbnail.path, ignored);
        total -= thumbnail.bytes;
    }
}

} // namespace exifcard
