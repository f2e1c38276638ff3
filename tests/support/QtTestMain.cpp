#include "platform/uikit/UIApplication.h"
#include "support/MainQueueWatchdog.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

/// The toolkit forgets the recognizer of a scroller whose widget goes, 16 bytes a list; the desktop's bus
/// keeps the message that it is reading when a program ends.
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:QScroller::grabGesture\nleak:libdbus-1.so\n";
}

namespace {

int allTestsRun(int argumentCount, char** arguments) {
    exifcard::UIApplication::prepare();
    const exifcard::WatchedApplication application(argumentCount, arguments);
    exifcard::UIApplication::start();
    const int status = RUN_ALL_TESTS();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return status;
}

/// Looks for leaks while the toolkit's own threads still run: one that ends just then holds what it has not
/// freed yet where the checker does not look. Ends the program where it finds any.
void checkLeaks() {
#ifdef __SANITIZE_ADDRESS__
    __lsan_do_leak_check();
#endif
}

} // namespace

/// The main function of the tests that need a toolkit; it draws off screen, or on the platform that
/// EXIFCARD_TEST_PLATFORM names.
int main(int argumentCount, char** arguments) {
    testing::InitGoogleMock(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM",
        qEnvironmentVariable("EXIFCARD_TEST_PLATFORM", QStringLiteral("offscreen")).toUtf8());
    const int status = allTestsRun(argumentCount, arguments);
    checkLeaks();
    return status;
}
