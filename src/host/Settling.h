#pragma once

#include <chrono>
#include <functional>

class QImage;
class QWidget;

namespace exifcard {

/// Runs the toolkit's loop until the condition holds. @return False when the time was over first.
bool waitUntil(
    const std::function<bool()>& condition, std::chrono::milliseconds longest = std::chrono::seconds(30));

/// Runs the loop until the widget's picture has been the same for a moment, because what is drawn in the
/// background has arrived. @return The picture.
QImage settledPicture(QWidget& widget);

} // namespace exifcard
