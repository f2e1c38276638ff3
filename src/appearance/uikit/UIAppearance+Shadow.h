#pragma once

namespace exifcard {

struct CALayer;

/// Gives the layer the soft shadow of cards, cast by its bounds of this moment: call it again when they
/// change. Black in light, light grey in dark appearance.
void setShadowEffectForLayer(CALayer& layer);

} // namespace exifcard
