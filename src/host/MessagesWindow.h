#pragma once

#include "host/WindowState.h"
#include "platform/messages/ConversationStore.h"
#include "platform/messages/MSConversation.h"
#include "settings/OutsideSettings.h"

#include <QWidget>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace exifcard {

class ConversationFeed;
class ConversationsView;
class ExtensionPanel;
class HeaderBar;
class HostAppearance;
class InputBar;
class LibraryAccess;
class MSMessagesAppViewController;
class TranscriptView;

/// The messaging window: a conversation, its input field, and below them the panel with the extension.
class MessagesWindow : public QWidget {
    Q_OBJECT

public:
    /// @param extension   Shown in the panel.
    /// @param appearance  Lives as long as the window.
    MessagesWindow(std::shared_ptr<MSMessagesAppViewController> extension,
        WindowState state,
        HostAppearance& appearance);
    /// Waits for what the store is writing.
    ~MessagesWindow() override;

    void openConversation(const std::string& name);
    /// See `LibraryAccess::start`.
    void openLibrary(const std::optional<std::string>& folder);
    void addFolder(const std::string& folder);
    /// Shows the panel in its style; after the window has its size.
    void activateExtension();
    /// As it is to be remembered.
    WindowState state() const;

    ConversationFeed& feed() { return *_feed; }
    ExtensionPanel& panel() { return *_panel; }
    InputBar& inputBar() { return *_inputBar; }
    TranscriptView& transcript() { return *_transcript; }
    LibraryAccess& libraryAccess() { return *_libraryAccess; }

    QSize sizeHint() const override { return {420, 860}; }

signals:
    void closing();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void connectFeed();
    void connectInput();
    void connectLibrary();
    void addShortcuts();
    void layOut();
    void showContent(bool isSameConversation);
    void send();
    void dropPending();
    void forgetDraft(const QString& sentText);
    void selectMessage(const ConversationEntry& entry);
    /// @param step  1 for the next of transcript, input and panel, -1 for the one before.
    void focusNeighbourRegion(int step);
    bool focusRegion(const QWidget& region);
    void focusAfterList();
    void coverConversation(bool isCovered);
    std::optional<MSMessage> pendingMessage() const;

    HostAppearance& _appearance;
    std::map<std::string, QString> _drafts; ///< What was typed and not sent, by conversation.
    std::string _sendingConversation;       ///< From which was sent last.
    ConversationFeed* _feed = nullptr;
    HeaderBar* _header = nullptr;
    TranscriptView* _transcript = nullptr;
    InputBar* _inputBar = nullptr;
    ExtensionPanel* _panel = nullptr;
    ConversationsView* _conversations = nullptr;
    LibraryAccess* _libraryAccess = nullptr;
    OutsideSettings _outsideSettings;
};

/// The name of the conversation that a first start opens.
std::string firstConversationName();

} // namespace exifcard
