#pragma once

class QPainter;
class QRectF;
class QWidget;

namespace exifcard {

/// Whether a view has the focus and got it from the keyboard, so that its focus is to be seen.
bool showsFocusRing(const QWidget& view);

/// Two points of amber with a line in the text colour outside, within `bounds`.
void paintFocusRing(QPainter& painter, const QRectF& bounds, double cornerRadius);

} // namespace exifcard
