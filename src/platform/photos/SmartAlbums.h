#pragma once

#include "platform/photos/PHAssetCollection.h"

#include <span>
#include <string>
#include <string_view>

namespace exifcard {

/// An album that is a question.
struct SmartAlbum {
    PHAssetCollectionSubtype subtype = PHAssetCollectionSubtype::SmartAlbumGeneric;
    const char* title = "";       ///< English; looked up when it is shown.
    std::string_view condition{}; ///< Of the catalogue's assets; empty: all.
    bool isOfHidden = false;
    bool showsWholeBursts = false;
    int mostDays = 0; ///< In the library for at most so long; 0: however long.
};

/// In the order in which they are listed.
std::span<const SmartAlbum> smartAlbums();
/// Null for what is no smart album or one that nothing can be in.
const SmartAlbum* smartAlbumOfSubtype(PHAssetCollectionSubtype subtype);
/// The same in every library.
std::string identifierOfSmartAlbum(const SmartAlbum& album);

} // namespace exifcard
