#include "host/HostExtension.h"

#include "platform/uikit/MSMessagesAppViewController.h"

namespace exifcard {

std::shared_ptr<MSMessagesAppViewController> makeExtension() {
    return std::make_shared<MSMessagesAppViewController>();
}

} // namespace exifcard
