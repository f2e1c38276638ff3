#pragma once

#include "platform/photos/AssetByteSource.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>

namespace exifcard {

/// A place elsewhere, whose bytes come in steps, or not at all. Once any have come, all files are here.
class SlowFolder final : public AssetByteSource {
public:
    std::optional<std::string> localFile(const AssetFile& file) const override {
        return _isHere ? std::optional(file.root + "/" + file.path) : std::nullopt;
    }
    bool isElsewhere(const AssetFile& /*file*/) const override { return true; }
    std::optional<PHError> bring(const AssetFile& /*file*/, const Progress& progress) override {
        for (const double fraction : {0.25, 0.5}) {
            if (beforeStep) {
                beforeStep();
            }
            if (!progress(fraction)) {
                return PHError{PHErrorCode::UserCancelled, "stopped"};
            }
        }
        if (isBroken) {
            return PHError{PHErrorCode::NetworkError, "the line is down"};
        }
        _isHere = true;
        progress(1);
        return std::nullopt;
    }

    std::atomic<bool> isBroken = false;
    std::function<void()> beforeStep; ///< May be empty.

private:
    std::atomic<bool> _isHere = false;
};

} // namespace exifcard
