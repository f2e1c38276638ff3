#include "screens/ScreenTest.h"

#include "metadata/ExifInformation.h"
#include "platform/uikit/UICollectionView.h"

#include <QLayout>
#include <QTest>

namespace exifcard {

void WholeLibraryScreen::refresh() {
    ExifDataListViewController::refresh();
    dataSource->refreshAllPhotosWithFavoritesOnly(false, {}, [this] {
        ++completions;
        endRefreshing();
    });
}

void ScreenTest::addPhotos(std::size_t count, const std::string& sample) {
    CatalogueWriter writer(catalogue());
    for (const std::size_t end = _added + count; _added < end; ++_added) {
        const std::string name = std::to_string(_added) + ".jpg";
        std::filesystem::copy_file(std::filesystem::path(EXIFCARD_TEST_DATA) / sample, photos / name);
        writer.storeAsset(photo(name, {.creationDate = Date{1e9 + static_cast<double>(_added)}}));
    }
}

void ScreenTest::waitUntil(const std::function<bool()>& isSo) {
    EXPECT_TRUE(QTest::qWaitFor(isSo, 10'000));
}

void ScreenTest::waitUntilLoaded(ExifDataListViewController& screen) {
    waitUntil([&] { return !screen.dataSource->isLoading(); });
    bool isShown = false;
    screen.dataSource->reloadCollectionViewWithCompletionBlock([&] { isShown = true; });
    waitUntil([&] { return isShown; });
    screen.collectionView->layoutIfNeeded();
}

void ScreenTest::loadMore(ExifDataListViewController& screen) {
    screen.dataSource->loadMoreResultsWithCompletionBlock({});
    waitUntil([&] { return !screen.dataSource->isLoading(); });
}

std::shared_ptr<WholeLibraryScreen> ScreenTest::list(
    const std::shared_ptr<ListPresentation>& presentation, int width, int height) {
    auto screen = std::make_shared<WholeLibraryScreen>(presentation);
    screen->view().resize(width, height);
    screen->view().layout()->activate();
    waitUntil([&] { return !screen->dataSource->isLoading(); });
    return screen;
}

std::vector<std::string> ScreenTest::namesOf(const ExifDataListDataSource::Records& records) {
    std::vector<std::string> names;
    for (const auto& record : records) {
        names.push_back(record->phAsset ? nameOf(*record->phAsset) : "none");
    }
    return names;
}

} // namespace exifcard
