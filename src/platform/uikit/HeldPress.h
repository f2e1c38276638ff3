#pragma once

#include "platform/uikit/UICollectionViewDelegates.h"

#include <QPoint>

#include <optional>
#include <string>

namespace exifcard {

/// What a finger came down on in a list, beside the item.
struct HeldPress {
    QPoint position;                  ///< In the viewport.
    std::optional<std::string> model; ///< What the item shows; nothing where the data source does not say.
    bool isMoved = false;             ///< A reload moved it away from below the finger.

    /// Where the same is shown now; nothing when it is no longer, or has no name.
    std::optional<IndexPath> placeIn(const UICollectionViewDataSource* source) const {
        return source && model ? source->indexPathForElementWithModelIdentifier(*model) : std::nullopt;
    }
};

} // namespace exifcard
