#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace exifcard {

class UIImage;

/// Small pictures on disk, which may be deleted at any time. Thread-safe; every program of the user shares
/// them.
class ThumbnailStore {
public:
    /// The longer side, in pixels: enough for a tile of the grid on a screen of today.
    static constexpr int kLongestSide = 512;
    /// A thumbnail has some 40 KB, so this is the like of ten thousand; the oldest go.
    static constexpr std::uint64_t kMostBytes = std::uint64_t(512) << 20U;

    explicit ThumbnailStore(std::uint64_t mostBytes = kMostBytes) : _mostBytes(mostBytes) {}

    /// Undecoded; null when there is none.
    /// @param key  Tells the picture and the state of its file: any bytes.
    std::shared_ptr<UIImage> thumbnail(std::string_view key) const;
    /// Encodes and writes it. Where that fails, nothing happens.
    void store(std::string_view key, const UIImage& thumbnail);
    /// Deletes the oldest until the rest is within three quarters of the bound. Done by `store` from time to
    /// time.
    void trim() const;

private:
    const std::uint64_t _mostBytes;
    std::atomic<std::uint64_t> _bytesUntilTrim = 0; ///< To be written before the next look at the folder.
};

} // namespace exifcard
