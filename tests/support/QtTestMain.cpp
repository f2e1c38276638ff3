#include "platform/uikit/UIApplication.h"

#include <gmock/gmock.h>

#include <QApplication>

/// The main function of the tests that need a toolkit; it draws off screen.
int main(int argumentCount, char** arguments) {
    testing::InitGoogleMock(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    exifcard::UIApplication::prepare();
    const QApplication application(argumentCount, arguments);
    exifcard::UIApplication::start();
    const int status = RUN_ALL_TESTS();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return status;
}
