#pragma once

class QLabel;
class QWidget;

namespace exifcard {

class UIView;

// Class operations of `Apperance` on views. What they set follows the appearance by itself.

/// The theme's background with that opacity: white in light, black in dark appearance.
void setAppearanceOnView(UIView& view, double alpha = 1);
/// What a control or icon is drawn with: black in light, white in dark appearance.
void setAppearanceTintColorOnView(QWidget& view);
/// Black in light, white in dark appearance.
void setAppearanceTextColorOnLabel(QLabel& label);
/// Nearly white in light, nearly black in dark appearance.
void setUltraLighBackgroundColorForSettingsPhotosSearchPromo(UIView& view);

} // namespace exifcard
