#include "host/Settling.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QImage>
#include <QTimer>
#include <QWidget>

namespace exifcard {
namespace {

constexpr std::chrono::milliseconds kStep(20);
/// Long enough for a picture to be decoded and for any fade.
constexpr std::chrono::milliseconds kQuietTime(700);
constexpr std::chrono::seconds kLongestSettling(10);

void runLoop(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds longest) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(longest.count())) {
            return false;
        }
        runLoop(kStep);
    }
    return true;
}

QImage settledPicture(QWidget& widget) {
    QElapsedTimer total;
    QElapsedTimer quiet;
    total.start();
    quiet.start();
    QImage picture = widget.grab().toImage();
    const auto longest = std::chrono::milliseconds(kLongestSettling).count();
    while (!quiet.hasExpired(kQuietTime.count()) && !total.hasExpired(longest)) {
        runLoop(kStep * 2);
        QImage next = widget.grab().toImage();
        if (next != picture) {
            picture = std::move(next);
            quiet.restart();
        }
    }
    return picture;
}

} // namespace exifcard
