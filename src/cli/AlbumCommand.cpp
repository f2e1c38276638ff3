#include "cli/Albums.h"
#include "cli/AssetNames.h"
#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/Session.h"
#include "cli/TextTable.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollectionChangeRequest.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/photos/PhotoCatalogue.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {
namespace {

struct AlbumOptions {
    std::string name;
    std::vector<std::string> assets;
};

std::string_view kindOf(const PHAssetCollection& album) {
    if (album.assetCollectionType == PHAssetCollectionType::SmartAlbum) {
        return "smart";
    }
    return album.assetCollectionSubtype == PHAssetCollectionSubtype::AlbumSyncedAlbum ? "folder" : "album";
}

ExitStatus listAlbums(Session& session) {
    if (!canReadLibrary(session)) {
        return session.status();
    }
    TextTable table;
    std::string objects;
    for (const PHAssetCollectionPtr& album : allAlbums()) {
        const std::size_t count = PHAsset::fetchAssetsInAssetCollection(*album)->count();
        const std::string title = album->localizedTitle.value_or("");
        JsonWriter json;
        json.beginObject().key("id").text(album->localIdentifier).key("title").text(title);
        json.key("kind")
            .text(kindOf(*album))
            .key("count")
            .integer(static_cast<std::int64_t>(count))
            .endObject();
        objects += json.take() + "\n";
        table.addRow({title, std::string(kindOf(*album)), fmt::format("{:>6}", count)});
    }
    session.print(session.options().isJSON ? objects : table.text(session.options().usesColor));
    return session.status();
}

/// Does what the block asks of the library, or tells why not.
ExitStatus change(Session& session, const std::function<void()>& block) {
    if (const auto error = PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait(block)) {
        session.fail(error->localizedDescription);
    }
    return session.status();
}

ExitStatus createAlbum(const AlbumOptions& options, Session& session) {
    if (!canReadLibrary(session)) {
        return session.status();
    }
    if (albumNamed(options.name)) {
        return session.refuse(fmt::format("there is an album {} already", options.name));
    }
    return change(session, [&options] {
        PHAssetCollectionChangeRequest::creationRequestForAssetCollectionWithTitle(options.name);
    });
}

ExitStatus addToAlbum(const AlbumOptions& options, Session& session) {
    if (!canReadLibrary(session)) {
        return session.status();
    }
    const PHAssetCollectionPtr album = albumNamed(options.name);
    if (!album) {
        return session.refuse(
            fmt::format("there is no album {0}; exifcard album create {0} makes it", options.name));
    }
    const auto assets = assetsNamed(options.assets, session);
    if (assets.empty()) {
        return session.status();
    }
    return change(session,
        [&] { PHAssetCollectionChangeRequest::changeRequestForAssetCollection(*album).addAssets(assets); });
}

void declareName(CommandOptions& command, AlbumOptions& options) {
    command.value("NAME", options.name, "The album").required().named("NAME");
}

CommandAction declareCreate(CommandOptions& command) {
    auto options = std::make_shared<AlbumOptions>();
    declareName(command, *options);
    return [options](Session& session) { return createAlbum(*options, session); };
}

CommandAction declareAdd(CommandOptions& command) {
    auto options = std::make_shared<AlbumOptions>();
    declareName(command, *options);
    declareAssets(command, options->assets);
    return [options](Session& session) { return addToAlbum(*options, session); };
}

CommandAction declareAlbums(CommandOptions& /*command*/) {
    return listAlbums;
}

constexpr Command kSubcommands[] = {
    {"create", "Make an album", "An empty one:\n  exifcard album create Lisbon", declareCreate},
    {"add", "Put assets into an album, at its end",
        "Two, by the beginnings of their identifiers:\n  exifcard album add Lisbon CC95F08C-88C3 0A41D3B2-91EE",
        declareAdd},
};

} // namespace

const Command kAlbumsCommand = {
    .name = "albums",
    .summary = "List the albums: the user's own, those of folders, and the library's",
    .examples = "What there is:\n  exifcard albums",
    .declare = declareAlbums,
};

const Command kAlbumCommand = {
    .name = "album",
    .summary = "Make an album, and put assets into it",
    .examples = R"(An album with two photos:
  exifcard album create Lisbon
  exifcard album add Lisbon CC95F08C-88C3 0A41D3B2-91EE)",
    .subcommands = kSubcommands,
};

} // namespace exifcard
