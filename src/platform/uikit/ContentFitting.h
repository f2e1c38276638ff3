#pragma once

#include "platform/uikit/UIImageView.h"

#include <QImage>
#include <QRectF>

namespace exifcard {

/// What is drawn of a picture in a view.
struct FittedContent {
    QSizeF viewSize; ///< In points.
    UIViewContentMode mode = UIViewContentMode::ScaleToFill;
    double cornerRadius = 0; ///< In points.
    double scale = 1;        ///< Pixels a point.
    bool operator==(const FittedContent&) const = default;
};

/// Where a picture of `pictureSize` goes in a view, and beyond it where it is larger. In points.
QRectF fittedRect(QSizeF pictureSize, QSizeF viewSize, UIViewContentMode mode);

/// What of the view a picture of `pictureSize` covers, in points.
QRectF coveredRect(QSizeF pictureSize, const FittedContent& content);

/// The picture as the view shows it: of its size, transparent where the picture does not reach. Decodes;
/// any thread. Null for one that does not decode.
QImage drawnContent(const UIImage& picture, const FittedContent& content);

} // namespace exifcard
