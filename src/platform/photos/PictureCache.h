#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace exifcard {

class UIImage;

/// Decoded pictures that were used last, within a bound. Thread-safe.
class PictureCache {
public:
    /// A few screens full of tiles.
    static constexpr std::size_t kMostBytes = std::size_t(32) << 20U;

    explicit PictureCache(std::size_t mostBytes = kMostBytes) : _mostBytes(mostBytes) {}

    /// Null when it is not there.
    std::shared_ptr<UIImage> picture(const std::string& key);
    /// A picture larger than a quarter of the bound is not kept.
    void store(const std::string& key, const std::shared_ptr<UIImage>& picture);
    void remove(const std::string& key);
    void clear();

private:
    struct Entry {
        std::string key;
        std::shared_ptr<UIImage> picture;
        std::size_t bytes = 0;
    };
    using Entries = std::list<Entry>;

    void drop(Entries::iterator entry);

    const std::size_t _mostBytes;
    std::mutex _mutex;
    Entries _entries;                                // Guarded by _mutex; the one used last in front.
    std::map<std::string, Entries::iterator> _byKey; // Guarded by _mutex.
    std::size_t _bytes = 0;                          // Guarded by _mutex.
};

} // namespace exifcard
