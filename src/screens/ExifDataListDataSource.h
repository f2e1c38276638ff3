#pragma once

#include "library/ExifManager.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/uikit/UICollectionViewDelegates.h"

#include <QPointer>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

class ExifDataListViewController;
class ListPresentation;
class MBProgressHUD;

/// What a photo list shows: the records of a fetch result, read a page at a time and filtered as the settings
/// say. Keeps the list up to date with the settings and tells how far a page is.
///
/// Everything happens on the main queue; pages are read and the library is asked on others. Whatever lands
/// after the list has gone does nothing, and what lands after a newer refresh has begun is dropped.
class ExifDataListDataSource : public UICollectionViewDataSource,
                               public UICollectionViewDataSourcePrefetching,
                               public std::enable_shared_from_this<ExifDataListDataSource> {
public:
    using Record = ExifManager::Record;
    using Records = ExifManager::Records;
    using CompletionBlock = std::function<void()>; ///< May be empty; called once, on the main queue.
    using ProgressBlock = std::function<void(float progress)>;

    /// Empty, and observing the settings.
    static std::shared_ptr<ExifDataListDataSource> init(std::shared_ptr<const ListPresentation> presentation);

    class Token;
    explicit ExifDataListDataSource(Token, std::shared_ptr<const ListPresentation> presentation);
    ~ExifDataListDataSource() override;

    bool hasMoreExifObjects = false; ///< The last page came back full: shows the loading-more section.
    bool shouldDisplayAlbumName = false;
    bool isFavoritesDataSource = false; ///< For the owner.
    bool isLoadingMoreExifObjects = false;
    Records exifDataItemsArray;           ///< As shown: `unFilteredExifDataItemsArray`, filtered.
    Records unFilteredExifDataItemsArray; ///< All that was read, in the order of the fetch.
    PHAssetCollectionPtr assetCollection; ///< For the owner; null for no album.
    QPointer<UICollectionView> collectionView;
    std::weak_ptr<ExifDataListViewController> weakParentViewController;
    PHAssetFetchResultPtr fetchResult; ///< What is paged through; null before the first refresh.
    QPointer<MBProgressHUD> firstLoadingSpinnerHUD;

    // What to open once photos are there; empty, or null, for nothing.
    std::string onLoadOpenPHAssetID;
    std::vector<std::string> onLoadOpenPHAssetIDsArray;
    std::size_t onLoadOpenPHAssetIDsArrayCurrentIndexPosition = 0;
    Record onLoadOpenEXIFInformation;

    void setupObservers();
    void removeObservers();

    /// Begins anew with the whole library.
    /// @param progressBlock  Intended: never called.
    void refreshAllPhotosWithFavoritesOnly(
        bool favoritesOnly, const ProgressBlock& progressBlock, CompletionBlock completionBlock);
    /// The same with one album.
    void refreshAndLoadPhotosFromPHCollection(const PHAssetCollectionPtr& album,
        bool favoritesOnly,
        const ProgressBlock& progressBlock,
        CompletionBlock completionBlock);
    /// Reads the next page. While one is being read the completion comes at once.
    void loadMoreResultsWithCompletionBlock(CompletionBlock completionBlock);
    /// Begins anew with another result, but shows the list as it is until the first page is there.
    void replaceFetchResult(PHAssetFetchResultPtr replacement);
    /// Whether a page or a query is under way.
    bool isLoading() const { return isLoadingMoreExifObjects || _isFetching; }
    /// Changes whenever the list begins anew.
    std::uint64_t generation() const { return _generation; }

    /// @param progress  0 … 1.
    void updateProgressOnLoading(float progress, bool containsICloud);
    static std::string messageForProgress(float progress, bool containsICloud);
    void reloadCollectionView();
    void reloadCollectionViewWithCompletionBlock(CompletionBlock completionBlock);
    /// Shows these, filtered, in place of all that was read; the list is laid out when this returns.
    void replaceRecords(Records records);
    /// Filters anew what was read.
    void filterLoadedRecords();
    void popFromDetailViewControllers();
    void checkAndGoToExifDetailsScreenForPHAssetID();
    void checkAndGoToExifDetailsScreenForEXIFInfo();

    std::size_t numberOfSectionsInCollectionView(UICollectionView& collectionView) override;
    std::size_t numberOfItemsInSection(UICollectionView& collectionView, std::size_t section) override;
    UICollectionViewCell* cellForItemAtIndexPath(
        UICollectionView& collectionView, IndexPath indexPath) override;
    UICollectionReusableView* viewForSupplementaryElementOfKind(
        UICollectionView& collectionView, std::string_view kind, IndexPath indexPath) override;
    CGSize referenceSizeForHeaderInSection(std::size_t section) const;
    /// A photo's local identifier.
    std::optional<std::string> modelIdentifierForElementAtIndexPath(IndexPath indexPath) const override;
    std::optional<IndexPath> indexPathForElementWithModelIdentifier(
        const std::string& identifier) const override;
    void prefetchItemsAtIndexPaths(
        UICollectionView& collectionView, std::span<const IndexPath> indexPaths) override;
    void cancelPrefetchingForItemsAtIndexPaths(
        UICollectionView& collectionView, std::span<const IndexPath> indexPaths) override;

private:
    struct Page;
    using Fetch = std::function<PHAssetFetchResultPtr()>;
    using Change = void (ExifDataListDataSource::*)();

    void observe(std::string_view notification, Change change);
    void refresh(Fetch fetch, CompletionBlock completionBlock);
    void fetched(PHAssetFetchResultPtr result, std::uint64_t generation, CompletionBlock completionBlock);
    void reloadNow();
    void showFirstLoadingSpinnerHUD();
    void read(const Page& page);
    void pageArrived(const Page& page, const Records& records);
    void take(const Page& page, const Records& records);
    void openDetailScreen(Records records, std::size_t position);
    void findRecordsAndOpenDetailScreen(std::vector<std::string> identifiers, std::size_t position);
    std::size_t pageSize() const;

    const std::shared_ptr<const ListPresentation> _presentation;
    std::vector<NotificationCenter::Observation> _observations;
    std::uint64_t _generation = 0;
    bool _isFetching = false;
    std::map<std::size_t, std::weak_ptr<ExifInformation>> _prefetched; ///< By the item at that time.
};

} // namespace exifcard
