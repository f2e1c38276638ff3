#pragma once

#include <QGraphicsEffect>
#include <QPixmap>
#include <QTransform>

namespace exifcard {

/// Shows a view as a whole through, as it was at the last step. The toolkit's own effect pictures the view
/// anew each time that anything below it is drawn.
class FadeEffect : public QGraphicsEffect {
public:
    explicit FadeEffect(QObject* parent) : QGraphicsEffect(parent) {}

    double opacity() const { return _opacity; }
    /// A step: the view is pictured anew when it is drawn next.
    void setOpacity(double opacity);

protected:
    void draw(QPainter* painter) override;

private:
    double _opacity = 1;
    bool _isStale = true;
    QPixmap _picture;
    QPoint _place;         ///< On the device.
    QTransform _transform; ///< Of the device, when the picture was taken.
};

} // namespace exifcard
