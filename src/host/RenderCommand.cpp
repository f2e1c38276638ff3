#include "host/RenderCommand.h"

#include "host/HostAppearance.h"
#include "host/RenderViews.h"
#include "host/Settling.h"
#include "metadata/FieldKeys.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UITraitCollection.h"
#include "platform/uivalues/UIScreen.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QImage>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <variant>

namespace exifcard {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;
constexpr double kSmallestScale = 0.5;
constexpr double kLargestScale = 4;

struct RenderOptions {
    const RenderView* view = nullptr;
    RenderRequest request;
    QString output;
    double scale = 2;
    QString sizeCategory;
    bool isDark = false;
    bool isRightToLeft = false;
};

struct RenderAnswer {
    QString text;
    bool isWrongUsage = false;
};

QString helpText() {
    QString text = QStringLiteral(
        "Draws one view off screen, over a library of the given files alone.\n\n"
        "Usage: exifcard-messages render VIEW FILE... -o PNG [OPTIONS]\n\n"
        "Options:\n"
        "  -o, --output PNG          Where the picture goes\n"
        "  --dark                    In dark colours\n"
        "  --tablet                  In tablet shapes\n"
        "  --size-category C         XS, S, M, L (default), XL ... XXXL, AccessibilityM ... AccessibilityXXXL\n"
        "  --rtl                     Mirrored, as for languages that run from the right\n"
        "  --scale S                 Pixels a point, 0.5 to 4 (default 2)\n"
        "  --force                   Overwrite the picture\n\nViews:\n");
    for (const RenderView& view : renderViews()) {
        text += QStringLiteral("  %1 %2\n").arg(qString(view.name), -12).arg(qString(view.summary));
    }
    return text +
           QStringLiteral("\nExample:\n  exifcard-messages render host a.jpg b.jpg -o window.png --dark\n");
}

QString knownViews() {
    QStringList names;
    for (const RenderView& view : renderViews()) {
        names.append(qString(view.name));
    }
    return names.join(QStringLiteral(", "));
}

RenderAnswer wrongUsage(const QString& fault) {
    return {.text = fault, .isWrongUsage = true};
}

void addOptions(QCommandLineParser& parser) {
    for (const char* const flag : {"dark", "tablet", "rtl", "force"}) {
        parser.addOption(QCommandLineOption(QString::fromLatin1(flag)));
    }
    parser.addOptions({{{QStringLiteral("o"), QStringLiteral("output")}, {}, QStringLiteral("PNG")},
        {QStringLiteral("size-category"), {}, QStringLiteral("C"), QStringLiteral("L")},
        {QStringLiteral("scale"), {}, QStringLiteral("S"), QStringLiteral("2")},
        {{QStringLiteral("h"), QStringLiteral("help")}, {}}});
}

std::optional<QString> faultOf(const RenderOptions& options, const QString& viewName, bool mayOverwrite) {
    if (viewName.isEmpty()) {
        return QStringLiteral("render: a view is missing; there are ") + knownViews();
    }
    if (options.view == nullptr) {
        return QStringLiteral("render: there is no view %1; there are %2").arg(viewName, knownViews());
    }
    if (options.output.isEmpty()) {
        return QStringLiteral("render: -o PNG is missing");
    }
    if (options.view->needsFiles && options.request.files.empty()) {
        return QStringLiteral("render: %1 needs a file").arg(viewName);
    }
    if (!(options.scale >= kSmallestScale && options.scale <= kLargestScale)) {
        return QStringLiteral("render: --scale is a number from 0.5 to 4");
    }
    if (!mayOverwrite && QFileInfo::exists(options.output)) {
        return QStringLiteral("render: %1 exists; --force overwrites it").arg(options.output);
    }
    return std::nullopt;
}

std::variant<RenderOptions, RenderAnswer> optionsFrom(QStringList list) {
    list.removeAt(1);
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(list)) {
        return wrongUsage(QStringLiteral("render: ") + parser.errorText());
    }
    if (parser.isSet(QStringLiteral("help"))) {
        return RenderAnswer{.text = helpText()};
    }
    const QStringList positional = parser.positionalArguments();
    RenderOptions options;
    options.view = renderViewNamed(textFromQString(positional.value(0)));
    for (const QString& file : positional.mid(1)) {
        options.request.files.push_back(textFromQString(QFileInfo(file).absoluteFilePath()));
    }
    options.request.isTablet = parser.isSet(QStringLiteral("tablet"));
    options.output = parser.value(QStringLiteral("output"));
    options.scale = parser.value(QStringLiteral("scale")).toDouble();
    options.sizeCategory = parser.value(QStringLiteral("size-category"));
    options.isDark = parser.isSet(QStringLiteral("dark"));
    options.isRightToLeft = parser.isSet(QStringLiteral("rtl"));
    if (const auto fault = faultOf(options, positional.value(0), parser.isSet(QStringLiteral("force")))) {
        return wrongUsage(*fault);
    }
    return options;
}

void applyTraits(const RenderOptions& options) {
    QApplication::setLayoutDirection(options.isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    UITraitCollection traits = UITraitCollection::currentTraitCollection();
    traits.userInterfaceStyle = options.isDark ? UIUserInterfaceStyle::Dark : UIUserInterfaceStyle::Light;
    traits.userInterfaceIdiom =
        options.request.isTablet ? UIUserInterfaceIdiom::Pad : UIUserInterfaceIdiom::Phone;
    traits.preferredContentSizeCategory = contentSizeCategoryNamed(textFromQString(options.sizeCategory));
    traits.isRightToLeft = options.isRightToLeft;
    UITraitCollection::setCurrentTraitCollection(traits);
    if (options.request.isTablet) {
        UIScreen::setMainScreen({.sizeInPoints = {820, 1180}, .scale = 2});
    }
}

int fail(const QString& fault) {
    std::fprintf(stderr, "exifcard-messages: %s\n", fault.toLocal8Bit().constData());
    return kFailed;
}

int draw(const RenderOptions& options) {
    RenderContext context(options.request);
    const auto widget = options.view->make(context);
    if (!widget) {
        return fail(qString(context.error()));
    }
    widget->setAttribute(Qt::WA_DontShowOnScreen);
    widget->show();
    const QImage picture = settledPicture(*widget);
    return picture.save(options.output, "PNG")
               ? kDone
               : fail(QStringLiteral("cannot write %1; check the rights and the room of its folder")
                          .arg(options.output));
}

} // namespace

int runRender(const QStringList& list, int argumentCount, char** arguments) {
    const auto parsed = optionsFrom(list);
    if (const auto* const answer = std::get_if<RenderAnswer>(&parsed)) {
        if (!answer->isWrongUsage) {
            std::fputs(answer->text.toLocal8Bit().constData(), stdout);
            return kDone;
        }
        fail(answer->text);
        return kWrongUsage;
    }
    const auto& options = std::get<RenderOptions>(parsed);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(options.scale));
    UIApplication::prepare();
    const QApplication application(argumentCount, arguments);
    UIApplication::start();
    applyTraits(options);
    const int status = draw(options);
    // As the window ends: pictures of what is out of sight may still be made, by what would be torn down.
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace exifcard
