#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace exifcard {

class HostAppearance;
class MessagesWindow;

/// Does by itself what a user does first: takes in a folder, looks at the panel, sends a photo. For machines
/// without a display.
class Tour {
public:
    Tour(MessagesWindow& window, HostAppearance& appearance) : _window(window), _appearance(appearance) {}

    /// @param pictures  The folder that pictures of the screens are written to; made where it is missing.
    /// @param library   The folder to take in; nothing: the library stays as it is.
    /// @return Whether a photo was sent and every picture written.
    bool run(const QString& pictures, const std::optional<QString>& library);

private:
    bool save(const QString& name);
    bool sendFirstPhoto();

    MessagesWindow& _window;
    HostAppearance& _appearance;
    QString _folder;
};

} // namespace exifcard
