#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace exifcard {

// The values of a list's view type. Any other shows no cell.
inline constexpr std::uint64_t kCardsViewType = 0;
inline constexpr std::uint64_t kGridViewType = 1;
inline constexpr std::uint64_t kQuietCardsViewType = 2; ///< Without an overlay while the first page loads.
inline constexpr std::uint64_t kSelectionViewType = 3;  ///< A grid whose tiles can be selected.

constexpr bool isGrid(std::uint64_t viewType) {
    return viewType == kGridViewType || viewType == kSelectionViewType;
}
constexpr bool isListOfCards(std::uint64_t viewType) {
    return viewType == kCardsViewType || viewType == kQuietCardsViewType;
}

// The sections of a list.
inline constexpr std::size_t kPhotosSection = 0;
inline constexpr std::size_t kLoadingMoreSection = 1; ///< One item; there while there is more to load.

// What its cells are registered as.
inline constexpr std::string_view kCardID = "ExifDataCollectionListViewCellID";
inline constexpr std::string_view kTileID = "ExifGridCollectionViewCellID";
inline constexpr std::string_view kTileWithDetailsID = "ExifGridWithDetailsCollectionViewCellID";
inline constexpr std::string_view kLoadingMoreID = "LoadingMoreCollectionViewCellID";
inline constexpr std::string_view kReusableViewID = "UICollectionReusableViewID";

} // namespace exifcard
