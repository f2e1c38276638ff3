#pragma once

#include "platform/messages/MSMessagesAppPresentationStyle.h"
#include "platform/uivalues/UIColor.h"

#include <QByteArray>

#include <string>

namespace exifcard {

/// What the window remembers from one start to the next, in the program's standard defaults.
struct WindowState {
    QByteArray geometry;      ///< As the toolkit restores it; empty at the first start.
    std::string conversation; ///< Empty at the first start.
    MSMessagesAppPresentationStyle presentationStyle = MSMessagesAppPresentationStyle::Compact;
    /// Unspecified: follow the desktop.
    UIUserInterfaceStyle appearance = UIUserInterfaceStyle::Unspecified;

    static WindowState load();
    /// Writes what differs; at the end of the program, when nothing waits for it.
    void save() const;
};

} // namespace exifcard
