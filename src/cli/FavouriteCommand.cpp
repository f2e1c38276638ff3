#include "cli/AssetNames.h"
#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/Session.h"
#include "platform/photos/PHAssetChangeRequest.h"
#include "platform/photos/PHPhotoLibrary.h"

#include <memory>
#include <string>
#include <vector>

namespace exifcard {
namespace {

ExitStatus setFavourites(const std::vector<std::string>& names, bool isFavourite, Session& session) {
    if (!canReadLibrary(session)) {
        return session.status();
    }
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

CommandAction declareChange(CommandOptions& command, bool isFavourite) {
    auto names = std::make_shared<std::vector<std::string>>();
    declareAssets(command, *names);
    return [names, isFavourite](Session& session) { return setFavourites(*names, isFavourite, session); };
}

CommandAction declareOn(CommandOptions& command) {
    return declareChange(command, true);
}

CommandAction declareOff(CommandOptions& command) {
    return declareChange(command, false);
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
