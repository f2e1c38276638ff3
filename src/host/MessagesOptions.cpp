#include "host/MessagesOptions.h"

#include "platform/uikit/Text+Qt.h"
#include "platform/uivalues/UIScreen.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace exifcard {
namespace {

constexpr const char* kHelp =
    R"(The messaging window: conversations, with photos and their camera settings below.

Usage: exifcard-messages [OPTIONS]
       exifcard-messages render VIEW FILE... -o PNG [OPTIONS]

Options:
  --library FOLDER        Take the folder into the photo library and show its photos
  --conversation NAME     Open that conversation; a new one begins with what is sent first
  --idiom phone|tablet    Take these shapes, however wide the window is
  --screen WxH@S          Take the screen to be this large, in points and scale
  --log debug             Write debug lines to standard error (debug=system: to the system log)
  -h, --help              Print this help
  --version               Print the version

Keys: Ctrl+E panel, Ctrl+Enter send, F6 next region, Ctrl+Shift+D light or dark, Esc back.

Examples:
The window, where you left it:
  exifcard-messages
Photos of one folder, for one conversation:
  exifcard-messages --library ~/Pictures/Alps --conversation Maja
A picture of the window with these photos, drawn off screen:
  exifcard-messages render host a.jpg b.jpg -o window.png --dark

Exit status: 0 all done; 1 something failed; 2 wrong usage, nothing done.
)";

OptionsAnswer wrongUsage(const QString& fault) {
    return {.text = fault + QStringLiteral("; see exifcard-messages --help"), .isWrongUsage = true};
}

std::optional<QString> valueOf(const QCommandLineParser& parser, const QString& name) {
    return parser.isSet(name) ? std::optional(parser.value(name)) : std::nullopt;
}

/// What is wrong with the values, or nothing.
std::optional<QString> faultOf(const MessagesOptions& options, const std::optional<QString>& idiom) {
    if (options.library && !QFileInfo(*options.library).isDir()) {
        return QStringLiteral("--library: no such folder: ") + *options.library;
    }
    if (options.conversation && options.conversation->isEmpty()) {
        return QStringLiteral("--conversation: a conversation needs a name");
    }
    if (idiom && idiom != QStringLiteral("phone") && idiom != QStringLiteral("tablet")) {
        return QStringLiteral("--idiom: phone or tablet, not ") + *idiom;
    }
    if (options.screen && !UIScreen::screenFromText(textFromQString(*options.screen))) {
        return QStringLiteral("--screen: is no screen such as 390x844@3: ") + *options.screen;
    }
    if (options.log && options.log != QStringLiteral("debug") &&
        options.log != QStringLiteral("debug=system")) {
        return QStringLiteral("--log: debug or debug=system, not ") + *options.log;
    }
    return std::nullopt;
}

} // namespace

std::variant<MessagesOptions, OptionsAnswer> messagesOptionsFrom(const QStringList& arguments) {
    QCommandLineParser parser;
    for (const char* const name : {"library", "conversation", "idiom", "screen", "log", "tour"}) {
        const QString option = QString::fromLatin1(name);
        parser.addOption(QCommandLineOption(option, QString(), option));
    }
    parser.addOptions({{{QStringLiteral("h"), QStringLiteral("help")}, {}}, {QStringLiteral("version"), {}}});
    if (!parser.parse(arguments)) {
        QString fault = parser.errorText();
        if (fault.endsWith(QLatin1Char('.'))) {
            fault.chop(1);
        }
        return wrongUsage(fault);
    }
    if (parser.isSet(QStringLiteral("help"))) {
        return OptionsAnswer{.text = QString::fromUtf8(kHelp)};
    }
    if (parser.isSet(QStringLiteral("version"))) {
        return OptionsAnswer{.text = QStringLiteral("exifcard-messages " EXIFCARD_VERSION "\n")};
    }
    if (!parser.positionalArguments().isEmpty()) {
        return wrongUsage(QStringLiteral("what is ") + parser.positionalArguments().first() +
                          QStringLiteral(" for? A folder is given as --library FOLDER"));
    }
    MessagesOptions options = {.library = valueOf(parser, QStringLiteral("library")),
        .conversation = valueOf(parser, QStringLiteral("conversation")),
        .isTablet = std::nullopt,
        .screen = valueOf(parser, QStringLiteral("screen")),
        .log = valueOf(parser, QStringLiteral("log")),
        .tour = valueOf(parser, QStringLiteral("tour"))};
    const auto idiom = valueOf(parser, QStringLiteral("idiom"));
    if (const auto fault = faultOf(options, idiom)) {
        return wrongUsage(*fault);
    }
    if (options.library) {
        options.library = QFileInfo(*options.library).canonicalFilePath();
    }
    if (idiom) {
        options.isTablet = idiom == QStringLiteral("tablet");
    }
    return options;
}

} // namespace exifcard
