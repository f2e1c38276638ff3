#pragma once

#include <QWidget>

#include <memory>

namespace exifcard {

class RenderContext;

/// The files as details tiles, three in a row, as they stand in a grid.
std::unique_ptr<QWidget> makeTiles(RenderContext& context);
/// The files as tiles, each with another of the marks that a tile can have, and one more of a photo that
/// cannot be read.
std::unique_ptr<QWidget> makeMarkedTiles(RenderContext& context);
/// The last item of a list that has more to come.
std::unique_ptr<QWidget> makeLoadingCell(RenderContext& context);
/// The progress overlay in its modes that tell how far something is.
std::unique_ptr<QWidget> makeOverlay(RenderContext& context);

} // namespace exifcard
