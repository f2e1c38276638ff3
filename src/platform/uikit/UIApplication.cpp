#include "platform/uikit/UIApplication.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/ApplicationPalette.h"
#include "platform/uikit/UIFont.h"

#include <malloc.h>

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QPixmapCache>
#include <QResource>

#include <memory>

/// A linker leaves out what nobody names; the name is made outside of every namespace.
static void keepFonts() {
    Q_INIT_RESOURCE(fonts);
}

namespace exifcard {
namespace {

constexpr double kControlTextSize = 15;
/// Enough for the icons and shadows of a few screens at twice the scale.
constexpr int kKeptPicturesInKibibytes = 16 * 1024;
/// Smaller than a tile's picture. The C library would raise it with the first picture that is freed.
constexpr int kLeastMappedBytes = 128 * 1024;

void drainMainQueueFromToolkit() {
    // The handler owns what it posts to, so that a last wake from another thread finds it still there.
    MainRunLoop::setWakeHandler([receiver = std::make_shared<QObject>()] {
        QMetaObject::invokeMethod(
            receiver.get(), [] { MainRunLoop::drain(); }, Qt::QueuedConnection);
    });
}

/// Has pictures given back to the system as soon as they are freed, and not kept among small objects.
void keepPicturesOutOfHeap() {
    mallopt(M_MMAP_THRESHOLD, kLeastMappedBytes);
}

void addBundledFonts() {
    keepFonts();
    const QDir fonts(QStringLiteral(":/fonts"));
    for (const QString& name : fonts.entryList()) {
        // Not copied: they lie in the program as they are.
        const QResource font(fonts.filePath(name));
        QFontDatabase::addApplicationFontFromData(
            QByteArray::fromRawData(reinterpret_cast<const char*>(font.data()), font.size()));
    }
    QApplication::setFont(qFont({"AvenirNext-Regular", kControlTextSize}));
}

} // namespace

void UIApplication::prepare() {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication::setStyle(QStringLiteral("Fusion"));
}

void UIApplication::start() {
    keepPicturesOutOfHeap();
    MainRunLoop::goFirst();
    QPixmapCache::setCacheLimit(kKeptPicturesInKibibytes);
    addBundledFonts();
    QApplication::setPalette(applicationPalette());
    installAccessibility();
    drainMainQueueFromToolkit();
}

void UIApplication::postMemoryWarning() {
    QPixmapCache::clear();
    NotificationCenter::defaultCenter().postNotificationName(kMemoryWarningNotification, nullptr);
}

} // namespace exifcard
