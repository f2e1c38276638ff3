#pragma once

#include "library/AssetLibrary.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ExifDataListViewController.h"
#include "screens/ListPresentation.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace exifcard {

/// A presentation that a test chooses.
class ChosenPresentation : public ListPresentation {
public:
    explicit ChosenPresentation(std::uint64_t viewType, bool showsDetails = false)
        : _viewType(viewType)
        , _showsDetails(showsDetails) {}

    std::uint64_t viewType() const override { return _viewType; }
    void setViewType(std::uint64_t viewType) override { _viewType = viewType; }
    std::uint64_t previousViewType() const override { return 1; }
    bool showsDetailsOnGrid() const override { return _showsDetails; }

private:
    std::uint64_t _viewType;
    bool _showsDetails;
};

/// A list of the whole library.
class WholeLibraryScreen : public ExifDataListViewController {
public:
    explicit WholeLibraryScreen(std::shared_ptr<ListPresentation> listPresentation)
        : ExifDataListViewController(std::move(listPresentation)) {}

    void refresh() override;
    void updateMapViewVisiblity() override { ++reloads; }

    int reloads = 0;
    int completions = 0; ///< Of its refreshes.
};

/// A library of small photos and lists of it.
class ScreenTest : public AssetLibrary {
protected:
    /// Photos named "0.jpg", "1.jpg" … of the sample, each a second younger than the one before, so that a
    /// list shows the last one first.
    void addPhotos(std::size_t count, const std::string& sample = "mwg.jpg");

    /// Runs the main queue and the toolkit until something is so, for at most ten seconds.
    static void waitUntil(const std::function<bool()>& isSo);
    /// Waits until nothing is read any more and what was read is shown.
    static void waitUntilLoaded(ExifDataListViewController& screen);
    /// Reads the next page, as its loading-more cell would.
    static void loadMore(ExifDataListViewController& screen);

    /// A loaded list of the whole library, in points.
    static std::shared_ptr<WholeLibraryScreen> list(
        const std::shared_ptr<ListPresentation>& presentation, int width = 375, int height = 600);
    static std::vector<std::string> namesOf(const ExifDataListDataSource::Records& records);

private:
    std::size_t _added = 0;
};

} // namespace exifcard
