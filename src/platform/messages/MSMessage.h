#pragma once

#include "platform/foundation/URL.h"
#include "platform/uivalues/UIImage.h"

#include <memory>
#include <optional>
#include <string>

namespace exifcard {

/// What a message bubble shows: a picture with a title over it and a bar of texts below. An absent text takes
/// no room.
struct MSMessageTemplateLayout {
    std::shared_ptr<const UIImage> image;
    std::optional<URL> mediaFileURL; ///< Shown where there is no image.
    std::optional<std::string> imageTitle;
    std::optional<std::string> imageSubtitle;
    std::optional<std::string> caption;
    std::optional<std::string> trailingCaption;
    std::optional<std::string> subcaption;
    std::optional<std::string> trailingSubcaption;
};

/// An interactive message.
struct MSMessage {
    MSMessageTemplateLayout layout;
    URL url; ///< Opened where the extension is missing.
};

} // namespace exifcard
