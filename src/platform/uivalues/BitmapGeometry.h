#pragma once

#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/CGGeometry.h"

namespace exifcard {

/// The EXIF code that undoes the turn of another. 1 for what is none.
int inverseOrientation(int exifOrientation);

/// Whether width and height change places.
bool isQuarterTurn(int exifOrientation);

/// The stored pixels turned to show upright, as an EXIF code from 2 to 8 asks. Any other code turns nothing.
Bitmap turnedBitmap(const Bitmap& stored, int exifOrientation);

/// Where a part of an upright picture lies in its stored pixels.
/// @param part  In fractions (0 to 1) of the picture's width and height, as is the result.
CGRect storedPart(const CGRect& part, int exifOrientation);

/// Whole pixels of a bitmap. The rectangle lies within it.
Bitmap croppedBitmap(const Bitmap& bitmap, int left, int top, int width, int height);

/// A transparent bitmap of that size with another one at a place within it.
Bitmap bitmapOnCanvas(const Bitmap& bitmap, int left, int top, int width, int height);

} // namespace exifcard
