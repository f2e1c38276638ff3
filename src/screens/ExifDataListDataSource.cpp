#include "screens/ExifDataListDataSource.h"

#include "appearance/uikit/Apperance+Views.h"
#include "cards/ExifGridWithDetailsCollectionViewCell.h"
#include "cards/LoadingMoreCollectionViewCell.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/UICollectionView.h"
#include "screens/ExifDataListViewController.h"
#include "screens/ListPresentation.h"
#include "screens/ListViewTypes.h"
#include "settings/SettingsNotifications.h"

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

constexpr std::size_t kPageOfCards = 50;
constexpr std::size_t kPageOfTiles = 100;

} // namespace

class ExifDataListDataSource::Token {};

std::shared_ptr<ExifDataListDataSource> ExifDataListDataSource::init(
    std::shared_ptr<const ListPresentation> presentation) {
    auto dataSource = std::make_shared<ExifDataListDataSource>(Token(), std::move(presentation));
    dataSource->setupObservers();
    return dataSource;
}

ExifDataListDataSource::ExifDataListDataSource(
    Token /*token*/, std::shared_ptr<const ListPresentation> presentation)
    : _presentation(std::move(presentation)) {
}

ExifDataListDataSource::~ExifDataListDataSource() {
    removeObservers();
}

void ExifDataListDataSource::setupObservers() {
    observe(kPersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent,
        &ExifDataListDataSource::filterLoadedRecords);
    observe(
        kPersistanceManagerDateFormatOrPreferenceChangedEvent, &ExifDataListDataSource::reloadCollectionView);
    observe(kExifDataListNeedRefresh, &ExifDataListDataSource::reloadCollectionView);
}

void ExifDataListDataSource::removeObservers() {
    // Intended: ends no subscription; each one ends by itself with the list.
}

void ExifDataListDataSource::observe(std::string_view notification, Change change) {
    const auto apply = [weakSelf = weak_from_this(), change] {
        if (const auto self = weakSelf.lock()) {
            ((*self).*change)();
        }
    };
    _observations.push_back(NotificationCenter::defaultCenter().addObserver(
        notification, /*object=*/nullptr, [apply](const Notification&) {
            // Another program's change is told on another thread, but the list belongs to the main one.
            MainQueue::isMainThread() ? apply() : DispatchQueue::mainQueue().async(apply);
        }));
}

void ExifDataListDataSource::filterLoadedRecords() {
    exifDataItemsArray = ExifManager::exifDataItemsArrayAndFilterFromExifArray(unFilteredExifDataItemsArray);
    reloadCollectionView();
    popFromDetailViewControllers();
}

void ExifDataListDataSource::reloadCollectionView() {
    debugLog("reloadCollectionView from somewhere");
    reloadCollectionViewWithCompletionBlock({});
}

void ExifDataListDataSource::reloadCollectionViewWithCompletionBlock(CompletionBlock completionBlock) {
    DispatchQueue::mainQueue().async(
        [weakSelf = weak_from_this(), completionBlock = std::move(completionBlock)] {
            if (const auto self = weakSelf.lock()) {
                self->reloadNow();
            }
            if (completionBlock) {
                completionBlock();
            }
        });
}

void ExifDataListDataSource::reloadNow() {
    if (collectionView) {
        collectionView->collectionViewLayout().invalidateLayout();
        collectionView->reloadData();
    }
    if (const auto parent = weakParentViewController.lock()) {
        parent->updateMapViewVisiblity();
        parent->updateEmptyState();
    }
}

void ExifDataListDataSource::replaceRecords(Records records) {
    unFilteredExifDataItemsArray = std::move(records);
    exifDataItemsArray = ExifManager::exifDataItemsArrayAndFilterFromExifArray(unFilteredExifDataItemsArray);
    reloadNow();
    if (collectionView && collectionView->isVisible()) {
        collectionView->layoutIfNeeded(); // No tap comes between the two.
    }
}

std::optional<std::string> ExifDataListDataSource::modelIdentifierForElementAtIndexPath(
    IndexPath indexPath) const {
    if (indexPath.section != kPhotosSection || indexPath.item >= exifDataItemsArray.size()) {
        return std::nullopt;
    }
    const auto& asset = exifDataItemsArray[indexPath.item]->phAsset;
    return asset ? std::optional(asset->localIdentifier) : std::nullopt;
}

std::optional<IndexPath> ExifDataListDataSource::indexPathForElementWithModelIdentifier(
    const std::string& identifier) const {
    const auto found = std::ranges::find_if(exifDataItemsArray, [&](const Record& record) {
        return record->phAsset && record->phAsset->localIdentifier == identifier;
    });
    if (found == exifDataItemsArray.end()) {
        return std::nullopt;
    }
    return IndexPath{kPhotosSection, static_cast<std::size_t>(found - exifDataItemsArray.begin())};
}

std::size_t ExifDataListDataSource::pageSize() const {
    return isGrid(_presentation->viewType()) ? kPageOfTiles : kPageOfCards;
}

std::size_t ExifDataListDataSource::numberOfSectionsInCollectionView(UICollectionView& /*collectionView*/) {
    return hasMoreExifObjects ? 2 : 1;
}

std::size_t ExifDataListDataSource::numberOfItemsInSection(
    UICollectionView& /*collectionView*/, std::size_t section) {
    return section == kLoadingMoreSection ? 1 : exifDataItemsArray.size();
}

UICollectionViewCell* ExifDataListDataSource::cellForItemAtIndexPath(
    UICollectionView& view, IndexPath indexPath) {
    const auto dequeue = [&](std::string_view identifier) {
        return &view.dequeueReusableCellWithReuseIdentifier(identifier, indexPath);
    };
    if (indexPath.section == kLoadingMoreSection) {
        auto* const cell = dequeue(kLoadingMoreID);
        if (auto* const loading = dynamic_cast<LoadingMoreCollectionViewCell*>(cell)) {
            loading->startAnimatingLoading();
        }
        return cell;
    }
    const auto viewType = _presentation->viewType();
    if (!isGrid(viewType) && !isListOfCards(viewType)) {
        return nullptr;
    }
    const auto tileID = _presentation->showsDetailsOnGrid() ? kTileWithDetailsID : kTileID;
    auto* const cell = dequeue(isGrid(viewType) ? tileID : kCardID);
    if (auto* const card = dynamic_cast<ExifDataCollectionListViewCell*>(cell)) {
        card->setIndexPath(indexPath);
        if (isListOfCards(viewType)) {
            card->setShouldDisplayAlbumName(shouldDisplayAlbumName);
            setAppearanceOnView(*card);
        }
    }
    return cell;
}

UICollectionReusableView* ExifDataListDataSource::viewForSupplementaryElementOfKind(
    UICollectionView& view, std::string_view kind, IndexPath indexPath) {
    const bool isKnown =
        kind == kUICollectionElementKindSectionFooter || kind == kUICollectionElementKindSectionHeader;
    return isKnown ? &view.dequeueReusableSupplementaryViewOfKind(kind, kReusableViewID, indexPath) : nullptr;
}

CGSize ExifDataListDataSource::referenceSizeForHeaderInSection(std::size_t /*section*/) const {
    return {0, 0};
}

void ExifDataListDataSource::prefetchItemsAtIndexPaths(
    UICollectionView& /*collectionView*/, std::span<const IndexPath> indexPaths) {
    for (const IndexPath& indexPath : indexPaths) {
        debugLog("PREFETCH_ %ld", {indexPath.item});
        if (indexPath.item < exifDataItemsArray.size()) {
            _prefetched[indexPath.item] = exifDataItemsArray[indexPath.item];
            exifDataItemsArray[indexPath.item]->prefetchAsset();
        }
    }
}

void ExifDataListDataSource::cancelPrefetchingForItemsAtIndexPaths(
    UICollectionView& /*collectionView*/, std::span<const IndexPath> indexPaths) {
    for (const IndexPath& indexPath : indexPaths) {
        // Another record may stand there by now.
        const auto told = _prefetched.extract(indexPath.item);
        if (const Record prefetched = told ? told.mapped().lock() : nullptr) {
            prefetched->cancelPrefetch();
        } else if (indexPath.item < exifDataItemsArray.size()) {
            exifDataItemsArray[indexPath.item]->cancelPrefetch();
        }
    }
}

} // namespace exifcard
