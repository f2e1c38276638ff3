#pragma once

#include <QWidget>

#include <memory>

namespace exifcard {

class RenderContext;

/// The panel alone, as it stands below a conversation.
std::unique_ptr<QWidget> makeCompact(RenderContext& context);
/// The same where the library may not be read.
std::unique_ptr<QWidget> makeDenied(RenderContext& context);
/// The same where the settings hide every photo.
std::unique_ptr<QWidget> makeFiltered(RenderContext& context);
/// The screen of an album of the files; of an empty one without.
std::unique_ptr<QWidget> makeAlbum(RenderContext& context);

} // namespace exifcard
