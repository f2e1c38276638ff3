#include "host/ToolkitMessages.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

struct Message {
    QtMsgType type = QtDebugMsg;
    const char* category = nullptr; ///< The toolkit's own, which stay.
    QString text;
};

struct State {
    std::mutex mutex;
    bool isOpeningDisplay = false; // Guarded by mutex.
    std::vector<Message> held;     // Guarded by mutex.
    QtMessageHandler toolkitsHandler = nullptr;
};

State& state() {
    static auto* const state = new State;
    return *state;
}

/// Of what the toolkit says on its way to the end, its warnings name what it tried.
[[noreturn]] void endWithoutDisplay(const std::vector<Message>& said, const QString& lastWords) {
    QStringList tried;
    for (const Message& message : said) {
        if (message.type == QtWarningMsg) {
            tried.append(message.text.simplified());
        }
    }
    const QString cause = tried.isEmpty() ? lastWords.simplified() : tried.join(QLatin1String(", "));
    std::fprintf(stderr,
        "exifcard-messages: there is no display: %s; exifcard-messages render draws off screen\n",
        cause.toLocal8Bit().constData());
    std::fflush(nullptr);
    constexpr int kFailed = 1;
    std::_Exit(kFailed);
}

void take(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    // Nobody can do anything about a folder that the toolkit misses and does without.
    if (message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"))) {
        return;
    }
    {
        const std::scoped_lock lock(state().mutex);
        if (state().isOpeningDisplay && type == QtFatalMsg) {
            endWithoutDisplay(state().held, message);
        }
        if (state().isOpeningDisplay) {
            state().held.push_back({type, context.category, message});
            return;
        }
    }
    state().toolkitsHandler(type, context, message);
}

} // namespace

void passOnToolkitMessages() {
    state().toolkitsHandler = qInstallMessageHandler(take);
}

DisplayOpening::DisplayOpening() {
    const std::scoped_lock lock(state().mutex);
    state().isOpeningDisplay = true;
}

DisplayOpening::~DisplayOpening() {
    std::vector<Message> held;
    {
        const std::scoped_lock lock(state().mutex);
        state().isOpeningDisplay = false;
        held = std::exchange(state().held, {});
    }
    for (const Message& message : held) {
        state().toolkitsHandler(
            message.type, QMessageLogContext(nullptr, 0, nullptr, message.category), message.text);
    }
}

} // namespace exifcard
