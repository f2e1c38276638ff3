#include "platform/uikit/UIApplication.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/ApplicationPalette.h"
#include "platform/uikit/ProgramHeap.h"
#include "platform/uikit/SystemFonts.h"
#include "platform/uikit/UIFont.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QLocale>
#include <QPixmapCache>
#include <QResource>
#include <QTimer>
#include <QWidget>

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
/// The first photos are on screen by then, and their pictures small change.
constexpr int kStartInMilliseconds = 1000;
/// Until the first photos are shown on a computer of today; what is read earlier takes the time from them.
constexpr int kUntilSystemFonts = 50;

void drainMainQueueFromToolkit() {
    // The handler owns what it posts to, so that a last wake from another thread finds it still there.
    MainRunLoop::setWakeHandler([receiver = std::make_shared<QObject>()] {
        QMetaObject::invokeMethod(
            receiver.get(), [] { MainRunLoop::drain(); }, Qt::QueuedConnection);
    });
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

bool doSystemFontsFollow = false;

bool canOwnFontsWriteLanguage() {
    const QLocale locale = QLocale::system();
    const auto script = locale.script();
    return locale.language() == QLocale::C || script == QLocale::LatinScript ||
           script == QLocale::CyrillicScript || script == QLocale::GreekScript;
}

/// With all fonts, whatever was written with the own ones alone.
void writeAnew() {
    QFontDatabase::removeAllApplicationFonts(); // They went with those that were known before.
    addBundledFonts();
    for (QWidget* const widget : QApplication::allWidgets()) {
        QEvent change(QEvent::FontChange);
        QCoreApplication::sendEvent(widget, &change);
        widget->update();
    }
}

} // namespace

void UIApplication::prepare(Fonts fonts) {
    prepareHeap();
    doSystemFontsFollow = fonts == Fonts::OwnFirst && canOwnFontsWriteLanguage();
    doSystemFontsFollow ? loadNoFonts() : loadSystemFonts();
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication::setStyle(QStringLiteral("Fusion"));
}

void UIApplication::start() {
    QTimer::singleShot(kStartInMilliseconds, [] { keepPicturesOutOfHeap(); });
    MainRunLoop::goFirst();
    QPixmapCache::setCacheLimit(kKeptPicturesInKibibytes);
    addBundledFonts();
    if (doSystemFontsFollow) {
        QTimer::singleShot(kUntilSystemFonts, [] { loadSystemFontsLater(writeAnew); });
    }
    QApplication::setPalette(applicationPalette());
    installAccessibility();
    drainMainQueueFromToolkit();
}

void UIApplication::postMemoryWarning() {
    QPixmapCache::clear();
    NotificationCenter::defaultCenter().postNotificationName(kMemoryWarningNotification, nullptr);
}

} // namespace exifcard
