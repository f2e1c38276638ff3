#include "host/HostAppearance.h"

#include "platform/uikit/UITraitCollection.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>

namespace exifcard {
namespace {

// Where desktops tell whether the user prefers dark colours.
const auto kPortalService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto kSettingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const auto kNamespace = QStringLiteral("org.freedesktop.appearance");
const auto kColorScheme = QStringLiteral("color-scheme");

} // namespace

void applyInterfaceStyle(UIUserInterfaceStyle style) {
    UITraitCollection traits = UITraitCollection::currentTraitCollection();
    traits.userInterfaceStyle = style;
    UITraitCollection::setCurrentTraitCollection(traits);
}

UIUserInterfaceStyle styleOfDesktopPalette() {
    const QPalette palette = QApplication::palette();
    const bool isDark =
        palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
    return isDark ? UIUserInterfaceStyle::Dark : UIUserInterfaceStyle::Light;
}

HostAppearance::HostAppearance(UIUserInterfaceStyle chosen, UIUserInterfaceStyle desktop, QObject* parent)
    : QObject(parent)
    , _chosen(chosen)
    , _desktop(desktop) {
    apply();
}

void HostAppearance::followDesktop() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(QString(), kPortalPath, kSettingsInterface, QStringLiteral("SettingChanged"), this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(
        kPortalService, kPortalPath, kSettingsInterface, QStringLiteral("Read"));
    question << kNamespace << kColorScheme;
    auto* const answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (!reply.isError()) {
            settingChanged(kNamespace, kColorScheme, reply.value());
        }
        answer->deleteLater();
    });
}

void HostAppearance::settingChanged(const QString& space, const QString& key, const QDBusVariant& value) {
    if (space != kNamespace || key != kColorScheme) {
        return;
    }
    QVariant scheme = value.variant();
    while (scheme.canConvert<QDBusVariant>()) { // Portals answer it wrapped once or twice.
        scheme = scheme.value<QDBusVariant>().variant();
    }
    constexpr unsigned kPrefersDark = 1;
    constexpr unsigned kPrefersLight = 2;
    const unsigned wanted = scheme.toUInt();
    if (wanted == kPrefersDark || wanted == kPrefersLight) {
        _desktop = wanted == kPrefersDark ? UIUserInterfaceStyle::Dark : UIUserInterfaceStyle::Light;
        apply();
    }
}

void HostAppearance::toggle() {
    const UIUserInterfaceStyle shown = UITraitCollection::currentTraitCollection().userInterfaceStyle;
    const UIUserInterfaceStyle other =
        shown == UIUserInterfaceStyle::Dark ? UIUserInterfaceStyle::Light : UIUserInterfaceStyle::Dark;
    _chosen = other == _desktop ? UIUserInterfaceStyle::Unspecified : other;
    apply();
}

void HostAppearance::apply() {
    applyInterfaceStyle(_chosen == UIUserInterfaceStyle::Unspecified ? _desktop : _chosen);
}

} // namespace exifcard
