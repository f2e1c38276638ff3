#include "host/TranscriptView.h"

#include "host/BubbleView.h"
#include "platform/messages/ConversationStore.h"

#include <gtest/gtest.h>

#include <QTest>

namespace exifcard {
namespace {

TEST(TranscriptViewTest, KeepsTheKeysOnABubbleThatIsSeen) {
    TranscriptView view(nullptr);
    view.resize(375, 400);
    view.show();
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    constexpr std::size_t kCount = 40;
    ConversationEntry entry;
    entry.kind = ConversationEntry::Kind::Text;
    entry.state = ConversationEntry::State::Sent;
    entry.text = "Look!";
    view.setEntries(std::vector(kCount, entry), /*isSameConversation=*/false);
    view.focusNewest();
    const auto bubbles = view.findChildren<BubbleView*>();
    const auto press = [&view, &bubbles](Qt::Key key) {
        QTest::keyClick(view.window()->focusWidget(), key);
        EXPECT_FALSE(view.window()->focusWidget()->visibleRegion().isEmpty());
        return bubbles.indexOf(view.window()->focusWidget());
    };
    const auto last = bubbles.size() - 1;
    EXPECT_EQ(press(Qt::Key_Home), 0);
    EXPECT_EQ(press(Qt::Key_Down), 1);
    const auto pageDown = press(Qt::Key_PageDown);
    EXPECT_GT(pageDown, 2);
    EXPECT_LT(pageDown, last);
    EXPECT_EQ(press(Qt::Key_End), last);
    EXPECT_LT(press(Qt::Key_PageUp), last - 1);
}

} // namespace
} // namespace exifcard
