#include "platform/messages/ConversationStore.h"

#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>

namespace exifcard {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

MSMessage messageWithCaption(const std::string& caption) {
    MSMessage message;
    message.layout.caption = caption;
    message.url = URL::withString("https://exifcard.example/");
    return message;
}

EncodedPicture pictureOf(const std::string& bytes) {
    return {.jpeg = Data::fromText(bytes), .width = 900, .height = 600};
}

/// "message A" inserts a bubble with the caption A, "text x" the text x; "send" and "drop" end what is
/// pending.
std::optional<std::string> take(const ConversationStore& store, const std::string& step) {
    const std::string word = step.substr(0, step.find(' '));
    const std::string rest = step.substr(std::min(step.size(), word.size() + 1));
    if (word == "message") {
        return store.insertMessage("Ada", messageWithCaption(rest), pictureOf(rest));
    }
    if (word == "text") {
        return store.insertText("Ada", rest);
    }
    return word == "send" ? store.sendPending("Ada") : store.dropPending("Ada");
}

/// "sent message A", "pending text x".
std::string textOf(const ConversationEntry& entry) {
    const std::string state = entry.state == ConversationEntry::State::Sent ? "sent " : "pending ";
    return entry.kind == ConversationEntry::Kind::Text
               ? state + "text " + entry.text
               : state + "message " + entry.message.layout.caption.value_or("-");
}

std::vector<std::string> textsOf(const ConversationContent& content) {
    EXPECT_EQ(content.error, std::nullopt);
    std::vector<std::string> texts;
    for (const ConversationEntry& entry : content.entries) {
        texts.push_back(textOf(entry));
    }
    return texts;
}

std::vector<std::string> filesIn(const fs::path& folder) {
    std::vector<std::string> files;
    for (const auto& file : fs::directory_iterator(folder)) {
        files.push_back(file.path());
    }
    return files;
}

TEST(ConversationStoreTest, HoldsOneBubbleAndOneTextUntilTheyAreSentOrDropped) {
    struct Case {
        std::vector<std::string> steps;
        std::vector<std::string> content;
    };
    const Case cases[] = {
        {{"message A"}, {"pending message A"}},
        {{"message A", "text x", "text y"}, {"pending message A", "pending text xy"}},
        {{"message A", "text x", "message B"}, {"pending message B"}},
        {{"text t", "message A"}, {"pending message A", "pending text t"}},
        {{"text t", "message A", "text x"}, {"pending message A", "pending text tx"}},
        {{"text t", "message A", "text x", "message B"}, {"pending message B", "pending text t"}},
        {{"text t", "message A", "text x", "message B", "text y"}, {"pending message B", "pending text ty"}},
        {{"message A", "text "}, {"pending message A"}},
        {{"text t", "message A", "send"}, {"sent message A", "sent text t"}},
        {{"message A", "text x", "send", "message B", "text y"},
            {"sent message A", "sent text x", "pending message B", "pending text y"}},
        {{"message A", "send", "message B", "send", "send"}, {"sent message A", "sent message B"}},
        {{"message A", "text x", "drop"}, {}},
        {{"text t", "message A", "text x", "drop"}, {}},
        {{"text t", "drop"}, {}},
        {{"message A", "send", "message B", "drop"}, {"sent message A"}},
        {{"send"}, {}},
        {{"drop"}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.steps));
        const TemporaryHome home;
        const ConversationStore store;
        for (const std::string& step : c.steps) {
            ASSERT_EQ(take(store, step), std::nullopt);
        }
        EXPECT_EQ(textsOf(store.content("Ada")), c.content);
    }
}

TEST(ConversationStoreTest, GivesBackWhatABubbleShows) {
    const TemporaryHome home;
    const ConversationStore store;
    MSMessage shown = messageWithCaption("f/1.8   1/120 s");
    shown.layout.imageTitle = "Old Town,Springfield";
    shown.layout.subcaption = "Ünïcode 6";
    ASSERT_EQ(store.insertMessage("Ada", shown, pictureOf("picture")), std::nullopt);
    const ConversationContent content = store.content("Ada");
    ASSERT_EQ(content.entries.size(), 1U);
    const ConversationEntry& entry = content.entries.front();
    EXPECT_EQ(entry.message.url, shown.url);
    EXPECT_EQ(entry.message.layout.imageTitle, shown.layout.imageTitle);
    EXPECT_EQ(entry.message.layout.imageSubtitle, std::nullopt);
    EXPECT_EQ(entry.message.layout.caption, shown.layout.caption);
    EXPECT_EQ(entry.message.layout.trailingCaption, std::nullopt);
    EXPECT_EQ(entry.message.layout.subcaption, shown.layout.subcaption);
    EXPECT_EQ(entry.message.layout.trailingSubcaption, std::nullopt);
    ASSERT_TRUE(entry.picture);
    EXPECT_EQ(entry.picture->width, 900);
    EXPECT_EQ(entry.picture->height, 600);
    EXPECT_EQ(Data::mappedFile(entry.picture->file)->text(), "picture");
}

TEST(ConversationStoreTest, KeepsThePicturesOfThePresentBubblesAlone) {
    const TemporaryHome home;
    const ConversationStore store;
    const fs::path pictures = fs::path(dataFolder()) / "pictures";
    for (const char* const step : {"message A", "send", "message B", "message C"}) {
        ASSERT_EQ(take(store, step), std::nullopt);
    }
    const auto entries = store.content("Ada").entries;
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_THAT(
        filesIn(pictures), testing::UnorderedElementsAre(entries[0].picture->file, entries[1].picture->file));
    EXPECT_EQ(Data::mappedFile(entries[1].picture->file)->text(), "C");
    ASSERT_EQ(take(store, "drop"), std::nullopt);
    EXPECT_THAT(filesIn(pictures), ElementsAre(entries[0].picture->file));
    ASSERT_EQ(store.insertMessage("Ada", messageWithCaption("D"), std::nullopt), std::nullopt);
    EXPECT_FALSE(store.content("Ada").entries.back().picture);
}

TEST(ConversationStoreTest, ListsTheConversationThatWasUsedLastFirst) {
    const TemporaryHome home;
    const ConversationStore store;
    EXPECT_THAT(store.conversations().names, IsEmpty());
    for (const char* const name : {"Ada", "Größe 📷", "'; DROP TABLE entries; --"}) {
        ASSERT_EQ(store.insertText(name, "text"), std::nullopt);
    }
    ASSERT_EQ(store.sendPending("Ada"), std::nullopt);
    ASSERT_EQ(store.dropPending("nobody"), std::nullopt);
    EXPECT_THAT(store.conversations().names, ElementsAre("Ada", "'; DROP TABLE entries; --", "Größe 📷"));
    EXPECT_THAT(textsOf(store.content("Größe 📷")), ElementsAre("pending text text"));
    EXPECT_THAT(store.content("nobody").entries, IsEmpty());
}

TEST(ConversationStoreTest, RefusesNamesAndTextsOutOfBounds) {
    const TemporaryHome home;
    const ConversationStore store;
    const std::string longest(1000, 'n');
    const std::string text(1 << 20, 't');
    for (const std::string& name :
        {std::string(), longest + 'n', std::string("\xff"), std::string("\xed\xa0\x80")}) {
        EXPECT_TRUE(store.insertText(name, "text")) << name;
    }
    EXPECT_FALSE(store.insertText(longest, text));
    EXPECT_TRUE(store.insertText(longest, "t"));
    EXPECT_TRUE(store.insertMessage(longest, messageWithCaption(text), std::nullopt));
    EXPECT_THAT(textsOf(store.content(longest)), ElementsAre("pending text " + text));
}

TEST(ConversationStoreTest, IsForItsOwnerAlone) {
    const TemporaryHome home;
    ASSERT_EQ(take(ConversationStore(), "message A"), std::nullopt);
    EXPECT_EQ(fs::status(dataFolder()).permissions(), fs::perms::owner_all);
    for (const auto& file : fs::recursive_directory_iterator(dataFolder())) {
        SCOPED_TRACE(file.path());
        const auto expected =
            file.is_directory() ? fs::perms::owner_all : fs::perms::owner_read | fs::perms::owner_write;
        EXPECT_EQ(file.status().permissions(), expected);
    }
}

TEST(ConversationStoreTest, TakesWhatSeveralProgramsInsertAtOnce) {
    const TemporaryHome home;
    constexpr std::size_t kTexts = 40;
    const auto insertMany = [](const char* text) {
        return [text] {
            bool isInserted = true;
            for (std::size_t count = 0; count < kTexts; ++count) {
                isInserted = !ConversationStore().insertText("texts", text) &&
                             !ConversationStore().insertMessage(
                                 "bubbles", messageWithCaption(text), pictureOf(text)) &&
                             isInserted;
            }
            return isInserted;
        };
    };
    ChildProcess first(insertMany("a"));
    ChildProcess second(insertMany("b"));
    EXPECT_TRUE(first.succeeded());
    EXPECT_TRUE(second.succeeded());
    const auto texts = ConversationStore().content("texts").entries;
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(std::ranges::count(texts[0].text, 'a'), kTexts);
    EXPECT_EQ(std::ranges::count(texts[0].text, 'b'), kTexts);
    const auto bubbles = ConversationStore().content("bubbles").entries;
    ASSERT_EQ(bubbles.size(), 1U);
    EXPECT_THAT(filesIn(fs::path(dataFolder()) / "pictures"), ElementsAre(bubbles[0].picture->file));
}

/// Replaces the bubble for ever and tells each one by a byte.
bool replaceForEver(int output) {
    for (int number = 0;; ++number) {
        const std::string caption = std::to_string(number);
        const bool isInserted =
            !ConversationStore().insertMessage("Ada", messageWithCaption(caption), pictureOf(caption)) &&
            !ConversationStore().insertText("Ada", caption);
        if (!isInserted || write(output, "", 1) != 1) {
            return false;
        }
    }
}

TEST(ConversationStoreTest, IsWholeAfterAKillAtAnyMoment) {
    const TemporaryHome home;
    for (int round = 0; round < 20; ++round) {
        std::array<int, 2> ends = {};
        ASSERT_EQ(pipe(ends.data()), 0);
        ChildProcess writer([&] { return replaceForEver(ends[1]); });
        std::string told(static_cast<std::size_t>(1 + round % 3), ' ');
        for (char& byte : told) {
            ASSERT_EQ(read(ends[0], &byte, 1), 1);
        }
        writer.kill();
        close(ends[0]);
        close(ends[1]);
        const ConversationContent content = ConversationStore().content("Ada");
        ASSERT_EQ(content.error, std::nullopt);
        ASSERT_FALSE(content.entries.empty());
        const ConversationEntry& bubble = content.entries.front();
        ASSERT_TRUE(bubble.picture);
        const auto picture = Data::mappedFile(bubble.picture->file);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->text(), bubble.message.layout.caption);
        if (content.entries.size() > 1) {
            EXPECT_EQ(content.entries[1].text, bubble.message.layout.caption);
        }
    }
    ASSERT_EQ(take(ConversationStore(), "drop"), std::nullopt);
}

} // namespace
} // namespace exifcard
