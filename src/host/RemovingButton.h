#pragma once

class QWidget;

namespace exifcard {

class PictureButton;

/// The small cross that takes something out of the input field.
PictureButton* makeRemovingButton(QWidget& parent);

} // namespace exifcard
