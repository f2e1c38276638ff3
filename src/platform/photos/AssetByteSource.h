#pragma once

#include "platform/photos/PHError.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace exifcard {

/// A file of the library as the catalogue knows it.
struct AssetFile {
    std::int64_t number = 0; ///< In the catalogue.
    std::string root; ///< The library root that it lies in, "/photos"; bytes, no "/" at its end.
    std::string path; ///< Below the root: "2024/a.jpg"; bytes, checked to stay below it.
    std::int64_t sizeInBytes = 0;
};

/// Where the bytes of assets come from: a folder of this computer, or a place elsewhere from which they are
/// brought. Used from any thread.
class AssetByteSource {
public:
    /// Told from time to time with 0 … 1; answers false to stop.
    using Progress = std::function<bool(double fraction)>;

    AssetByteSource() = default;
    virtual ~AssetByteSource() = default;
    AssetByteSource(const AssetByteSource&) = delete;
    AssetByteSource& operator=(const AssetByteSource&) = delete;

    /// The file on this computer that holds all bytes now; nothing while they are elsewhere or gone. Never
    /// reaches the network.
    virtual std::optional<std::string> localFile(const AssetFile& file) const = 0;

    /// Whether `bring` may succeed for what has no local file: false for a folder, whose missing files are
    /// gone.
    virtual bool isElsewhere(const AssetFile& file) const = 0;

    /// Brings the bytes here, so that `localFile` answers. Blocks, on the network; calls `progress` on the
    /// calling thread.
    /// @return Nothing when they are here; `UserCancelled` when `progress` stopped it.
    virtual std::optional<PHError> bring(const AssetFile& file, const Progress& progress) = 0;
};

} // namespace exifcard
