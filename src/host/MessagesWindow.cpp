#include "host/MessagesWindow.h"

#include "appearance/Apperance.h"
#include "host/ConversationFeed.h"
#include "host/ConversationsView.h"
#include "host/ExtensionPanel.h"
#include "host/HeaderBar.h"
#include "host/HostAppearance.h"
#include "host/HostColors.h"
#include "host/InputBar.h"
#include "host/LibraryAccess.h"
#include "host/TranscriptView.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/MSMessagesAppViewController.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QShortcut>
#include <QTimer>

#include <algorithm>
#include <array>

namespace exifcard {
namespace {

/// The first photos come before.
constexpr int kUntilSettingsAreFollowed = 50; // Milliseconds.
constexpr QSize kSmallestSize(360, 640);
/// The expanded panel leaves so much of the conversation below the header.
constexpr int kGapAboveExpandedPanel = 6;
/// However long the pending text, so much of the conversation is seen.
constexpr int kLeastTranscriptHeight = 60;

QString subjectOf(std::size_t messageCount) {
    if (messageCount == 0) {
        return qString(localizedString("No messages yet"));
    }
    return messageCount == 1 ? qString(localizedString("1 message"))
                             : qString(localizedStringWithFormat(
                                   "%ld messages", {static_cast<std::int64_t>(messageCount)}));
}

} // namespace

std::string firstConversationName() {
    return std::string(localizedString("My notes"));
}

MessagesWindow::MessagesWindow(
    std::shared_ptr<MSMessagesAppViewController> extension, WindowState state, HostAppearance& appearance)
    : _appearance(appearance)
    , _feed(new ConversationFeed(ConversationStore(), this))
    , _header(new HeaderBar(this))
    , _transcript(new TranscriptView(this))
    , _inputBar(new InputBar(this))
    , _panel(new ExtensionPanel(std::move(extension), this))
    , _conversations(new ConversationsView(this))
    , _libraryAccess(new LibraryAccess(*this)) {
    setWindowTitle(QStringLiteral("exifcard"));
    setMinimumSize(kSmallestSize);
    connectFeed();
    connectInput();
    connectLibrary();
    addShortcuts();
    QTimer::singleShot(kUntilSettingsAreFollowed, this, [this] { _outsideSettings.follow(); });
    connect(_header, &HeaderBar::conversationsRequested, this, [this] {
        if (_conversations->isVisible()) {
            _conversations->hide();
            focusAfterList();
        } else {
            _conversations->open();
        }
    });
    connect(_conversations, &ConversationsView::chosen, this, [this](const std::string& name) {
        openConversation(name);
        focusAfterList();
    });
    connect(_conversations, &ConversationsView::closed, this, &MessagesWindow::focusAfterList);
    connect(_transcript, &TranscriptView::messageActivated, this, &MessagesWindow::selectMessage);
    connect(_panel, &ExtensionPanel::styleChanged, this, [this] {
        if (_panel->style() == ExtensionPanel::Style::Compact && _feed->conversation()) {
            _feed->conversation()->setSelectedMessage(std::nullopt);
        }
    });
    connect(_panel, &ExtensionPanel::coveringChanged, this, &MessagesWindow::coverConversation);
    resize(sizeHint());
    if (!state.geometry.isEmpty()) {
        restoreGeometry(state.geometry);
    }
    _panel->setStyle(state.presentationStyle, /*isAnimated=*/false);
}

MessagesWindow::~MessagesWindow() {
    _feed->waitForStore();
    _panel->deactivate();
}

void MessagesWindow::connectFeed() {
    connect(_feed, &ConversationFeed::changed, this, &MessagesWindow::showContent);
    connect(_feed, &ConversationFeed::namesChanged, this,
        [this] { _conversations->setNames(_feed->names(), _feed->name()); });
    connect(_feed, &ConversationFeed::failed, this,
        [this](const std::string& error) { _inputBar->showError(qString(error)); });
    connect(_feed, &ConversationFeed::insertionFailed, _inputBar, &InputBar::showFailedInsertion);
    connect(
        _feed, &ConversationFeed::sendingFinished, this, [this](bool isSent, const std::string& typedText) {
            _inputBar->setSending(false);
            if (isSent) {
                forgetDraft(qString(typedText));
                _inputBar->showError(QString());
                _transcript->scrollToEnd();
            }
        });
}

void MessagesWindow::connectInput() {
    connect(_inputBar, &InputBar::sendRequested, this, &MessagesWindow::send);
    connect(_inputBar, &InputBar::dropRequested, this, &MessagesWindow::dropPending);
    connect(_inputBar, &InputBar::retryRequested, this, [this] {
        const auto failures = _inputBar->failedInsertions();
        _inputBar->clearFailedInsertions();
        _feed->insertAgain(failures);
    });
    connect(_inputBar, &InputBar::heightChanged, this, &MessagesWindow::layOut);
}

void MessagesWindow::connectLibrary() {
    connect(_libraryAccess, &LibraryAccess::progressed, _header, &HeaderBar::setProgress);
    connect(_libraryAccess, &LibraryAccess::failed, this,
        [this](const std::string& error) { _inputBar->showError(qString(error)); });
}

void MessagesWindow::addShortcuts() {
    const auto add = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(QKeySequence(Qt::CTRL | Qt::Key_E), [this] { _panel->toggle(); });
    add(QKeySequence(Qt::CTRL | Qt::Key_Return), [this] { send(); });
    add(QKeySequence(Qt::CTRL | Qt::Key_Enter), [this] { send(); });
    add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D), [this] { _appearance.toggle(); });
    add(QKeySequence(Qt::Key_F6), [this] { focusNeighbourRegion(1); });
    add(QKeySequence(Qt::SHIFT | Qt::Key_F6), [this] { focusNeighbourRegion(-1); });
    add(QKeySequence(QKeySequence::Quit), [this] { close(); });
    add(QKeySequence(QKeySequence::Close), [this] { close(); });
}

void MessagesWindow::openConversation(const std::string& name) {
    if (name.empty() || name == _feed->name()) {
        return;
    }
    _inputBar->clearFailedInsertions();
    _inputBar->showError(QString());
    _drafts[_feed->name()] = _inputBar->typedText();
    _inputBar->setTypedText(_drafts[name]);
    _feed->open(name);
    _header->setConversation(qString(name), QString());
    setWindowTitle(QStringLiteral("%1 — exifcard").arg(qString(name)));
    _conversations->setNames(_feed->names(), name);
    if (_panel->isActive()) {
        activateExtension();
    }
}

void MessagesWindow::openLibrary(const std::optional<std::string>& folder) {
    _libraryAccess->start(folder);
}

void MessagesWindow::addFolder(const std::string& folder) {
    _libraryAccess->addNamedFolder(folder);
}

void MessagesWindow::activateExtension() {
    _panel->activate(_feed->conversation());
}

WindowState MessagesWindow::state() const {
    return {.geometry = saveGeometry(),
        .conversation = _feed->name(),
        .presentationStyle = _panel->style(),
        .appearance = _appearance.chosen()};
}

void MessagesWindow::showContent(bool isSameConversation) {
    _transcript->setEntries(_feed->sent(), isSameConversation);
    _inputBar->showPending(_feed->pending());
    _header->setConversation(qString(_feed->name()), subjectOf(_feed->sent().size()));
}

void MessagesWindow::send() {
    const bool hasTypedText = _inputBar->hasTypedText();
    const std::string typedText = hasTypedText ? textFromQString(_inputBar->typedText()) : std::string();
    if (_feed->isSending() || (_feed->pending().empty() && typedText.empty())) {
        return;
    }
    if (const auto message = pendingMessage()) {
        _panel->extension().didStartSendingMessage(*message, _feed->conversation());
    }
    _inputBar->setSending(true);
    _sendingConversation = _feed->name();
    _feed->send(typedText);
}

void MessagesWindow::forgetDraft(const QString& sentText) {
    if (_sendingConversation == _feed->name()) {
        _inputBar->clearTypedText(sentText);
    } else {
        _drafts.erase(_sendingConversation); // Another one was opened meanwhile.
    }
}

void MessagesWindow::dropPending() {
    if (const auto message = pendingMessage()) {
        _panel->extension().didCancelSendingMessage(*message, _feed->conversation());
    }
    _inputBar->clearFailedInsertions();
    if (!_feed->pending().empty()) {
        _feed->dropPending();
    }
}

std::optional<MSMessage> MessagesWindow::pendingMessage() const {
    const auto& pending = _feed->pending();
    const auto found = std::ranges::find(pending, ConversationEntry::Kind::Message, &ConversationEntry::kind);
    return found == pending.end() ? std::nullopt : std::optional(found->message);
}

void MessagesWindow::selectMessage(const ConversationEntry& entry) {
    MSMessage message = entry.message;
    if (entry.picture) {
        message.layout.mediaFileURL = URL::fileURLWithPath(entry.picture->file);
    }
    const auto& conversation = _feed->conversation();
    conversation->setSelectedMessage(message);
    _panel->extension().willSelectMessage(message, conversation);
    _panel->setStyle(ExtensionPanel::Style::Expanded, /*isAnimated=*/true);
    _panel->extension().didSelectMessage(message, conversation);
}

/// What the expanded panel hides takes no keys and is read to nobody.
void MessagesWindow::coverConversation(bool isCovered) {
    const QWidget* const focused = focusWidget();
    if (isCovered && focused != nullptr &&
        (_inputBar->isAncestorOf(focused) || _transcript->isAncestorOf(focused))) {
        _panel->focusContent();
    }
    _inputBar->setVisible(!isCovered);
    _transcript->setVisible(!isCovered);
}

/// Who has found a conversation writes into it next.
void MessagesWindow::focusAfterList() {
    if (_inputBar->isVisible()) {
        _inputBar->focusLine();
    } else {
        _panel->focusContent();
    }
}

void MessagesWindow::focusNeighbourRegion(int step) {
    if (_conversations->isVisible() || _libraryAccess->openSheet() != nullptr) {
        return; // They cover the regions.
    }
    setAttribute(Qt::WA_KeyboardFocusChange); // The ring shows where the focus went.
    const std::array<QWidget*, 3> regions = {_transcript, _inputBar, _panel};
    const auto holding = std::ranges::find_if(
        regions, [this](const QWidget* region) { return region->isAncestorOf(focusWidget()); });
    const int count = static_cast<int>(regions.size());
    // The header stands before the first and after the last.
    int place = holding != regions.end() ? static_cast<int>(holding - regions.begin())
                : step > 0               ? -1
                                         : count;
    do {
        place = (place + step + count) % count;
    } while (!focusRegion(*regions[static_cast<std::size_t>(place)]));
}

/// @return False for a region that has nothing to go to, which the panel never is.
bool MessagesWindow::focusRegion(const QWidget& region) {
    if (&region == _panel) {
        _panel->focusContent();
        return true;
    }
    if (!region.isVisible()) {
        return false; // The expanded panel covers it.
    }
    if (&region == _inputBar) {
        _inputBar->focusLine();
    } else {
        _transcript->focusNewest();
    }
    return region.isAncestorOf(focusWidget());
}

void MessagesWindow::keyPressEvent(QKeyEvent* event) {
    const bool isEscape = event->key() == Qt::Key_Escape;
    const bool isRefresh = event->matches(QKeySequence::Refresh) ||
                           (event->key() == Qt::Key_R && event->modifiers() == Qt::ControlModifier);
    if ((isEscape || isRefresh) && _panel->passKey(*event)) {
        return;
    }
    if (!isEscape) {
        QWidget::keyPressEvent(event);
    } else if (_panel->style() == ExtensionPanel::Style::Expanded) {
        _panel->setStyle(ExtensionPanel::Style::Compact, /*isAnimated=*/true);
    } else if (_inputBar->hasPending()) {
        dropPending();
    }
}

void MessagesWindow::layOut() {
    const int compactHeight = ExtensionPanel::compactHeight(height());
    const int contentTop = HeaderBar::kHeight;
    const int contentBottom = height() - compactHeight + InputBar::kOverlapOfPanel;
    const int mostForBar = contentBottom - contentTop - kLeastTranscriptHeight;
    const int barHeight = std::min(_inputBar->heightForWidth(width()), mostForBar);
    _header->setGeometry(0, 0, width(), HeaderBar::kHeight);
    _inputBar->setGeometry(0, contentBottom - barHeight, width(), barHeight);
    _transcript->setGeometry(0, contentTop, width(), contentBottom - barHeight - contentTop);
    _conversations->setGeometry(0, contentTop, width(), height() - contentTop);
}

void MessagesWindow::resizeEvent(QResizeEvent*) {
    layOut();
    _panel->setRoom(size(), HeaderBar::kHeight + kGapAboveExpandedPanel);
}

void MessagesWindow::paintEvent(QPaintEvent* event) {
    QPainter(this).fillRect(event->rect(), qColor(Apperance::appearanceBackgroundColor()));
}

void MessagesWindow::closeEvent(QCloseEvent* event) {
    state().save();
    _feed->waitForStore();
    emit closing();
    event->accept();
}

} // namespace exifcard
