#pragma once

class QRect;
class QWidget;

namespace exifcard {

struct CardOutlets;

// Tiles are made by the dozen while a grid is scrolled: they place their few views themselves, as making and
// asking nested layouts took half the time of a tile.

/// Puts the view at that rectangle of its parent, mirrored where one reads from the right.
void placeForReading(QWidget& view, const QRect& rect);

/// Puts a tile's picture there, and its badges upon it.
void placePicture(const CardOutlets& outlets, const QRect& rect);

} // namespace exifcard
