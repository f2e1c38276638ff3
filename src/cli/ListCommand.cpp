#include "cli/Albums.h"
#include "cli/AssetNames.h"
#include "cli/AssetOutput.h"
#include "cli/Choices.h"
#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/Session.h"
#include "platform/foundation/PlatformException.h"
#include "platform/foundation/Predicate.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PhotoCatalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

constexpr std::size_t kPageSize = 50;

struct ListOptions {
    std::string album;
    bool wantsFavourites = false;
    std::string condition;
    std::string sort = "created";
    bool isAscending = false;
    std::size_t page = 1; ///< From 1.
    bool wantsRows = false;
};

/// Null for no condition at all.
PredicatePtr predicateOf(const ListOptions& options) {
    std::vector<PredicatePtr> parts;
    if (!options.condition.empty()) {
        parts.push_back(Predicate::predicateWithFormat(options.condition));
    }
    if (options.wantsFavourites) {
        parts.push_back(Predicate::predicateWithFormat("favorite = YES"));
    }
    return parts.empty()
               ? nullptr
               : std::make_shared<const Predicate>(CompoundPredicate{CompoundPredicate::Type::And, parts});
}

PHFetchOptions fetchOptionsOf(const ListOptions& options) {
    SortDescriptor created{"creationDate", options.isAscending};
    SortDescriptor modified{"modificationDate", options.isAscending};
    if (options.sort == "modified") {
        std::swap(created, modified);
    }
    return {.predicate = predicateOf(options), .sortDescriptors = {created, modified}};
}

std::string reasonOf(const PlatformException& exception) {
    return std::string(exception.what()).substr(exception.name().size() + std::string_view(": ").size());
}

/// The condition again, with a mark below the place of the fault.
ExitStatus refuseCondition(
    const std::string& condition, const PredicateFormatException& fault, Session& session) {
    const std::string before = displayLine(condition.substr(0, fault.offset()));
    session.refuse(fmt::format("--where: {}", reasonOf(fault)));
    session.quote(displayLine(condition));
    session.quote(std::string(displayWidth(before), ' ') + "^");
    return ExitStatus::WrongUsage;
}

ExitStatus showPage(const PHAssetFetchResult& found, const ListOptions& options, Session& session) {
    const std::size_t first = (options.page - 1) * kPageSize;
    const std::size_t known = found.countUpTo(first + kPageSize + 1);
    if (known <= first && options.page > 1) {
        return session.refuse(fmt::format("--page {}: there are not so many", options.page));
    }
    const auto assets = found.objectsInRange(first, std::min(known - first, kPageSize));
    const SessionOptions& sessionOptions = session.options();
    session.print(
        options.wantsRows ? assetsWithRows(assets, sessionOptions) : assetsText(assets, sessionOptions));
    if (known > first + kPageSize && !sessionOptions.isJSON && !sessionOptions.isQuiet) {
        session.note(fmt::format("more follow: --page {}", options.page + 1));
    }
    return session.status();
}

ExitStatus listAssets(const ListOptions& options, Session& session) {
    if (!canReadLibrary(session)) {
        return session.status();
    }
    try {
        const PHFetchOptions fetchOptions = fetchOptionsOf(options);
        if (options.album.empty()) {
            return showPage(*PHAsset::fetchAssetsWithOptions(fetchOptions), options, session);
        }
        const PHAssetCollectionPtr album = albumNamed(options.album);
        if (!album) {
            return session.refuse(
                fmt::format("there is no album {}; exifcard albums lists them", options.album));
        }
        return showPage(*PHAsset::fetchAssetsInAssetCollection(*album, fetchOptions), options, session);
    } catch (const PredicateFormatException& fault) {
        return refuseCondition(options.condition, fault, session);
    } catch (const PlatformException& refusal) {
        session.refuse(fmt::format("--where: {}", reasonOf(refusal)));
        session.quote(
            "There are: creationDate, modificationDate, mediaType, mediaSubtypes, duration, pixelWidth,");
        session.quote(
            "pixelHeight, favorite, hidden, location, latitude, longitude, filename, title and rating.");
        return ExitStatus::WrongUsage;
    }
}

CommandAction declareList(CommandOptions& command) {
    auto options = std::make_shared<ListOptions>();
    command.value("--album", options->album, "Those of this album").named("NAME");
    command.flag("--favourites", options->wantsFavourites, "Favourites alone");
    command.value("--where", options->condition, "Those for which this holds, such as \"location != NULL\"")
        .named("PREDICATE");
    command.value("--sort", options->sort, "By which date, the newest first; default: created")
        .limitedTo({"created", "modified"});
    command.flag("--ascending", options->isAscending, "The oldest first");
    command.value("--page", options->page, "The next 50, and so on; default: 1")
        .named("N")
        .between(1, 100'000'000);
    command.flag("--rows", options->wantsRows, "With the metadata of each, as exifcard rows shows it");
    return [options](Session& session) { return listAssets(*options, session); };
}

} // namespace

const Command kListCommand = {
    .name = "list",
    .summary = "List the photos and videos of the library, 50 a page",
    .examples = R"(The newest ones:
  exifcard list
Favourites of one album, the oldest first:
  exifcard list --album Lisbon --favourites --ascending
Videos that were taken in 2024:
  exifcard list --where 'mediaType = 2 AND filename CONTAINS "2024"')",
    .declare = declareList,
};

} // namespace exifcard
