// A window of the toolkit and nothing else, to its first paint: what the messaging window is measured
// against. Prints the processor time of that in milliseconds, then its resident memory in KiB.
#include "programs/ResidentMemory.h"
#include "programs/Shown.h"

#include <QApplication>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace {

class BareWindow : public QWidget {
protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter(this).fillRect(rect(), Qt::white);
        QTimer::singleShot(0, this, [] {
            exifcard::tellShown();
            QCoreApplication::quit();
        });
    }
};

} // namespace

int main(int argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    BareWindow window;
    window.resize(420, 860);
    window.show();
    QApplication::exec();
    std::printf("%ld\n", exifcard::residentKibibytes());
    std::fflush(nullptr);
    std::_Exit(0);
}
