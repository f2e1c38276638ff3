#include "cli/AssetNames.h"
#include "cli/Commands.h"
#include "cli/Session.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/photos/PHPhotoLibrary.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace exifcard {
namespace {

ExitStatus setFavourites(const std::vector<std::string>& names, bool isFavourite, Session& session) {
    const auto assets = assetsNamed(names, session);
    if (assets.empty()) {
        return session.status();
    }
    const auto error = PHPhotoLibrary::sharedPhotoLibrary().performChangesAndWait([&] {
        for (const PHAssetPtr& asset : assets) {
            PHAssetChangeRequest::changeRequestForAsset(*asset).setFavorite(isFavourite);
        }
    });
    if (error) {
        session.fail(error->localizedDescription);
    }
    return session.status();
}

CommandAction declareChange(CLI::App& app, bool isFavourite) {
    auto names = std::make_shared<std::vector<std::string>>();
    declareAssets(app, *names);
    return [names, isFavourite](Session& session) { return setFavourites(*names, isFavourite, session); };
}

CommandAction declareOn(CLI::App& app) {
    return declareChange(app, true);
}

CommandAction declareOff(CLI::App& app) {
    return declareChange(app, false);
}

constexpr Command kSubcommands[] = {
    {"on", "Make assets favourites",
        "By the beginning of its identifier:\n  exifcard favourite on CC95F08C-88C3", declareOn},
    {"off", "Make assets no favourites any more",
        "By the beginning of its identifier:\n  exifcard favourite off CC95F08C-88C3", declareOff},
};

} // namespace

const Command kFavouriteCommand = {
    .name = "favourite",
    .summary = "Choose the favourites among the photos of the library",
    .examples = R"(One more, as exifcard list names it:
  exifcard favourite on CC95F08C-88C3)",
    .subcommands = kSubcommands,
};

} // namespace exifcard
