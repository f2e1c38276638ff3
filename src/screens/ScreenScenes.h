#pragma once

#include <string_view>

namespace exifcard {

inline constexpr std::string_view kMainInterfaceStoryboard = "MainInterface";
inline constexpr std::string_view kAllPhotosScene =
    "AllPhotosViews"; ///< A `StickerPhotosExifViewController`.
inline constexpr std::string_view kAlbumsListStoryboard = "AlbumsList";
/// A navigation controller around an `AlbumsListViewController`.
inline constexpr std::string_view kAlbumsListScene = "AlbumsListNavControllerID";

/// Makes the scenes of the panel known. Whoever shows it calls this before.
void registerScreenScenes();

} // namespace exifcard
