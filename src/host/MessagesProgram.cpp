#include "host/MessagesProgram.h"

#include "host/ConversationFeed.h"
#include "host/EndingSignals.h"
#include "host/HostAppearance.h"
#include "host/HostExtension.h"
#include "host/MessagesOptions.h"
#include "host/MessagesWindow.h"
#include "host/RenderCommand.h"
#include "host/Settling.h"
#include "host/SingleInstance.h"
#include "host/ToolkitMessages.h"
#include "host/Tour.h"
#include "metadata/FieldKeys.h"
#include "platform/foundation/Log.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UITraitCollection.h"
#include "platform/uivalues/UIScreen.h"
#include "sending/PhotoSending.h"
#include "settings/FieldList.h"

#include <QApplication>
#include <QScreen>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace exifcard {
namespace {

constexpr int kLeastTabletWidth = 700;
constexpr QSize kTabletWindowSize(768, 1024);
constexpr QSize kWindowFrame(10, 40); ///< Of most desktops; they tell it only when the window is shown.
constexpr std::chrono::seconds kLongestLastSending(3); ///< For a disk that does not answer.
constexpr UIScreen kTabletScreen = {.sizeInPoints = {820, 1180}, .scale = 2};

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

QStringList argumentList(int argumentCount, char** arguments) {
    QStringList list;
    for (int index = 0; index < argumentCount; ++index) {
        list.append(QString::fromLocal8Bit(arguments[index]));
    }
    return list;
}

int answer(const OptionsAnswer& given) {
    if (given.isWrongUsage) {
        std::fprintf(stderr, "exifcard-messages: %s\n", given.text.toLocal8Bit().constData());
        return kWrongUsage;
    }
    std::fputs(given.text.toLocal8Bit().constData(), stdout);
    return kDone;
}

bool hasDisplay() {
    const auto isSet = [](const char* name) {
        const char* const value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
}

/// Phone or tablet for as long as the program runs.
void setIdiom(bool isTablet, const MessagesOptions& options) {
    UITraitCollection traits = UITraitCollection::currentTraitCollection();
    traits.userInterfaceIdiom = isTablet ? UIUserInterfaceIdiom::Pad : UIUserInterfaceIdiom::Phone;
    traits.isRightToLeft = QApplication::isRightToLeft();
    UITraitCollection::setCurrentTraitCollection(traits);
    if (options.screen) {
        UIScreen::setMainScreen(UIScreen::screenFromText(textFromQString(*options.screen)).value());
    } else if (isTablet) {
        UIScreen::setMainScreen(kTabletScreen);
    }
}

/// Tablet shapes are cramped in a window that was left as narrow as a phone's, or is the first.
void widenForTablet(QWidget& window) {
    const bool coversScreen = (window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0;
    if (window.width() >= kLeastTabletWidth || coversScreen) {
        return;
    }
    const QRect available = window.screen()->availableGeometry();
    const QRect room(available.topLeft(), available.size() - kWindowFrame);
    const QSize size = kTabletWindowSize.boundedTo(room.size());
    window.resize(size);
    if (window.testAttribute(Qt::WA_Moved)) { // Where it was, but for what would lie beyond the screen.
        window.move(std::clamp(window.x(), room.left(), room.left() + room.width() - size.width()),
            std::clamp(window.y(), room.top(), room.top() + room.height() - size.height()));
    }
}

/// The window that the options and the last time ask for, shown.
std::unique_ptr<MessagesWindow> openWindow(
    const MessagesOptions& options, HostAppearance& appearance, WindowState state) {
    if (options.conversation) {
        state.conversation = textFromQString(*options.conversation);
    }
    const std::string conversation =
        state.conversation.empty() ? firstConversationName() : state.conversation;
    if (options.library) {
        PHPhotoLibrary::grantForThisProcess(); // Who names a folder has decided, before a screen asks.
    }
    auto window = std::make_unique<MessagesWindow>(makeExtension(), std::move(state), appearance);
    if (options.isTablet == true) {
        widenForTablet(*window);
    }
    setIdiom(options.isTablet.value_or(window->width() >= kLeastTabletWidth), options);
    window->openConversation(conversation);
    window->show();
    window->activateWindow(); // No window manager, no focus that comes by itself.
    window->activateExtension();
    return window;
}

/// What a later start hands over: the conversation and the folder, empty where it names none.
QStringList wishesOf(const MessagesOptions& options) {
    return {options.conversation.value_or(QString()), options.library.value_or(QString())};
}

void followWishes(MessagesWindow& window, const QStringList& wishes) {
    if (!wishes.value(0).isEmpty()) {
        window.openConversation(textFromQString(wishes.value(0)));
    }
    if (!wishes.value(1).isEmpty()) {
        window.addFolder(textFromQString(wishes.value(1)));
    }
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

int runWindow(const MessagesOptions& options, UIUserInterfaceStyle desktop) {
    SingleInstance instance;
    if (instance.handOver(wishesOf(options))) {
        return kDone;
    }
    const EndingSignals endingSignals;
    QObject::connect(
        &endingSignals, &EndingSignals::received, qApp, &QApplication::quit); // Closes the window.
    instance.listen();
    WindowState state = WindowState::load();
    HostAppearance appearance(state.appearance, desktop);
    appearance.followDesktop();
    const auto window = openWindow(options, appearance, std::move(state));
    QObject::connect(&instance, &SingleInstance::startedAgain, window.get(),
        [&window](const QStringList& wishes) { followWishes(*window, wishes); });
    window->openLibrary(options.library ? std::optional(textFromQString(*options.library)) : std::nullopt);
    const int status = QApplication::exec();
    // A photo that was tapped before the window closed is in the field the next time, and not without its
    // text.
    waitUntil([] { return !PhotoSending::isAnyUnderWay(); }, kLongestLastSending);
    return status;
}

int runTour(const MessagesOptions& options) {
    HostAppearance appearance(UIUserInterfaceStyle::Light, UIUserInterfaceStyle::Light);
    const auto window = openWindow(options, appearance, WindowState());
    return Tour(*window, appearance).run(*options.tour, options.library) ? kDone : kFailed;
}

} // namespace

int runMessages(int argumentCount, char** arguments) {
    const QStringList list = argumentList(argumentCount, arguments);
    passOnToolkitMessages();
    setFieldTest(isFieldKey); // What a settings file names is no reason to end.
    if (list.value(1) == QStringLiteral("render")) {
        return runRender(list, argumentCount, arguments);
    }
    const auto parsed = messagesOptionsFrom(list);
    if (const auto* const given = std::get_if<OptionsAnswer>(&parsed)) {
        return answer(*given);
    }
    const auto& options = std::get<MessagesOptions>(parsed);
    if (options.log) {
        setDebugLogTarget(
            options.log == QStringLiteral("debug") ? LogTarget::StandardError : LogTarget::System);
    }
    if (options.tour) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_SCALE_FACTOR", "2"); // Pictures as on a fine screen.
    } else if (!hasDisplay()) {
        std::fputs(
            "exifcard-messages: there is no display; exifcard-messages render draws off screen\n", stderr);
        return kFailed;
    }
    UIApplication::prepare(options.tour ? UIApplication::Fonts::All : UIApplication::Fonts::OwnFirst);
    auto displayOpening = std::make_optional<DisplayOpening>();
    QApplication application(argumentCount, arguments);
    displayOpening.reset();
    QApplication::setApplicationName(QStringLiteral("exifcard"));
    QApplication::setDesktopFileName(QStringLiteral("org.exifcard.messages"));
    const UIUserInterfaceStyle desktop = styleOfDesktopPalette();
    UIApplication::start();
    const int status = options.tour ? runTour(options) : runWindow(options, desktop);
    // An import or a picture that is still being read would use what is being torn down. Everything that had
    // to be written is.
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace exifcard
