#pragma once

class QPoint;
class QWidget;

namespace exifcard {

/// Presses and releases the left button there, as the window system tells of a click.
/// @param place  In the view's own coordinates.
void sendClick(QWidget& view, const QPoint& place);

} // namespace exifcard
