#include "platform/photos/SmartAlbums.h"

#include "platform/foundation/LocalizedString.h"
#include "platform/photos/AssetRow.h"

#include <fmt/format.h>

#include <algorithm>

namespace exifcard {
namespace {

using Subtype = PHAssetCollectionSubtype;

// Conditions on bits ask first what the index of special assets holds, so that it is used.
#define SPECIAL "(assets.subtypes + assets.traits <> 0 OR assets.playback = 2) AND "

constexpr SmartAlbum kSmartAlbums[] = {
    {Subtype::SmartAlbumUserLibrary, N_("Recents"), "assets.source_type & 1"},
    {Subtype::SmartAlbumFavorites, N_("Favorites"), "assets.favorite = 1"},
    {Subtype::SmartAlbumVideos, N_("Videos"), "assets.media_type = 2"},
    {Subtype::SmartAlbumSelfPortraits, N_("Selfies"), SPECIAL "assets.traits & 2"},
    {Subtype::SmartAlbumLivePhotos, N_("Live Photos"), SPECIAL "assets.subtypes & 8"},
    {Subtype::SmartAlbumDepthEffect, N_("Portrait"), SPECIAL "assets.subtypes & 16"},
    {Subtype::SmartAlbumLongExposures, N_("Long Exposure"), SPECIAL "assets.traits & 4"},
    {Subtype::SmartAlbumPanoramas, N_("Panoramas"), SPECIAL "assets.subtypes & 1"},
    {Subtype::SmartAlbumSpatial, N_("Spatial"), SPECIAL "assets.subtypes & 0x400"},
    {Subtype::SmartAlbumTimelapses, N_("Time-lapse"), SPECIAL "assets.subtypes & 0x40000"},
    {Subtype::SmartAlbumSlomoVideos, N_("Slo-mo"), SPECIAL "assets.subtypes & 0x20000"},
    {Subtype::SmartAlbumCinematic, N_("Cinematic"), SPECIAL "assets.subtypes & 0x200000"},
    {Subtype::SmartAlbumBursts, N_("Bursts"), "assets.burst IS NOT NULL"},
    {Subtype::SmartAlbumScreenshots, N_("Screenshots"), SPECIAL "assets.subtypes & 4"},
    {Subtype::SmartAlbumScreenRecordings, N_("Screen Recordings"), SPECIAL "assets.subtypes & 0x80000"},
    {Subtype::SmartAlbumAnimated, N_("Animated"), SPECIAL "assets.playback = 2"},
    {Subtype::SmartAlbumRAW, N_("RAW"), SPECIAL "assets.traits & 1"},
    {.subtype = Subtype::SmartAlbumRecentlyAdded, .title = N_("Recently Added"), .mostDays = 30},
    {.subtype = Subtype::SmartAlbumAllHidden, .title = N_("Hidden"), .isOfHidden = true},
};
#undef SPECIAL

} // namespace

std::span<const SmartAlbum> smartAlbums() {
    return kSmartAlbums;
}

const SmartAlbum* smartAlbumOfSubtype(PHAssetCollectionSubtype subtype) {
    const auto* const found = std::ranges::find(kSmartAlbums, subtype, &SmartAlbum::subtype);
    return found == std::end(kSmartAlbums) ? nullptr : found;
}

std::string identifierOfSmartAlbum(const SmartAlbum& album) {
    return uuidFromBytes(fmt::format("smart album {}", static_cast<std::int64_t>(album.subtype))) +
           std::string(kAlbumIdentifierSuffix);
}

} // namespace exifcard
