#include "sending/PhotoSending.h"

#include "library/ExifManager.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIScreen.h"
#include "sending/Conversations.h"
#include "sending/PresentationStyleHolder.h"
#include "settings/PersistanceManager.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace exifcard {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

constexpr CLLocationCoordinate2D kStockholm = {59.3325, 18.0649};
constexpr CLLocationCoordinate2D kOpenSea = {-48.876, -123.393};

std::optional<Data> dataOfPhoto(const std::string& name) {
    return Data::mappedFile(EXIFCARD_TEST_DATA "/" + name);
}

Data grayJPEG(int width, int height) {
    auto bitmap = std::make_shared<Bitmap>(
        Bitmap{.width = width, .height = height, .channels = 1, .pixels = {}, .iccProfile = {}});
    bitmap->pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 128);
    return UIImageJPEGRepresentation(*UIImage::imageWithBitmap(bitmap), 0.5);
}

std::shared_ptr<ExifInformation> recordWithPlace(const std::optional<CLLocationCoordinate2D>& coordinate) {
    auto record = ExifInformation::init();
    if (coordinate) {
        record->location = CLLocation{.coordinate = *coordinate};
    }
    return record;
}

/// A host that shows the extension in one style and notes what it is asked for.
class Host : public PresentationStyleHolder {
public:
    explicit Host(MSMessagesAppPresentationStyle style) : _style(style) {}
    MSMessagesAppPresentationStyle presentationStyle() const override { return _style; }
    void requestPresentationStyle(MSMessagesAppPresentationStyle style) override {
        requests.push_back(style);
    }

    std::vector<MSMessagesAppPresentationStyle> requests;

private:
    MSMessagesAppPresentationStyle _style;
};

class PhotoSendingTest : public testing::Test {
protected:
    void SetUp() override { PersistanceManager::forgetSharedInstance(); }

    /// Sends and waits until everything is in the input field.
    PhotoSendingResult send(const std::shared_ptr<ExifInformation>& record,
        const std::optional<Data>& imageData,
        const std::shared_ptr<PresentationStyleHolder>& presentation = nullptr) {
        PhotoSendingResult told;
        PhotoSending(conversationNamed("Ada"), presentation)
            .sendPhotoWithEXIF(
                record,
                [imageData](const PhotoSending::ImageDataHandler& handler) {
                    DispatchQueue::globalQueue().async([imageData, handler] { handler(imageData); });
                },
                [&told](const PhotoSendingResult& result) {
                    told = result;
                    DispatchQueue::mainQueue().async([] { MainRunLoop::stop(); });
                });
        MainRunLoop::runUntilStopped();
        return told;
    }

    /// The bubble in the input field.
    static ConversationEntry bubble() {
        const auto content = ConversationStore().content("Ada");
        EXPECT_EQ(content.error, std::nullopt);
        return content.entries.empty() ? ConversationEntry() : content.entries.front();
    }

    TemporaryHome _home;
};

TEST_F(PhotoSendingTest, InsertsTheTextAfterTheBubbleOnlyIfTheUserWantsIt) {
    const auto data = dataOfPhoto("synthetic-southwest.jpg");
    const auto record = ExifManager::exifInformationFromNSData(data);
    PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(false);
    const PhotoSendingResult without = send(record, data);
    EXPECT_EQ(without.text, std::nullopt);
    EXPECT_EQ(ConversationStore().content("Ada").entries.size(), 1U);

    PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(true);
    const PhotoSendingResult with = send(record, data);
    EXPECT_EQ(with.error, std::nullopt);
    EXPECT_THAT(with.text.value_or(""), HasSubstr("ISO"));
    const auto entries = ConversationStore().content("Ada").entries;
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].kind, ConversationEntry::Kind::Message);
    EXPECT_EQ(entries[0].state, ConversationEntry::State::Pending);
    EXPECT_EQ(entries[1].text, with.text);
}

TEST_F(PhotoSendingTest, NamesThePlaceWhereARecordHasALocationAndNoName) {
    struct Case {
        std::optional<CLLocationCoordinate2D> coordinate;
        std::optional<std::string> name;
        std::string title;
    };
    const Case cases[] = {
        {kStockholm, std::nullopt, "Stockholm,Sweden"},
        {kStockholm, "", "Stockholm,Sweden"},
        {kStockholm, "My place", "My place"},
        {kOpenSea, std::nullopt, "none"},
        {std::nullopt, std::nullopt, "none"},
        {CLLocationCoordinate2D{-180, -180}, std::nullopt, "none"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.title);
        const auto record = recordWithPlace(c.coordinate);
        record->locationName = c.name;
        send(record, std::nullopt);
        EXPECT_THAT(bubble().message.layout.imageTitle.value_or("none"), EndsWith(c.title));
        EXPECT_THAT(record->locationName.value_or("none"), EndsWith(c.title));
    }
}

TEST_F(PhotoSendingTest, ShowsThePhotoUprightWithinItsLimits) {
    struct Case {
        Data data;
        double screenScale;
        int width;
        int height;
        std::string separator;
    };
    const Case cases[] = {
        {dataOfPhoto("apple-iphone4s-lens.jpg").value(), 3, 102, 205, "   "},
        {dataOfPhoto("synthetic-southwest.jpg").value(), 3, 900, 600, "        "},
        {grayJPEG(1200, 2000), 3, 1200, 2000, "   "},
        {grayJPEG(1200, 2000), 1, 540, 900, "   "},
        {grayJPEG(2000, 1200), 1, 900, 540, "        "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << " x " << c.height);
        UIScreen::setMainScreen({.sizeInPoints = {390, 844}, .scale = c.screenScale});
        send(ExifInformation::init(), c.data);
        const ConversationEntry sent = bubble();
        EXPECT_THAT(
            sent.message.layout.caption.value_or(""), HasSubstr(c.separator + "ISO 0" + c.separator + "0mm"));
        ASSERT_TRUE(sent.picture);
        EXPECT_EQ(sent.picture->width, c.width);
        EXPECT_EQ(sent.picture->height, c.height);
        const auto stored = ExifManager::metadataFromImageURL(URL::fileURLWithPath(sent.picture->file));
        ASSERT_TRUE(stored);
        EXPECT_EQ(stored->objectForKey("PixelWidth").integerValue(), c.width);
        EXPECT_EQ(stored->objectForKey("PixelHeight").integerValue(), c.height);
        EXPECT_LE(stored->objectForKey("Orientation").integerValue(), 1);
    }
    UIScreen::setMainScreen({});
}

TEST_F(PhotoSendingTest, KeepsTheColoursOfAPictureAndNothingElseOfIt) {
    const std::pair<const char*, Value> cases[] = {
        {"pixels/corners-p3.jpg", "sP3C"}, {"synthetic-southwest.jpg", "sRGB IEC61966-2.1"}};
    for (const auto& [name, profile] : cases) {
        SCOPED_TRACE(name);
        send(ExifInformation::init(), dataOfPhoto(name));
        ASSERT_TRUE(bubble().picture);
        const auto stored =
            ExifManager::exifinformationFromNSURL(URL::fileURLWithPath(bubble().picture->file));
        EXPECT_EQ(stored->metaDataDictionary->objectForKey("ProfileName"), profile);
        EXPECT_FALSE(stored->location);
        EXPECT_FALSE(stored->exifInfoAvailable);
        EXPECT_EQ(stored->iptcDic, nullptr);
    }
}

TEST_F(PhotoSendingTest, SendsTheTextsWhereThereIsNoPicture) {
    for (const std::optional<Data>& data :
        {std::optional<Data>(), std::optional(Data::fromText("no picture"))}) {
        const PhotoSendingResult result = send(recordWithPlace(kStockholm), data);
        EXPECT_EQ(result.error, std::nullopt);
        EXPECT_FALSE(bubble().picture);
        EXPECT_THAT(bubble().message.layout.caption.value_or(""), HasSubstr("   ISO 0   "));
    }
}

TEST_F(PhotoSendingTest, AsksForTheCompactStyleFromTheExpandedOneAlone) {
    using enum MSMessagesAppPresentationStyle;
    for (const auto style : {Compact, Expanded, Transcript}) {
        const auto host = std::make_shared<Host>(style);
        send(ExifInformation::init(), std::nullopt, host);
        const auto expected =
            style == Expanded ? std::vector{Compact} : std::vector<MSMessagesAppPresentationStyle>();
        EXPECT_EQ(host->requests, expected);
    }
}

TEST_F(PhotoSendingTest, TellsWhyNothingWasInserted) {
    std::ofstream(_home.path() / "data") << "a file in place of the folder";
    PersistanceManager::sharedInstance().setIncludeExifAsTextOniMessageApp(true);
    const PhotoSendingResult result = send(ExifInformation::init(), std::nullopt);
    EXPECT_THAT(result.error.value_or(""), HasSubstr((_home.path() / "data").string()));
    EXPECT_TRUE(result.text); // It follows all the same.
}

} // namespace
} // namespace exifcard
