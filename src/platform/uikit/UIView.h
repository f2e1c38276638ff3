#pragma once

#include "platform/uikit/CALayer.h"

#include <QWidget>

namespace exifcard {

/// A widget that paints a layer: background, border, round corners, and, below its children, the shadows of
/// those children that are `UIView`s. Follows the appearance by itself.
class UIView : public QWidget {
    Q_OBJECT

public:
    explicit UIView(QWidget* parent = nullptr);

    CALayer& layer(); ///< Call `update` after a change.
    const CALayer& layer() const;
    void setBackgroundColor(const UIColor& color);
    const UIColor& backgroundColor() const { return _layer.backgroundColor; }

    /// Where the view lies in its parent, in points; the widget takes the rectangle with rounded edges.
    CGRect frame() const;
    void setFrame(const CGRect& frame);
    /// Its own coordinates: the frame's size at the origin.
    CGRect bounds() const { return {{0, 0}, frame().size}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    bool event(QEvent* event) override;

private:
    /// What the parent painted beneath the view.
    struct Shadow {
        UIColor color;
        double opacity = 0;
        double radius = 0;
        double cornerRadius = 0;
        bool operator==(const Shadow&) const = default;
    };

    void updateShadow();

    mutable CALayer _layer; ///< Its bounds are brought up to date when it is asked for.
    CGRect _frame;          ///< Holds as long as it rounds to the widget's rectangle.
    Shadow _paintedShadow;
    QRect _shadowPlace; ///< In the parent.
};

/// The rectangle of whole pixels whose edges lie closest to those of `rect`.
QRect roundedRect(const CGRect& rect);

} // namespace exifcard
