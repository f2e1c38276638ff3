#pragma once

#include "platform/foundation/FileWatcher.h"
#include "platform/foundation/OperationQueue.h"
#include "platform/messages/ConversationStore.h"
#include "platform/messages/MSConversation.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

/// One conversation of the store for the main queue: what it holds, kept up to date whoever changes it, and
/// the changes that the user makes. The store is used on a queue, one call after the other.
class ConversationFeed : public QObject {
    Q_OBJECT

public:
    explicit ConversationFeed(ConversationStore store = ConversationStore(), QObject* parent = nullptr);
    /// Waits for what is under way.
    ~ConversationFeed() override;

    /// Shows another conversation; the name as the store takes it.
    void open(std::string name);
    /// What the extension is given; its failures come as `insertionFailed`.
    const std::shared_ptr<MSConversation>& conversation() const { return _conversation; }
    const std::string& name() const { return _name; }

    const std::vector<ConversationEntry>& sent() const { return _sent; }
    /// Bubble and text of the input field, the bubble first.
    const std::vector<ConversationEntry>& pending() const { return _pending; }
    /// Of all conversations; the one changed last comes first.
    const std::vector<std::string>& names() const { return _names; }
    bool isSending() const { return _isSending; }

    /// Sends what is pending and then the typed text, all or nothing. Ignored while a sending is under way,
    /// and when there is nothing to send.
    void send(const std::string& typedText);
    void dropPending();
    /// One after the other. What fails again comes as `insertionFailed` again.
    void insertAgain(std::vector<MSConversation::FailedInsertion> failures);
    void reload();
    /// Blocks until the store has done everything so far.
    void waitForStore();

signals:
    /// Something of the content differs from before.
    void changed(bool isSameConversation);
    void namesChanged();
    /// Follows a `failed` where nothing was sent.
    void sendingFinished(bool isSent, const std::string& typedText);
    /// What could not be read or written: one sentence. Nothing was changed.
    void failed(const std::string& error);
    void insertionFailed(const MSConversation::FailedInsertion& failure);

private:
    struct State;
    using Step = std::function<std::optional<std::string>(const ConversationStore& store)>;
    using Finish = std::function<void(bool isDone)>;

    void watch();
    void enqueueReading(bool onlyIfChanged);
    void take(const std::string& name, const ConversationContent& content, const ConversationNames& names);
    /// Runs the step on the queue, then tells what there is now, and then `finish` on the main queue.
    void change(Step step, Finish finish);

    ConversationStore _store;
    std::shared_ptr<OperationQueue> _queue;
    std::shared_ptr<State> _state; ///< Shared with what runs in the background.
    std::unique_ptr<FileWatcher> _watcher;
    std::shared_ptr<MSConversation> _conversation;
    std::string _name;
    bool _isFresh = true; ///< Nothing of this conversation was read yet.
    bool _isSending = false;
    std::vector<ConversationEntry> _sent;
    std::vector<ConversationEntry> _pending;
    std::vector<std::string> _names;
};

} // namespace exifcard
