#include "host/ConversationFeed.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FilePaths.h"
#include "sending/Conversations.h"

#include <QPointer>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <utility>

namespace exifcard {
namespace {

/// Opening the database counts as a write to whoever watches the file, so that only another size or time
/// means that somebody changed it.
struct DatabaseStamp {
    std::uintmax_t sizeInBytes = 0;
    std::filesystem::file_time_type modified;
    bool operator==(const DatabaseStamp&) const = default;
};

std::string databaseFile() {
    return dataFolder() + "/conversations.sqlite";
}

DatabaseStamp databaseStamp() {
    std::error_code missing;
    DatabaseStamp stamp;
    stamp.sizeInBytes = std::filesystem::file_size(databaseFile(), missing);
    stamp.modified = std::filesystem::last_write_time(databaseFile(), missing);
    return stamp;
}

bool isPending(const ConversationEntry& entry) {
    return entry.state == ConversationEntry::State::Pending;
}

/// Whether the two lists look alike; the texts of a bubble change only with its picture's file or caption.
bool isSame(const std::vector<ConversationEntry>& left, const std::vector<ConversationEntry>& right) {
    const auto isAlike = [](const ConversationEntry& one, const ConversationEntry& other) {
        const auto file = [](const ConversationEntry& entry) {
            return entry.picture ? entry.picture->file : std::string();
        };
        const MSMessageTemplateLayout& a = one.message.layout;
        const MSMessageTemplateLayout& b = other.message.layout;
        return one.kind == other.kind && one.text == other.text && one.sentAt == other.sentAt &&
               file(one) == file(other) && a.caption == b.caption && a.imageTitle == b.imageTitle &&
               a.subcaption == b.subcaption;
    };
    return std::ranges::equal(left, right, isAlike);
}

} // namespace

/// What the operations on the queue share; used by one of them at a time, but for the flag.
struct ConversationFeed::State {
    DatabaseStamp stamp;
    std::atomic<bool> isReadQueued = false;
};

ConversationFeed::ConversationFeed(ConversationStore store, QObject* parent)
    : QObject(parent)
    , _store(std::move(store))
    , _queue(std::make_unique<OperationQueue>(1))
    , _state(std::make_shared<State>()) {
    watch();
}

ConversationFeed::~ConversationFeed() {
    _watcher.reset();
    waitForStore();
}

void ConversationFeed::waitForStore() {
    _queue->waitUntilAllOperationsAreFinished();
}

void ConversationFeed::watch() {
    // Before something is stored there is no folder to watch.
    makeFolder(dataFolder());
    _watcher = FileWatcher::watch(
        databaseFile(), [weakState = std::weak_ptr(_state), feed = QPointer<ConversationFeed>(this)] {
            const auto state = weakState.lock();
            if (!state || state->isReadQueued.exchange(true)) {
                return;
            }
            DispatchQueue::mainQueue().async([feed] {
                if (feed) {
                    feed->enqueueReading(/*onlyIfChanged=*/true);
                }
            });
        });
}

void ConversationFeed::open(std::string name) {
    _name = std::move(name);
    _isFresh = true;
    _conversation = conversationNamed(_name);
    _conversation->setFailureHandler([feed = QPointer<ConversationFeed>(this), name = _name](
                                         const MSConversation::FailedInsertion& failure) {
        DispatchQueue::mainQueue().async([feed, name, failure] {
            if (feed && feed->_name == name) {
                emit feed->insertionFailed(failure);
            }
        });
    });
    reload();
}

void ConversationFeed::reload() {
    enqueueReading(/*onlyIfChanged=*/false);
}

void ConversationFeed::enqueueReading(bool onlyIfChanged) {
    _queue->addOperationWithBlock([feed = QPointer<ConversationFeed>(this), state = _state, store = _store,
                                      name = _name, onlyIfChanged] {
        state->isReadQueued = false;
        const DatabaseStamp stamp = databaseStamp();
        if (onlyIfChanged && stamp == state->stamp) {
            return;
        }
        state->stamp = stamp;
        DispatchQueue::mainQueue().async(
            [feed, name, content = store.content(name), names = store.conversations()] {
                if (feed) {
                    feed->take(name, content, names);
                }
            });
    });
}

void ConversationFeed::take(
    const std::string& name, const ConversationContent& content, const ConversationNames& names) {
    if (!names.error && names.names != _names) {
        _names = names.names;
        emit namesChanged();
    }
    if (name != _name) {
        return; // Another one was opened meanwhile.
    }
    if (content.error) {
        emit failed(*content.error);
        return;
    }
    const auto firstPending = std::ranges::find_if(content.entries, isPending);
    std::vector<ConversationEntry> sent(content.entries.begin(), firstPending);
    std::vector<ConversationEntry> pending(firstPending, content.entries.end());
    const bool isFresh = std::exchange(_isFresh, false);
    if (!isFresh && isSame(sent, _sent) && isSame(pending, _pending)) {
        return;
    }
    _sent = std::move(sent);
    _pending = std::move(pending);
    emit changed(/*isSameConversation=*/!isFresh);
}

void ConversationFeed::change(Step step, Finish finish) {
    _queue->addOperationWithBlock([feed = QPointer<ConversationFeed>(this), store = _store, name = _name,
                                      step = std::move(step), finish = std::move(finish)] {
        const auto error = step(store);
        DispatchQueue::mainQueue().async(
            [feed, name, error, finish, content = store.content(name), names = store.conversations()] {
                if (!feed) {
                    return;
                }
                feed->take(name, content, names);
                if (error) {
                    emit feed->failed(*error);
                }
                if (finish) {
                    finish(!error);
                }
            });
    });
}

void ConversationFeed::send(const std::string& typedText) {
    if (_isSending || (_pending.empty() && typedText.empty())) {
        return;
    }
    _isSending = true;
    change([name = _name, typedText](
               const ConversationStore& store) { return store.sendPendingAndText(name, typedText); },
        [this, typedText](bool isDone) {
            _isSending = false;
            emit sendingFinished(isDone, typedText);
        });
}

void ConversationFeed::dropPending() {
    change([name = _name](const ConversationStore& store) { return store.dropPending(name); }, {});
}

void ConversationFeed::insertAgain(std::vector<MSConversation::FailedInsertion> failures) {
    if (failures.empty()) {
        reload();
        return;
    }
    const MSConversation::FailedInsertion first = failures.front();
    failures.erase(failures.begin());
    const auto goOn = [feed = QPointer<ConversationFeed>(this), failures = std::move(failures)](
                          const std::optional<std::string>&) {
        DispatchQueue::mainQueue().async([feed, failures] {
            if (feed) {
                feed->insertAgain(failures);
            }
        });
    };
    if (first.message) {
        _conversation->insertMessage(*first.message, goOn);
    } else {
        _conversation->insertText(first.text, goOn);
    }
}

} // namespace exifcard
