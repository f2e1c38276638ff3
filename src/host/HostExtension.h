#pragma once

#include <memory>

namespace exifcard {

class MSMessagesAppViewController;

/// The extension that the window's panel runs.
std::shared_ptr<MSMessagesAppViewController> makeExtension();

} // namespace exifcard
