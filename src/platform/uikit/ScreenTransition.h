#pragma once

#include <QPixmap>
#include <QVariantAnimation>
#include <QWidget>

namespace exifcard {

/// Shows how one screen gives way to another, from pictures; lies above the real ones until `finished`. A
/// cross fade needs a picture of the one before alone, which vanishes over whatever is below.
class ScreenTransition : public QWidget {
    Q_OBJECT

public:
    enum class Kind { Push, Pop, CrossFade };

    /// @param from,to  Views of the size of `place`, laid out; only looked at here. A cross fade looks at
    /// `from`
    ///                 alone, which may be the parent.
    ScreenTransition(QWidget& from, QWidget& to, Kind kind, const QRect& place, QWidget* parent);

    void start();
    /// Stops without `finished`.
    void cancel();

signals:
    void finished();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintSlide(QPainter& painter, const QPixmap& below, const QPixmap& above, double covered);

    QPixmap _from;
    QPixmap _to;
    Kind _kind;
    QVariantAnimation _progress;
};

} // namespace exifcard
