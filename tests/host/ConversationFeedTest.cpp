#include "host/ConversationFeed.h"

#include "host/Waiting.h"
#include "platform/foundation/FilePaths.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <filesystem>
#include <fstream>

namespace exifcard {
namespace {

using testing::ElementsAre;

/// Captions of bubbles and texts, in their order.
std::vector<std::string> textsOf(const std::vector<ConversationEntry>& entries) {
    std::vector<std::string> texts;
    for (const ConversationEntry& entry : entries) {
        const bool isMessage = entry.kind == ConversationEntry::Kind::Message;
        texts.push_back(isMessage ? entry.message.layout.caption.value_or("") : entry.text);
    }
    return texts;
}

std::string databaseFile() {
    return dataFolder() + "/conversations.sqlite";
}

void breakDatabase() {
    makeFolder(dataFolder());
    std::ofstream(databaseFile()) << std::string(4096, 'x');
}

class ConversationFeedTest : public testing::Test {
protected:
    void open() {
        _feed.open("Ada");
        QSignalSpy changes(&_feed, &ConversationFeed::changed);
        expectSoon([&changes] { return !changes.isEmpty(); });
    }

    TemporaryHome _home;
    ConversationStore _store;
    ConversationFeed _feed;
};

TEST_F(ConversationFeedTest, NoticesWhatAnotherProgramPutsIntoTheField) {
    open();
    ASSERT_EQ(_store.insertMessage("Ada", messageWithCaption("f/8"), std::nullopt), std::nullopt);
    expectSoon([this] { return !_feed.pending().empty(); });
    EXPECT_THAT(textsOf(_feed.pending()), ElementsAre("f/8"));
    EXPECT_THAT(_feed.names(), ElementsAre("Ada"));
}

TEST_F(ConversationFeedTest, SendsTheBubbleThenItsTextThenWhatWasTyped) {
    ASSERT_EQ(_store.insertMessage("Ada", messageWithCaption("f/8"), std::nullopt), std::nullopt);
    ASSERT_EQ(_store.insertText("Ada", "share text"), std::nullopt);
    open();
    QSignalSpy finished(&_feed, &ConversationFeed::sendingFinished);
    _feed.send("typed");
    _feed.send("typed"); // A second press while the first is under way sends nothing twice.
    expectSoon([&finished] { return !finished.isEmpty(); });
    EXPECT_TRUE(finished.first().at(0).toBool());
    EXPECT_THAT(textsOf(_feed.sent()), ElementsAre("f/8", "share text", "typed"));
    EXPECT_TRUE(_feed.pending().empty());
    EXPECT_TRUE(_feed.sent().front().sentAt.has_value());
}

TEST_F(ConversationFeedTest, WritesASendingThatIsUnderWayBeforeItEnds) {
    {
        ConversationFeed feed;
        feed.open("Ada");
        feed.send("last words");
    }
    EXPECT_THAT(textsOf(_store.content("Ada").entries), ElementsAre("last words"));
}

TEST_F(ConversationFeedTest, DropsBubbleAndText) {
    ASSERT_EQ(_store.insertMessage("Ada", messageWithCaption("f/8"), std::nullopt), std::nullopt);
    ASSERT_EQ(_store.insertText("Ada", "share text"), std::nullopt);
    open();
    _feed.dropPending();
    expectSoon([this] { return _feed.pending().empty(); });
    EXPECT_TRUE(_store.content("Ada").entries.empty());
}

TEST_F(ConversationFeedTest, TellsWhatCannotBeSent) {
    open();
    breakDatabase();
    QSignalSpy failed(&_feed, &ConversationFeed::failed);
    QSignalSpy finished(&_feed, &ConversationFeed::sendingFinished);
    _feed.send("typed");
    expectSoon([&finished] { return !finished.isEmpty(); });
    EXPECT_FALSE(finished.first().at(0).toBool());
    EXPECT_FALSE(failed.isEmpty());
    EXPECT_FALSE(_feed.isSending());
}

TEST_F(ConversationFeedTest, InsertsAgainWhatFailedTheFirstTime) {
    open();
    breakDatabase();
    std::vector<MSConversation::FailedInsertion> failures;
    QObject::connect(&_feed, &ConversationFeed::insertionFailed,
        [&failures](const MSConversation::FailedInsertion& failure) { failures.push_back(failure); });
    _feed.conversation()->insertMessage(messageWithCaption("f/8"), [](const auto&) {});
    expectSoon([&failures] { return failures.size() == 1; });
    _feed.insertAgain(failures);
    expectSoon([&failures] { return failures.size() == 2; });
    std::filesystem::remove(databaseFile());
    _feed.insertAgain({failures.back()});
    expectSoon([this] { return !_feed.pending().empty(); });
    EXPECT_THAT(textsOf(_feed.pending()), ElementsAre("f/8"));
}

} // namespace
} // namespace exifcard
