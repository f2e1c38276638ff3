#include "host/Tour.h"

#include "host/ConversationFeed.h"
#include "host/ExtensionPanel.h"
#include "host/HostAppearance.h"
#include "host/InputBar.h"
#include "host/LibraryAccess.h"
#include "host/MessagesWindow.h"
#include "host/Settling.h"
#include "platform/uikit/MSMessagesAppViewController.h"
#include "platform/uikit/SynthesizedClick.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UICollectionReusableView.h"

#include <QDir>
#include <QImage>

#include <chrono>
#include <cstdio>

namespace exifcard {
namespace {

constexpr std::chrono::minutes kLongestImport(30);

void say(const QString& line) {
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
}

UICollectionViewCell* firstVisibleCell(QWidget& view) {
    UICollectionViewCell* first = nullptr;
    for (auto* const cell : view.findChildren<UICollectionViewCell*>()) {
        const auto place = [&view](const QWidget* widget) { return widget->mapTo(&view, QPoint()); };
        const bool comesBefore = first == nullptr || place(cell).y() < place(first).y() ||
                                 (place(cell).y() == place(first).y() && place(cell).x() < place(first).x());
        if (cell->isVisible() && comesBefore) {
            first = cell;
        }
    }
    return first;
}

} // namespace

bool Tour::save(const QString& name) {
    const QString file = _folder + QLatin1Char('/') + name + QStringLiteral(".png");
    if (settledPicture(_window).save(file, "PNG")) {
        say(QStringLiteral("  ") + file);
        return true;
    }
    say(QStringLiteral("exifcard-messages: cannot write ") + file);
    return false;
}

bool Tour::sendFirstPhoto() {
    QWidget& screen = _window.panel().extension().view();
    waitUntil([&screen] { return firstVisibleCell(screen) != nullptr; });
    UICollectionViewCell* const cell = firstVisibleCell(screen);
    if (cell == nullptr) {
        say(QStringLiteral("exifcard-messages: the panel shows no photo"));
        return false;
    }
    sendClick(*cell, cell->rect().center());
    return waitUntil([this] { return !_window.feed().pending().empty(); });
}

bool Tour::run(const QString& pictures, const std::optional<QString>& library) {
    QDir().mkpath(pictures);
    _folder = QDir(pictures).absolutePath();
    bool isImporting = library.has_value();
    QObject::connect(&_window.libraryAccess(), &LibraryAccess::progressed, &_window,
        [&isImporting](double part) { isImporting = isImporting && part >= 0; });
    if (library) {
        _window.openLibrary(textFromQString(*library));
    }
    waitUntil([&isImporting] { return !isImporting; }, kLongestImport);
    say(QStringLiteral("Pictures of the screens:"));
    ExtensionPanel& panel = _window.panel();
    bool isDone = save(QStringLiteral("1-compact"));
    panel.setStyle(ExtensionPanel::Style::Expanded, /*isAnimated=*/false);
    isDone = save(QStringLiteral("2-albums")) && isDone;
    panel.setStyle(ExtensionPanel::Style::Compact, /*isAnimated=*/false);
    isDone = sendFirstPhoto() && isDone;
    isDone = save(QStringLiteral("3-pending")) && isDone;
    const std::size_t sentBefore = _window.feed().sent().size();
    emit _window.inputBar().sendRequested();
    isDone = waitUntil([this, sentBefore] { return _window.feed().sent().size() > sentBefore; }) && isDone;
    isDone = save(QStringLiteral("4-sent")) && isDone;
    _appearance.toggle();
    return save(QStringLiteral("5-dark")) && isDone;
}

} // namespace exifcard
