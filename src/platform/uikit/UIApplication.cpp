#include "platform/uikit/UIApplication.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/uikit/ApplicationPalette.h"

#include <QApplication>
#include <QPixmapCache>

#include <memory>

namespace exifcard {
namespace {

/// Enough for the pictures and shadows of a few screens at twice the scale.
constexpr int kKeptPicturesInKibibytes = 48 * 1024;

void drainMainQueueFromToolkit() {
    // The handler owns what it posts to, so that a last wake from another thread finds it still there.
    MainRunLoop::setWakeHandler([receiver = std::make_shared<QObject>()] {
        QMetaObject::invokeMethod(
            receiver.get(), [] { MainRunLoop::drain(); }, Qt::QueuedConnection);
    });
}

} // namespace

void UIApplication::prepare() {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication::setStyle(QStringLiteral("Fusion"));
}

void UIApplication::start() {
    QPixmapCache::setCacheLimit(kKeptPicturesInKibibytes);
    QApplication::setPalette(applicationPalette());
    drainMainQueueFromToolkit();
}

void UIApplication::postMemoryWarning() {
    QPixmapCache::clear();
    NotificationCenter::defaultCenter().postNotificationName(kMemoryWarningNotification, nullptr);
}

} // namespace exifcard
