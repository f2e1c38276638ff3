#include "host/HostExtension.h"

#include "extension/MessagesViewController.h"

namespace exifcard {

std::shared_ptr<MSMessagesAppViewController> makeExtension() {
    return MessagesViewController::makeEntry();
}

} // namespace exifcard
