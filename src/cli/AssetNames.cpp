#include "cli/AssetNames.h"

#include "cli/CommandOptions.h"
#include "cli/Session.h"
#include "platform/foundation/Predicate.h"
#include "platform/photos/AssetFiles.h"
#include "platform/photos/PhotoCatalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include <sys/stat.h>

namespace exifcard {
namespace {

constexpr std::size_t kFewestCharacters = 8;
constexpr std::size_t kLengthOfUUID = 36;
constexpr std::string_view kSuffix = "/L0/001";

std::string_view withoutSuffix(std::string_view text) {
    const bool isWhole = text.size() == kLengthOfUUID + kSuffix.size() && text.ends_with(kSuffix);
    return isWhole ? text.substr(0, kLengthOfUUID) : text;
}

constexpr char upperCase(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool isThere(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

} // namespace

bool isAssetName(const std::string& text) {
    const std::string_view letters = withoutSuffix(text);
    return letters.size() >= kFewestCharacters && letters.size() <= kLengthOfUUID &&
           letters.find_first_not_of("0123456789ABCDEFabcdef-") == std::string_view::npos;
}

PHAssetPtr assetNamed(const std::string& text) {
    if (!isAssetName(text)) {
        return nullptr;
    }
    std::string beginning(withoutSuffix(text));
    std::ranges::transform(beginning, beginning.begin(), upperCase);
    const PHFetchOptions options{
        .predicate = Predicate::predicateWithFormat("localIdentifier BEGINSWITH %@", {beginning}),
        .includeHiddenAssets = true,
        .includeAllBurstAssets = true,
        .fetchLimit = 2};
    const auto found = PHAsset::fetchAssetsWithOptions(options);
    return found->count() == 1 ? found->firstObject() : nullptr;
}

bool canReadLibrary(Session& session) {
    const auto error = PhotoCatalogue::shared()->error();
    if (error) {
        session.fail(*error);
    }
    return !error;
}

void declareAssets(CommandOptions& command, std::vector<std::string>& names) {
    command.value("ASSET", names, "Assets by their identifiers, or by enough of the beginning")
        .required()
        .named("ASSET");
}

std::vector<PHAssetPtr> assetsNamed(const std::vector<std::string>& names, Session& session) {
    std::vector<PHAssetPtr> assets;
    for (const std::string& name : names) {
        if (PHAssetPtr asset = assetNamed(name)) {
            assets.push_back(std::move(asset));
        } else {
            session.fail(
                fmt::format("{} names no asset of the library; exifcard list shows their names", name));
        }
    }
    return assets;
}

std::optional<std::string> fileOfAsset(const PHAsset& asset) {
    const auto files = filesOfAsset(*PhotoCatalogue::shared(), asset.localIdentifier);
    return files.empty() ? std::nullopt : files.front().localFile();
}

NamedFile fileNamed(const std::string& name) {
    if (!isAssetName(name) || isThere(name)) {
        return {.path = name};
    }
    if (auto error = PhotoCatalogue::shared()->error()) { // Asked first: a failed fetch would log it too.
        return {.path = name, .fault = std::move(error)};
    }
    const PHAssetPtr asset = assetNamed(name);
    return {.path = asset ? fileOfAsset(*asset).value_or(name) : name};
}

} // namespace exifcard
