#include "host/EndingSignals.h"

#include "platform/foundation/FileDescriptor.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>

#include <sys/eventfd.h>
#include <unistd.h>

namespace exifcard {
namespace {

constexpr std::array kSignals = {SIGHUP, SIGINT, SIGTERM};

/// Never closed: a signal may come at any time.
int wakeNumber() {
    static const FileDescriptor wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    return wake.number();
}

int handlersWakeNumber = -1; // Written before the handler is installed.
std::atomic<bool> isReceived = false;
static_assert(std::atomic<bool>::is_always_lock_free);

void setHandler(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : kSignals) {
        struct sigaction previous = {};
        if (sigaction(number, nullptr, &previous) == 0 && previous.sa_handler != SIG_IGN) {
            sigaction(number, &action, nullptr);
        }
    }
}

/// Calls nothing but what may be called at any place of the program. Two may run at once, in two threads.
void onSignal(int number) {
    const int error = errno;
    if (isReceived.exchange(true)) {
        std::signal(number, SIG_DFL);
        std::raise(number); // Ends the program when this returns.
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(handlersWakeNumber, &one, sizeof(one));
    errno = error;
}

} // namespace

EndingSignals::EndingSignals(QObject* parent) : QObject(parent) {
    handlersWakeNumber = wakeNumber();
    auto* const notifier = new QSocketNotifier(handlersWakeNumber, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        eventfd_t ignored = 0;
        eventfd_read(handlersWakeNumber, &ignored);
        emit received();
    });
    setHandler(onSignal);
}

EndingSignals::~EndingSignals() {
    setHandler(SIG_DFL);
}

} // namespace exifcard
