#include "host/MessagesWindow.h"

#include "host/BubbleView.h"
#include "host/ConversationFeed.h"
#include "host/ExtensionPanel.h"
#include "host/HostAppearance.h"
#include "host/InputBar.h"
#include "host/PanelHandle.h"
#include "host/SheetButton.h"
#include "host/TranscriptView.h"
#include "host/Waiting.h"
#include "platform/foundation/FilePaths.h"
#include "platform/uikit/MSMessagesAppViewController.h"
#include "platform/uikit/PictureButton.h"
#include "support/TemporaryHome.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>

namespace exifcard {
namespace {

using testing::ElementsAre;
using Style = MSMessagesAppPresentationStyle;

/// Writes down how it is called.
class RecordingExtension : public MSMessagesAppViewController {
public:
    std::vector<std::string> calls;
    const QWidget* panel = nullptr;
    bool isNotingSizes = false;
    int heightAtTheCall = 0; ///< Of the panel, when the style was told.
    std::function<void()> onTransition = [] {};

    void didBecomeActiveWithConversation(const std::shared_ptr<MSConversation>&) override {
        calls.emplace_back("active");
    }
    void willTransitionToPresentationStyle(Style style) override {
        calls.push_back(style == Style::Compact ? "will compact" : "will expand");
        heightAtTheCall = panel == nullptr ? 0 : panel->height();
        onTransition();
    }
    void didTransitionToPresentationStyle(Style style) override {
        calls.push_back(style == Style::Compact ? "did compact" : "did expand");
    }
    void viewWillTransitionToSize(CGSize size, bool isComplete) override {
        MSMessagesAppViewController::viewWillTransitionToSize(size, isComplete);
        if (isNotingSizes) {
            calls.push_back(fmt::format(
                "{} {} (shown {})", isComplete ? "has" : "will have", size.height, view().height()));
        }
    }
    void willSelectMessage(const MSMessage& message, const std::shared_ptr<MSConversation>&) override {
        calls.push_back("will select " + message.layout.caption.value_or(""));
    }
    void didSelectMessage(const MSMessage&, const std::shared_ptr<MSConversation>& conversation) override {
        calls.push_back(conversation->selectedMessage() ? "did select" : "nothing selected");
    }
    void didStartSendingMessage(const MSMessage&, const std::shared_ptr<MSConversation>&) override {
        calls.emplace_back("sending");
    }
    void didCancelSendingMessage(const MSMessage&, const std::shared_ptr<MSConversation>&) override {
        calls.emplace_back("cancelled");
    }
};

/// Takes some keys and no others.
class KeyTaker : public QWidget {
public:
    std::vector<int> taken;

    KeyTaker(QWidget* parent, std::vector<int> wanted) : QWidget(parent), _wanted(std::move(wanted)) {
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        event->setAccepted(std::ranges::count(_wanted, event->key()) > 0);
        if (event->isAccepted()) {
            taken.push_back(event->key());
        }
    }

private:
    std::vector<int> _wanted;
};

class MessagesWindowTest : public testing::Test {
protected:
    void open() {
        _window->openConversation("Ada");
        _window->show();
        _window->activateExtension();
        _window->activateWindow(); // Shortcuts belong to the active window.
        ASSERT_TRUE(QTest::qWaitForWindowActive(_window.get()));
        expectSoon([this] { return _window->feed().sent().size() == _sentAtStart; });
        _extension->panel = &_window->panel();
        _extension->calls.clear();
    }
    void putIntoField(const std::string& caption) {
        ASSERT_EQ(_store.insertMessage("Ada", messageWithCaption(caption), std::nullopt), std::nullopt);
    }
    template<typename View>
    std::vector<View*> visibleViews() const {
        std::vector<View*> views;
        for (View* const view : _window->findChildren<View*>()) {
            if (view->isVisible()) {
                views.push_back(view);
            }
        }
        return views;
    }
    void expectMoved() {
        expectSoon([this] { return !_window->panel().isMoving(); });
    }
    void drag(int distance) {
        auto* const handle = _window->findChild<PanelHandle*>();
        const QPoint start = handle->rect().center();
        QTest::mousePress(handle, Qt::LeftButton, {}, start);
        // The handle moves along, so that the pointer is told in the window's coordinates.
        const QPoint global = handle->mapToGlobal(start);
        for (int step = 1; step <= 4; ++step) {
            const QPoint place = handle->mapFromGlobal(global - QPoint(0, distance * step / 4));
            QTest::mouseMove(handle, place);
            QMouseEvent move(QEvent::MouseMove, place, handle->mapToGlobal(QPointF(place)), Qt::NoButton,
                Qt::LeftButton, Qt::NoModifier);
            move.setTimestamp(static_cast<quint64>(10'000 + step * 1000)); // Slowly: no fling.
            QCoreApplication::sendEvent(handle, &move);
        }
        const QPoint end = handle->mapFromGlobal(global - QPoint(0, distance));
        QMouseEvent release(QEvent::MouseButtonRelease, end, handle->mapToGlobal(QPointF(end)),
            Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        release.setTimestamp(20'000);
        QCoreApplication::sendEvent(handle, &release);
    }

    TemporaryHome _home;
    ConversationStore _store;
    std::size_t _sentAtStart = 0;
    std::shared_ptr<RecordingExtension> _extension = std::make_shared<RecordingExtension>();
    HostAppearance _appearance{UIUserInterfaceStyle::Light, UIUserInterfaceStyle::Light};
    std::unique_ptr<MessagesWindow> _window =
        std::make_unique<MessagesWindow>(_extension, WindowState(), _appearance);
};

TEST_F(MessagesWindowTest, ShowsWhatWasSentAsBubbles) {
    putIntoField("f/8        ISO 100");
    ASSERT_EQ(_store.sendPendingAndText("Ada", "Look!"), std::nullopt);
    _sentAtStart = 2;
    open();
    const auto bubbles = visibleViews<BubbleView>();
    ASSERT_EQ(bubbles.size(), 2U);
    EXPECT_TRUE(bubbles[0]->spokenText().startsWith(QStringLiteral("You, f/8 ISO 100, ")));
    EXPECT_TRUE(bubbles[1]->spokenText().startsWith(QStringLiteral("You, Look!, ")));
    EXPECT_LT(bubbles[0]->geometry().bottom(), bubbles[1]->geometry().top());
}

TEST_F(MessagesWindowTest, CopiesAPictureInItsOwnSizeAndATextAsItIs) {
    const auto jpeg = Data::mappedFile(EXIFCARD_TEST_DATA "/canon-6d-elephants.jpg").value();
    const QSize size(497, 331); // Larger than it is shown.
    ASSERT_EQ(_store.insertMessage("Ada", messageWithCaption("f/8"),
                  EncodedPicture{.jpeg = jpeg, .width = size.width(), .height = size.height()}),
        std::nullopt);
    ASSERT_EQ(_store.sendPendingAndText("Ada", "Look!"), std::nullopt);
    _sentAtStart = 2;
    open();
    const auto bubbles = visibleViews<BubbleView>();
    ASSERT_EQ(bubbles.size(), 2U);
    const QClipboard& clipboard = *QApplication::clipboard();
    QTest::keyClick(bubbles[0], Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.image().size(), size);
    EXPECT_TRUE(clipboard.mimeData()->hasUrls());
    QTest::keyClick(bubbles[1], Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.text(), QStringLiteral("Look!"));
}

TEST_F(MessagesWindowTest, SendsWithControlEnterAndTellsTheExtension) {
    putIntoField("f/8");
    open();
    expectSoon([this] { return _window->inputBar().hasPending(); });
    auto* const line = _window->findChild<QLineEdit*>();
    line->setText(QStringLiteral("Look!"));
    QTest::keyClick(_window.get(), Qt::Key_Return, Qt::ControlModifier);
    expectSoon([this] { return _window->feed().sent().size() == 2; });
    EXPECT_EQ(_store.content("Ada").entries.back().text, "Look!");
    expectSoon([line] { return line->text().isEmpty(); });
    EXPECT_THAT(_extension->calls, ElementsAre("sending"));
}

TEST_F(MessagesWindowTest, RemovesThePendingPhotoWithItsButton) {
    putIntoField("f/8");
    open();
    expectSoon([this] { return _window->inputBar().hasPending(); });
    for (PictureButton* const button : visibleViews<PictureButton>()) {
        if (button->accessibleName() == QStringLiteral("Remove")) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    expectSoon([this] { return !_window->inputBar().hasPending(); });
    EXPECT_TRUE(_store.content("Ada").entries.empty());
    EXPECT_THAT(_extension->calls, ElementsAre("cancelled"));
}

/// What readers find below, in their order.
void collect(QAccessibleInterface& found, std::vector<QAccessibleInterface*>& all) {
    all.push_back(&found);
    for (int index = 0; index < found.childCount(); ++index) {
        if (QAccessibleInterface* const child = found.child(index)) {
            collect(*child, all);
        }
    }
}

TEST_F(MessagesWindowTest, ReadersFindANameForAllThatTakesKeysAndAllThatWaits) {
    putIntoField("f/8   ISO 100");
    ASSERT_EQ(_store.sendPendingAndText("Ada", "Look!"), std::nullopt);
    putIntoField("f/11   ISO 200");
    _sentAtStart = 2;
    open();
    _window->inputBar().showFailedInsertion(
        {.error = "the disk is full", .message = messageWithCaption("f/8"), .text = ""});
    expectSoon([this] { return _window->inputBar().hasPending(); });
    std::vector<QAccessibleInterface*> all;
    collect(*QAccessible::queryAccessibleInterface(_window.get()), all);
    std::vector<std::string> names;
    std::vector<QObject*> found;
    for (QAccessibleInterface* const element : all) {
        const QString name = element->text(QAccessible::Name);
        names.push_back(name.toStdString());
        found.push_back(element->object());
        const auto* const widget = qobject_cast<QWidget*>(element->object());
        const bool takesKeys = widget != nullptr && widget != _window.get() && widget->isVisible() &&
                               (widget->focusPolicy() & Qt::TabFocus) != 0;
        if (takesKeys) {
            EXPECT_FALSE(name.isEmpty()) << widget->metaObject()->className();
            EXPECT_NE(element->role(), QAccessible::Client) << widget->metaObject()->className();
        }
    }
    for (const char* const wanted : {"f/11 ISO 200", "Could not be added: the disk is full", "Try again",
             "Remove", "Send", "Comment", "Conversation", "Conversations", "Photo panel"}) {
        EXPECT_THAT(names, testing::Contains(wanted));
    }
    EXPECT_THAT(names, testing::Contains(testing::StartsWith("You, Look!")));
    for (QAbstractButton* const button : visibleViews<QAbstractButton>()) {
        EXPECT_THAT(found, testing::Contains(static_cast<QObject*>(button)))
            << button->accessibleName().toStdString();
    }
}

TEST_F(MessagesWindowTest, SaysWhatCouldNotBeAddedAndTriesAgain) {
    open();
    _window->inputBar().showFailedInsertion(
        {.error = "the disk is full", .message = messageWithCaption("f/8"), .text = ""});
    const auto buttons = visibleViews<SheetButton>();
    ASSERT_EQ(buttons.size(), 1U);
    QTest::mouseClick(buttons.front(), Qt::LeftButton);
    expectSoon([this] { return !_window->feed().pending().empty(); });
    EXPECT_TRUE(_window->inputBar().failedInsertions().empty());
}

TEST_F(MessagesWindowTest, TellsTheStyleBeforeThePanelMovesAndAgainAtTheEnd) {
    open();
    const int compact = ExtensionPanel::compactHeight(_window->height());
    ASSERT_EQ(_window->panel().height(), compact);
    QTest::keyClick(_window.get(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_THAT(_extension->calls, ElementsAre("will expand"));
    EXPECT_EQ(_extension->heightAtTheCall, compact);
    EXPECT_EQ(_extension->presentationStyle(), Style::Compact);
    expectMoved();
    EXPECT_THAT(_extension->calls, ElementsAre("will expand", "did expand"));
    EXPECT_EQ(_window->panel().y(), 62); // 6 below the header.
    EXPECT_EQ(_extension->presentationStyle(), Style::Expanded);
}

TEST_F(MessagesWindowTest, TellsTheNewSizeWithinTheChangeOfStyleAndOnce) {
    open();
    _extension->isNotingSizes = true;
    const int compact = _extension->view().height();
    _window->panel().toggle();
    expectMoved();
    const int expanded = _extension->view().height();
    EXPECT_GT(expanded, compact);
    EXPECT_THAT(_extension->calls,
        ElementsAre("will expand", fmt::format("will have {} (shown {})", expanded, compact),
            fmt::format("has {0} (shown {0})", expanded), "did expand"));
    _extension->calls.clear();
    _window->panel().toggle();
    expectMoved();
    EXPECT_THAT(_extension->calls,
        ElementsAre("will compact", fmt::format("will have {} (shown {})", compact, expanded),
            fmt::format("has {0} (shown {0})", compact), "did compact"));
}

TEST_F(MessagesWindowTest, ChangesTheStyleThatTheExtensionAsksFor) {
    open();
    _window->panel().setStyle(Style::Expanded, /*isAnimated=*/false);
    _extension->requestPresentationStyle(Style::Compact);
    expectSoon([this] { return _extension->presentationStyle() == Style::Compact; });
    EXPECT_EQ(_window->panel().height(), ExtensionPanel::compactHeight(_window->height()));
}

TEST_F(MessagesWindowTest, SwitchesWhenTheHandleIsLetGoFarEnough) {
    open();
    drag(40);
    expectMoved();
    EXPECT_TRUE(_extension->calls.empty());
    EXPECT_EQ(_window->panel().height(), ExtensionPanel::compactHeight(_window->height()));
    drag(80);
    expectMoved();
    EXPECT_THAT(_extension->calls, ElementsAre("will expand", "did expand"));
    drag(-80);
    expectMoved();
    EXPECT_EQ(_extension->calls.back(), "did compact");
}

TEST_F(MessagesWindowTest, ResistsByHalfBeyondTheStops) {
    open();
    auto* const handle = _window->findChild<PanelHandle*>();
    const int compact = _window->panel().height();
    emit handle->dragBegan();
    emit handle->dragged(-40);
    EXPECT_EQ(_window->panel().height(), compact - 20);
    emit handle->dragEnded(-40, 0);
    expectMoved();
    EXPECT_EQ(_window->panel().height(), compact);
}

TEST_F(MessagesWindowTest, LeavesTheExpandedPanelFirstAndThenDropsThePendingMessage) {
    putIntoField("f/8");
    open();
    expectSoon([this] { return _window->inputBar().hasPending(); });
    _window->panel().setStyle(Style::Expanded, /*isAnimated=*/false);
    QTest::keyClick(_window.get(), Qt::Key_Escape);
    EXPECT_EQ(_window->panel().style(), Style::Compact);
    EXPECT_TRUE(_window->inputBar().hasPending());
    QTest::keyClick(_window.get(), Qt::Key_Escape);
    expectSoon([this] { return !_window->inputBar().hasPending(); });
}

TEST_F(MessagesWindowTest, OpensThePanelWithTheMessageThatIsTapped) {
    putIntoField("f/8");
    ASSERT_EQ(_store.sendPending("Ada"), std::nullopt);
    _sentAtStart = 1;
    open();
    QTest::mouseClick(visibleViews<BubbleView>().front(), Qt::LeftButton);
    expectMoved();
    EXPECT_THAT(_extension->calls, ElementsAre("will select f/8", "will expand", "did select", "did expand"));
}

TEST_F(MessagesWindowTest, GoesRoundTheRegionsWithF6) {
    ASSERT_EQ(_store.sendPendingAndText("Ada", "Look!"), std::nullopt);
    _sentAtStart = 1;
    open();
    std::vector<const QWidget*> regions;
    for (int press = 0; press < 3; ++press) {
        QTest::keyClick(_window.get(), Qt::Key_F6);
        regions.push_back(_window->focusWidget());
    }
    EXPECT_TRUE(_window->transcript().isAncestorOf(regions[0]));
    EXPECT_TRUE(_window->inputBar().isAncestorOf(regions[1]));
    EXPECT_TRUE(_window->panel().isAncestorOf(regions[2]));
    for (const int region : {1, 0, 2}) {
        QTest::keyClick(_window.get(), Qt::Key_F6, Qt::ShiftModifier);
        EXPECT_EQ(_window->focusWidget(), regions[static_cast<std::size_t>(region)]);
    }
}

TEST_F(MessagesWindowTest, KeepsTheKeysInThePanelWhenItsScreenChanges) {
    open();
    auto* const before = new KeyTaker(&_extension->view(), {});
    before->show();
    before->setFocus();
    _extension->onTransition = [this, before] {
        delete before;
        (new KeyTaker(&_extension->view(), {}))->show();
    };
    QTest::keyClick(_window.get(), Qt::Key_E, Qt::ControlModifier);
    expectMoved();
    EXPECT_EQ(_window->focusWidget(), _extension->view().findChild<QWidget*>());
}

TEST_F(MessagesWindowTest, SendsNoBlanks) {
    open();
    auto* const line = _window->inputBar().findChild<QLineEdit*>();
    QTest::keyClicks(line, QStringLiteral("  "));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_FALSE(_window->feed().isSending());
    putIntoField("f/8");
    expectSoon([this] { return _window->inputBar().hasPending(); });
    QTest::keyClick(line, Qt::Key_Return);
    expectSoon([this] { return !_window->feed().isSending(); });
    EXPECT_EQ(_window->feed().sent().size(), 1U) << "the photo alone";
}

TEST_F(MessagesWindowTest, KeepsWhatIsTypedInItsConversation) {
    open();
    auto* const line = _window->inputBar().findChild<QLineEdit*>();
    QTest::keyClicks(line, QStringLiteral("for Ada"));
    _window->openConversation("Bob");
    EXPECT_EQ(line->text(), QString());
    QTest::keyClicks(line, QStringLiteral("for Bob"));
    _window->openConversation("Ada");
    EXPECT_EQ(line->text(), QStringLiteral("for Ada"));
    emit _window->inputBar().sendRequested();
    _window->openConversation("Bob"); // Before it is sent.
    EXPECT_EQ(line->text(), QStringLiteral("for Bob"));
    expectSoon([this] { return !_window->feed().isSending(); });
    _window->openConversation("Ada");
    EXPECT_EQ(line->text(), QString());
}

TEST_F(MessagesWindowTest, TakesNoKeysBelowTheExpandedPanel) {
    open();
    auto* const line = _window->inputBar().findChild<QLineEdit*>();
    line->setFocus();
    _window->panel().setStyle(Style::Expanded, /*isAnimated=*/false);
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_F6, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab}) {
        QTest::keyClick(_window->focusWidget(), key);
        EXPECT_FALSE(_window->inputBar().isAncestorOf(_window->focusWidget()));
        EXPECT_FALSE(_window->transcript().isAncestorOf(_window->focusWidget()));
    }
    drag(-20);
    EXPECT_TRUE(line->isVisible()); // The conversation is seen as soon as the panel goes down.
}

TEST_F(MessagesWindowTest, StandsAtTheNewestMessageWhateverCameWhileItWasHidden) {
    open();
    _window->panel().setStyle(Style::Expanded, /*isAnimated=*/false);
    constexpr std::size_t kMany = 30;
    for (std::size_t count = 0; count < kMany; ++count) {
        ASSERT_EQ(_store.sendPendingAndText("Ada", "Look!"), std::nullopt);
    }
    expectSoon([this] { return _window->feed().sent().size() == kMany; });
    _window->panel().setStyle(Style::Compact, /*isAnimated=*/false);
    const QWidget& seen = *_window->transcript().viewport();
    const BubbleView& newest = *visibleViews<BubbleView>().back();
    EXPECT_TRUE(seen.rect().contains(QRect(newest.mapTo(&seen, QPoint()), newest.size())));
}

TEST_F(MessagesWindowTest, RefreshesThePanelFromTheInputLineAndAsksItFirstOnEscape) {
    putIntoField("f/8");
    open();
    expectSoon([this] { return _window->inputBar().hasPending(); });
    KeyTaker content(&_extension->view(), {Qt::Key_F5, Qt::Key_R, Qt::Key_Escape});
    content.show();
    auto* const line = _window->inputBar().findChild<QLineEdit*>();
    line->setFocus();
    QTest::keyClick(line, Qt::Key_F5);
    QTest::keyClick(line, Qt::Key_R, Qt::ControlModifier);
    QTest::keyClick(line, Qt::Key_R);
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_THAT(content.taken, ElementsAre(Qt::Key_F5, Qt::Key_R, Qt::Key_Escape));
    EXPECT_EQ(line->text(), QStringLiteral("r"));
    content.hide(); // With nothing to leave, Escape drops what is pending.
    QTest::keyClick(line, Qt::Key_Escape);
    expectSoon([this] { return !_window->inputBar().hasPending(); });
}

TEST_F(MessagesWindowTest, ComesBackAsItWasLeft) {
    open();
    _window->resize(500, 700);
    _window->panel().setStyle(Style::Expanded, /*isAnimated=*/false);
    QTest::keyClick(_window.get(), Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    _window->close();
    const WindowState state = WindowState::load();
    EXPECT_EQ(state.conversation, "Ada");
    EXPECT_EQ(state.presentationStyle, Style::Expanded);
    EXPECT_EQ(state.appearance, UIUserInterfaceStyle::Dark);
    const MessagesWindow again(std::make_shared<RecordingExtension>(), state, _appearance);
    EXPECT_EQ(again.size(), QSize(500, 700));
}

} // namespace
} // namespace exifcard
