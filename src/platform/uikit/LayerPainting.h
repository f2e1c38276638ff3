#pragma once

class QPainter;
class QRectF;
class QWidget;

namespace exifcard {

struct CALayer;

/// Paints a layer's background and border into a rectangle, its corners rounded. The shadow is not part of
/// it.
void paintLayer(QPainter& painter, const CALayer& layer, const QRectF& bounds);

/// Paints the shadow of a layer that lies in that rectangle. A drawn shadow is kept and stretched to every
/// size, so that it costs a few copied pixels.
void paintShadow(QPainter& painter, const CALayer& layer, const QRectF& bounds);

/// Paints the shadows of the visible children that are `UIView`s, as a `UIView` does by itself; for other
/// parents, in their own paint event.
void paintShadowsOfChildren(QPainter& painter, const QWidget& parent);

/// The rectangle that a layer's shadow touches; empty where it casts none.
QRectF shadowBounds(const CALayer& layer, const QRectF& bounds);

} // namespace exifcard
