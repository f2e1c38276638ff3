#pragma once

#include <QPixmap>
#include <QWidget>

namespace exifcard {

/// Covers a widget with a picture of it, which then fades away over what it has become.
class CrossFade : public QWidget {
    Q_OBJECT

public:
    /// Takes the picture. Owned by the covered widget.
    explicit CrossFade(QWidget& covered);

    /// 0.2 s; deletes itself then.
    void start();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap _picture;
    double _opacity = 1;
};

} // namespace exifcard
