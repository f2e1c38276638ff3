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

    CALayer& layer() { return _layer; } ///< Call `update` after a change.
    const CALayer& layer() const { return _layer; }
    void setBackgroundColor(const UIColor& color);
    const UIColor& backgroundColor() const { return _layer.backgroundColor; }

    /// Where the view lies in its parent, in points; the widget takes the rectangle with rounded edges.
    CGRect frame() const { return _frame; }
    void setFrame(const CGRect& frame);
    /// Its own coordinates: the frame's size at the origin.
    CGRect bounds() const { return {{0, 0}, _frame.size}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    CALayer _layer;
    CGRect _frame;
};

/// The rectangle of whole pixels whose edges lie closest to those of `rect`.
QRect roundedRect(const CGRect& rect);

} // namespace exifcard
