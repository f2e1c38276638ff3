#pragma once

#include "platform/uivalues/UIColor.h"

#include <QObject>

class QDBusVariant;

namespace exifcard {

/// Light or dark: as the desktop, or as the user switched. Keeps the program's traits up to date.
class HostAppearance : public QObject {
    Q_OBJECT

public:
    /// @param chosen   Unspecified: follow the desktop.
    /// @param desktop  What the desktop shows at the start.
    HostAppearance(UIUserInterfaceStyle chosen, UIUserInterfaceStyle desktop, QObject* parent = nullptr);

    UIUserInterfaceStyle chosen() const { return _chosen; }
    /// The other one than shows now; where that is the desktop's own, the desktop is followed again.
    void toggle();
    /// Asks the desktop now, and hears of changes from then on.
    void followDesktop();

private slots:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void apply();

    UIUserInterfaceStyle _chosen;
    UIUserInterfaceStyle _desktop;
};

/// Sets the style of the program's traits.
void applyInterfaceStyle(UIUserInterfaceStyle style);
/// What the desktop's palette is; before `UIApplication::start` replaces it.
UIUserInterfaceStyle styleOfDesktopPalette();

} // namespace exifcard
