#include "cards/CardPicture.h"

#include "cards/CardLibrary.h"
#include "cards/ExifGridCollectionViewCell.h"
#include "cards/PlaceholderView.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/photos/AssetByteSource.h"

#include <atomic>

namespace exifcard {
namespace {

class CardPictureTest : public CardLibrary {};

TEST_F(CardPictureTest, DecodesNoFileOf51MebibytesOrMore) {
    constexpr std::size_t kMebibyte = 1048576;
    EXPECT_FALSE(isTooLargeToDecode(Data::fromBytes(std::vector<std::uint8_t>(51 * kMebibyte - 1))));
    EXPECT_TRUE(isTooLargeToDecode(Data::fromBytes(std::vector<std::uint8_t>(51 * kMebibyte))));
    EXPECT_EQ(sizeOfHugePicture(), (CGSize{844 * 3, 844 * 3}));
}

TEST_F(CardPictureTest, AsksTheNetworkWhereTheUserOrADownloadSaysSo) {
    const auto record = ExifInformation::init();
    const auto& settings = PersistanceManager::sharedInstance();
    for (const bool isForced : {false, true}) {
        record->hasForceDownloadedImageResultFromCloud = isForced;
        const bool isAllowed = settings.allowNetworkAccessToDownloadPhotos() || isForced;
        const auto sized = optionsOfSizedPicture(*record);
        EXPECT_EQ(sized.networkAccessAllowed, isAllowed);
        EXPECT_EQ(sized.deliveryMode, isForced ? PHImageRequestOptionsDeliveryMode::HighQualityFormat
                                               : PHImageRequestOptionsDeliveryMode::Opportunistic);
        EXPECT_EQ(optionsOfPictureData(*record).networkAccessAllowed, isAllowed);
    }
}

TEST_F(CardPictureTest, ScalesAPictureToFitAndTellsWhatIsNone) {
    const auto bytesOf = [](const std::string& sample) {
        std::string path = EXIFCARD_TEST_DATA "/";
        path += sample;
        return Data::mappedFile(path).value();
    };
    const auto scaled = pictureScaledToFit(bytesOf("canon-6d-elephants.jpg"), {50, 50});
    ASSERT_TRUE(scaled.has_value());
    ASSERT_NE(*scaled, nullptr);
    EXPECT_LE((*scaled)->storedWidth(), 150);
    EXPECT_LE((*scaled)->storedHeight(), 150);
    EXPECT_EQ(pictureScaledToFit(bytesOf(kBroken), {50, 50}), std::nullopt);
}

TEST_F(CardPictureTest, NamesAnAssetByItsPhotoAndElseItsVideo) {
    EXPECT_EQ(originalFilenameOf(add(kCanon)), kCanon);
    EXPECT_EQ(
        originalFilenameOf(add("videos/sample.3gp", {.mediaType = PHAssetMediaType::Video})), "sample.3gp");
    EXPECT_EQ(originalFilenameOf(nullptr), "");
}

/// A file that is here; counts how often it is asked for from elsewhere.
class CountingSource final : public AssetByteSource {
public:
    explicit CountingSource(std::string path) : _path(std::move(path)) {}
    std::optional<std::string> localFile(const AssetFile& /*file*/) const override { return _path; }
    bool isElsewhere(const AssetFile& /*file*/) const override { return true; }
    std::optional<PHError> bring(const AssetFile& /*file*/, const Progress& /*progress*/) override {
        ++brought;
        return std::nullopt;
    }

    std::atomic<int> brought = 0;

private:
    const std::string _path;
};

TEST_F(CardPictureTest, LetsTheLibraryMakeThePictureOfAHugeFileLargerThanTheTile) {
    constexpr std::uintmax_t kMebibyte = 1048576;
    const auto file = photos / "huge.jpg";
    std::filesystem::copy_file(EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg", file);
    const auto source = std::make_shared<CountingSource>(file.string());
    const auto record = recordOf(Library::addElsewhere(source, "canon-6d-elephants.jpg"));
    for (const bool isHuge : {false, true}) {
        SCOPED_TRACE(isHuge);
        std::filesystem::resize_file(file, (isHuge ? 51 : 50) * kMebibyte); // Zeros after the picture.
        const auto cell = makeCell();
        cell->setShouldUseFullResolutionImage(true);
        cell->setExifInfo(record, [&cell] { return cell.get(); });
        waitUntil([&cell] { return picture(*cell) != nullptr; });
        EXPECT_EQ(picture(*cell)->storedWidth() == 497, isHuge) << picture(*cell)->storedWidth();
        record->cachedThumbNailImage = nullptr;
    }
    EXPECT_EQ(source->brought, 0);
}

TEST_F(CardPictureTest, ShowsTheFileOfARecordWithoutAsset) {
    const auto record = ExifInformation::init();
    record->imageFilePath = EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg";
    const auto cell = makeCell(record);
    waitUntil([&cell] { return picture(*cell) != nullptr; });
    EXPECT_EQ(picture(*cell)->size(), (CGSize{497, 331}));
}

TEST_F(CardPictureTest, TheThumbnailOfARecordOutweighsItsFile) {
    const auto record = ExifInformation::init();
    record->imageFilePath = EXIFCARD_TEST_DATA "/mwg.jpg"; // There far sooner than the other one.
    record->thumbNailImage =
        imageWithData(Data::mappedFile(EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg").value());
    const auto cell = makeCell(record);
    waitUntil([&cell] { return picture(*cell) != nullptr; });
    EXPECT_EQ(picture(*cell)->size(), (CGSize{119, 76}));
}

TEST_F(CardPictureTest, SaysOfAPictureFetchedAheadThatItIsNone) {
    const auto record =
        recordOf(add("apple-iphone15pro-subsec-header.heic", {.mediaType = PHAssetMediaType::Image}));
    record->prefetchAsset();
    waitUntil([&record] { return record->cachedThumbNailImage != nullptr; });
    const auto cell = makeCell(record);
    cell->show();
    waitUntil([&cell] { return cell->findChild<PlaceholderView*>() != nullptr; });
    EXPECT_EQ(record->cachedThumbNailImage, nullptr);
}

TEST_F(CardPictureTest, FillsAViewThatWasNotShownYetWithTheThumbnailOfARecord) {
    const auto record = ExifInformation::init();
    record->thumbNailImage =
        imageWithData(Data::mappedFile(EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg").value());
    Cell tile;
    ExifGridCollectionViewCell plain;
    for (ExifDataCollectionListViewCell* const cell :
        std::initializer_list<ExifDataCollectionListViewCell*>{&tile, &plain}) {
        cell->resize(187, 199);
        cell->setExifInfo(record, nullptr);
        waitUntil([cell] { return picture(*cell) != nullptr; });
    }
    EXPECT_EQ(picture(tile)->size(), (CGSize{185, 142}));
    EXPECT_EQ(picture(plain)->size(), (CGSize{187, 199}));
}

} // namespace
} // namespace exifcard
