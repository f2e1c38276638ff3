#pragma once

#include "platform/uivalues/UIColor.h"

#include <QAbstractButton>

#include <string>

namespace exifcard {

/// A button that shows a bundled picture, bare or on a disc, and its text after the picture. At least 44 by
/// 44 points to the finger, however small what it shows. Enter presses it as Space does.
class PictureButton : public QAbstractButton {
    Q_OBJECT

public:
    /// Lengths in points.
    struct Look {
        std::string picture = {}; ///< As `imageNamed` takes it; empty for none.
        /// In its place while the button is not checked; empty for the same.
        std::string uncheckedPicture = {};
        double pictureSide = 24;
        UIColor color = {};  ///< Of picture and text.
        double discSide = 0; ///< 0 for no disc.
        UIColor discColor = {};
        Qt::Alignment place = Qt::AlignCenter; ///< Of disc, picture and text, in the direction of reading.
        double inset = 0;                      ///< From the edges that they are placed at.
        bool isMirrored = false; ///< The picture points the other way where one reads from the right.
    };

    /// @param name  What a screen reader says, and the tooltip; empty for neither.
    PictureButton(Look look, const QString& name, QWidget* parent);

    const Look& look() const { return _look; }
    void setLook(Look look);

    QSize sizeHint() const override { return {44, 44}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRectF contentRect() const;
    void paintPicture(QPainter& painter, const QPointF& corner) const;

    Look _look;
};

} // namespace exifcard
