#include "platform/photos/PictureCache.h"

#include "platform/uivalues/UIImage.h"

namespace exifcard {
namespace {

/// With alpha, as a canvas has it.
constexpr std::size_t kBytesAPixel = 4;

std::size_t bytesOf(const UIImage& picture) {
    return kBytesAPixel * static_cast<std::size_t>(picture.storedWidth()) *
           static_cast<std::size_t>(picture.storedHeight());
}

} // namespace

std::shared_ptr<UIImage> PictureCache::picture(const std::string& key) {
    const std::scoped_lock lock(_mutex);
    const auto found = _byKey.find(key);
    if (found == _byKey.end()) {
        return nullptr;
    }
    _entries.splice(_entries.begin(), _entries, found->second);
    return found->second->picture;
}

void PictureCache::store(const std::string& key, const std::shared_ptr<UIImage>& picture) {
    const std::size_t bytes = bytesOf(*picture);
    const std::scoped_lock lock(_mutex);
    if (bytes > _mostBytes / 4) {
        return;
    }
    if (const auto found = _byKey.find(key); found != _byKey.end()) {
        drop(found->second);
    }
    _entries.push_front({key, picture, bytes});
    _byKey.emplace(key, _entries.begin());
    _bytes += bytes;
    while (_bytes > _mostBytes) {
        drop(std::prev(_entries.end()));
    }
}

void PictureCache::remove(const std::string& key) {
    const std::scoped_lock lock(_mutex);
    if (const auto found = _byKey.find(key); found != _byKey.end()) {
        drop(found->second);
    }
}

void PictureCache::clear() {
    const std::scoped_lock lock(_mutex);
    _byKey.clear();
    _entries.clear();
    _bytes = 0;
}

void PictureCache::drop(Entries::iterator entry) {
    _bytes -= entry->bytes;
    _byKey.erase(entry->key);
    _entries.erase(entry);
}

} // namespace exifcard
