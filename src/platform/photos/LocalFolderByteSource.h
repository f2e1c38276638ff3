#pragma once

#include "platform/photos/AssetByteSource.h"

namespace exifcard {

/// Files of a folder of this computer: they are there, or they are gone.
class LocalFolderByteSource final : public AssetByteSource {
public:
    std::optional<std::string> localFile(const AssetFile& file) const override;
    bool isElsewhere(const AssetFile& file) const override;
    std::optional<PHError> bring(const AssetFile& file, const Progress& progress) override;
};

} // namespace exifcard
