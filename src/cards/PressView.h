#pragma once

#include "platform/uikit/UIView.h"

#include <QPixmap>

class QVariantAnimation;

namespace exifcard {

/// Stands in for a pressed card: a picture of it that shrinks a little under the finger. Belongs to the card
/// and goes by itself when it has its size again.
class PressView : public UIView {
    Q_OBJECT

public:
    /// Takes the picture; covers the card at once.
    explicit PressView(QWidget& card);

    void setPressed(bool isPressed);
    /// 1 at rest.
    double shownScale() const { return _scale; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap _picture;
    QVariantAnimation* _animation; ///< A child.
    double _scale = 1;
};

} // namespace exifcard
