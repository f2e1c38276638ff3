#include "platform/messages/MSConversation.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/uivalues/Bitmap.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <fstream>
#include <thread>

namespace exifcard {
namespace {

std::optional<EncodedPicture> encodedPicture(const UIImage& image) {
    return EncodedPicture{
        .jpeg = Data::fromText("encoded"), .width = image.storedWidth(), .height = image.storedHeight()};
}

MSMessage messageWithPicture() {
    MSMessage message;
    message.layout.image = UIImage::imageWithBitmap(std::make_shared<Bitmap>(
        Bitmap{.width = 2, .height = 1, .channels = 1, .pixels = {0, 255}, .iccProfile = {}}));
    return message;
}

/// The error of an insertion, waited for.
std::optional<std::string> errorOf(const std::function<void(MSConversation::CompletionHandler)>& insert) {
    DispatchSemaphore done(0);
    std::optional<std::string> told;
    insert([&, caller = std::this_thread::get_id()](const std::optional<std::string>& error) {
        EXPECT_NE(std::this_thread::get_id(), caller);
        told = error;
        done.signal();
    });
    done.wait();
    return told;
}

std::optional<std::string> insert(const MSConversation& conversation, const MSMessage& message) {
    return errorOf([&](auto handler) { conversation.insertMessage(message, handler); });
}

std::optional<std::string> insert(const MSConversation& conversation, const std::string& text) {
    return errorOf([&](auto handler) { conversation.insertText(text, handler); });
}

TEST(MSConversationTest, StagesAPictureAndATextInTheBackground) {
    const TemporaryHome home;
    const MSConversation conversation("Ada", encodedPicture);
    ASSERT_EQ(insert(conversation, messageWithPicture()), std::nullopt);
    ASSERT_EQ(insert(conversation, "text"), std::nullopt);
    const auto entries = ConversationStore().content("Ada").entries;
    ASSERT_EQ(entries.size(), 2U);
    ASSERT_TRUE(entries[0].picture);
    EXPECT_EQ(entries[0].picture->width, 2);
    EXPECT_EQ(Data::mappedFile(entries[0].picture->file)->text(), "encoded");
    EXPECT_EQ(entries[1].text, "text");
}

TEST(MSConversationTest, LeavesOutAPictureThatDoesNotDecode) {
    const TemporaryHome home;
    const MSConversation conversation("Ada", [](const UIImage&) { return std::nullopt; });
    ASSERT_EQ(insert(conversation, messageWithPicture()), std::nullopt);
    ASSERT_EQ(insert(conversation, MSMessage()), std::nullopt);
    const auto entries = ConversationStore().content("Ada").entries;
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_FALSE(entries[0].picture);
}

TEST(MSConversationTest, TellsWhyNothingWasInserted) {
    const TemporaryHome home;
    std::ofstream(home.path() / "data") << "a file in place of the folder";
    const MSConversation conversation("Ada", encodedPicture);
    for (const auto& error : {insert(conversation, messageWithPicture()), insert(conversation, "text")}) {
        EXPECT_NE(error.value_or("").find(dataFolder()), std::string::npos);
    }
}

} // namespace
} // namespace exifcard
