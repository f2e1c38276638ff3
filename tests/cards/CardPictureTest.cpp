#include "cards/CardPicture.h"

#include "cards/CardLibrary.h"

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

} // namespace
} // namespace exifcard
