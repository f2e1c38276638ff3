#include "library/ExifManager.h"

#include "library/CombinedProgress.h"
#include "library/RecordLookup.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MappingBatch.h"
#include "platform/foundation/Predicate.h"
#include "settings/PersistanceManager.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace exifcard {
namespace {

using Record = ExifManager::Record;
using Records = ExifManager::Records;
using Clock = std::chrono::steady_clock;

/// As many assets as are read at the same time.
constexpr std::size_t kChunkLength = 300;
/// Intended: what comes behind these is left out.
constexpr std::size_t kMostAssets = 1000;

constexpr std::uint64_t kOnlyWithLocation = 1;
constexpr std::uint64_t kOnlyWithoutLocation = 2;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Null for an index beyond the end, and for what has left the library since.
PHAssetPtr assetAt(const PHAssetFetchResult& fetchResult, std::size_t index) {
    return fetchResult.countUpTo(index + 1) > index ? fetchResult.objectAtIndex(index) : nullptr;
}

/// The records of a chunk as they come; used on the main queue alone.
struct Chunk {
    std::size_t length = 0;
    ExifManager::RecordsHandler completionBlock;
    Records records;

    void add(const Record& record) {
        records.push_back(record);
        debugLog("Check if %ld == %ld", {records.size(), length});
        if (records.size() == length) {
            debugLog("Success in Checking %ld == %ld", {records.size(), length});
            completionBlock(records);
        }
    }
};

void buildChunk(
    const PHAssetFetchResult& fetchResult, AssetRange range, const std::shared_ptr<Chunk>& chunk) {
    debugLog("RANGE {%ld, %ld}", {range.location, range.length});
    debugLog("EnumerationGoingToStart");
    for (std::size_t index = range.location; index < range.location + range.length; ++index) {
        debugLog("exifInformationFromPHAssett %ld", {index});
        ExifManager::exifInformationFromPHAssettWithCompletionBlock(
            assetAt(fetchResult, index), [chunk](const Record& record) { chunk->add(record); });
    }
}

/// What is absent counts as earlier than any date.
void sortByDateCreated(Records& records, bool latestFirst) {
    std::ranges::stable_sort(records, [latestFirst](const Record& left, const Record& right) {
        return latestFirst ? right->dateCreated < left->dateCreated : left->dateCreated < right->dateCreated;
    });
}

bool isShown(const ExifInformation& record, std::uint64_t locationFilter, bool hidesWithoutExif) {
    const bool isWrongPlace = (locationFilter == kOnlyWithLocation && !record.location) ||
                              (locationFilter == kOnlyWithoutLocation && record.location);
    const bool isWithoutExif = !record.exifInfoAvailable && !record.imageResultIsInCloud;
    return !isWrongPlace && !(hidesWithoutExif && isWithoutExif);
}

/// All of them for a null predicate.
Records matching(Records records, const PredicatePtr& predicate) {
    if (predicate) {
        std::erase_if(records, [&predicate](const Record& record) {
            return !predicate->evaluateWithObject(keyValueLookupOfRecord(*record));
        });
    }
    return records;
}

/// Null for an empty text; nothing for one that is no predicate.
std::optional<PredicatePtr> predicateOfText(std::string_view text) {
    if (text.empty()) {
        return nullptr;
    }
    try {
        return Predicate::predicateWithFormat(text);
    } catch (const PredicateFormatException& exception) {
        errorLog(exception.what());
        return std::nullopt;
    }
}

} // namespace

void ExifManager::exifDataArrayInPHFetchResults(
    const PHAssetFetchResultPtr& fetchResult, AssetRange range, const RecordsHandler& completionBlock) {
    exifDataArrayInPHFetchResults(fetchResult, range, {}, completionBlock);
}

void ExifManager::exifDataArrayInPHFetchResults(const PHAssetFetchResultPtr& fetchResult,
    AssetRange range,
    const BatchProgressHandler& progressHandler,
    const RecordsHandler& completionBlock) {
    const auto start = Clock::now();
    Records records;
    CombinedProgress progress(range.length);
    const MappingBatch::Use use;
    debugLog("ENUMERATE_1  = %f Range = %ld %ld", {secondsSince(start), range.location, range.length});
    for (std::size_t slot = 0; slot < range.length; ++slot) {
        const auto asset = assetAt(*fetchResult, range.location + slot);
        if (!asset) {
            debugLog("NIL ASSET");
        }
        const auto tellProgress = [&, slot](double fraction, const auto&, bool&, const auto&, bool) {
            const auto state = progress.update(slot, fraction);
            progressHandler(state.isDownloading, state.mean);
        };
        records.push_back(progressHandler ? exifInformationFromPHAssett(asset, tellProgress)
                                          : exifInformationFromPHAssett(asset));
    }
    debugLog("ENUMERATE_2_FINISHED %ld ITEMS, EXECUTION TIME  = %f", {records.size(), secondsSince(start)});
    completionBlock(records);
}

void ExifManager::allExifDataArrayInPHFetchResult(const PHAssetFetchResultPtr& fetchResult,
    std::string_view predicates,
    std::uint64_t /*sortBy*/,
    bool ascending,
    RecordsHandler completionBlock) {
    const auto predicate = predicateOfText(predicates);
    const std::size_t count = predicate ? fetchResult->countUpTo(kMostAssets) : 0;
    _exifDataArrayInPHFetchResults(fetchResult, std::make_shared<Records>(), {0, count},
        [predicate, ascending, completionBlock = std::move(completionBlock)](const Records& all) {
            Records records = predicate ? matching(all, *predicate) : Records();
            sortByDateCreated(records, ascending);
            completionBlock(records);
        });
}

void ExifManager::_exifDataArrayInPHFetchResults(const PHAssetFetchResultPtr& fetchResult,
    const std::shared_ptr<Records>& exifDataArray,
    AssetRange range,
    RecordsHandler completionBlock) {
    debugLog("Method _exifDataArrayInPHFetchResults RANGE = {%ld, %ld}", {range.location, range.length});
    const std::size_t gathered = exifDataArray->size();
    const std::size_t missing = gathered > range.length ? range.length : range.length - gathered;
    const AssetRange chunk{range.location, std::min(missing, kChunkLength)};
    _exifDataArrayInPHFetchResults(
        fetchResult, chunk, [=, completionBlock = std::move(completionBlock)](const Records& records) {
            exifDataArray->insert(exifDataArray->end(), records.begin(), records.end());
            if (exifDataArray->size() < range.length) {
                debugLog("%ld != %ld", {exifDataArray->size(), range.length});
                _exifDataArrayInPHFetchResults(
                    fetchResult, exifDataArray, {exifDataArray->size(), range.length}, completionBlock);
                return;
            }
            debugLog("Completed %ld items", {exifDataArray->size()});
            completionBlock(*exifDataArray);
        });
}

void ExifManager::_exifDataArrayInPHFetchResults(
    const PHAssetFetchResultPtr& fetchResult, AssetRange range, RecordsHandler completionBlock) {
    if (range.length == 0) {
        DispatchQueue::mainQueue().async(
            [completionBlock = std::move(completionBlock)] { completionBlock({}); });
        return;
    }
    const auto chunk = std::make_shared<Chunk>(Chunk{range.length, std::move(completionBlock), {}});
    DispatchQueue::globalQueue().async(
        [fetchResult, range, chunk] { buildChunk(*fetchResult, range, chunk); });
}

Records ExifManager::exifDataItemsArrayAndFilterFromExifArray(const Records& records) {
    auto& settings = PersistanceManager::sharedInstance();
    const auto locationFilter = settings.locationFilter();
    const bool hidesWithoutExif = settings.shouldHidePhotosWithoutExifDetails();
    Records shown;
    std::ranges::copy_if(records, std::back_inserter(shown),
        [&](const Record& record) { return isShown(*record, locationFilter, hidesWithoutExif); });
    return shown;
}

} // namespace exifcard
