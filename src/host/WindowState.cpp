#include "host/WindowState.h"

#include "platform/foundation/UserDefaults.h"

#include <algorithm>

namespace exifcard {
namespace {

constexpr std::string_view kGeometryKey = "MessagesWindowGeometry";
constexpr std::string_view kConversationKey = "MessagesWindowConversation";
constexpr std::string_view kPresentationStyleKey = "MessagesWindowPresentationStyle";
constexpr std::string_view kAppearanceKey = "MessagesWindowAppearance";

std::string storedText(std::string_view key) {
    const Value stored = UserDefaults::standardUserDefaults()->objectForKey(key);
    return stored.text() == nullptr ? std::string() : *stored.text();
}

std::int64_t storedNumber(std::string_view key, std::int64_t greatest) {
    const Value stored = UserDefaults::standardUserDefaults()->objectForKey(key);
    const std::int64_t number = stored.isNumber() ? stored.integerValue() : 0;
    return number >= 0 && number <= greatest ? number : 0;
}

} // namespace

WindowState WindowState::load() {
    const auto appearance = static_cast<std::int64_t>(UIUserInterfaceStyle::Dark);
    const auto expanded = static_cast<std::int64_t>(MSMessagesAppPresentationStyle::Expanded);
    return {.geometry = QByteArray::fromBase64(QByteArray::fromStdString(storedText(kGeometryKey))),
        .conversation = storedText(kConversationKey),
        .presentationStyle =
            static_cast<MSMessagesAppPresentationStyle>(storedNumber(kPresentationStyleKey, expanded)),
        .appearance = static_cast<UIUserInterfaceStyle>(storedNumber(kAppearanceKey, appearance))};
}

void WindowState::save() const {
    const auto defaults = UserDefaults::standardUserDefaults();
    defaults->setObjectForKey(geometry.toBase64().toStdString(), kGeometryKey);
    defaults->setObjectForKey(conversation, kConversationKey);
    defaults->setObjectForKey(static_cast<std::int64_t>(presentationStyle), kPresentationStyleKey);
    defaults->setObjectForKey(static_cast<std::int64_t>(appearance), kAppearanceKey);
}

} // namespace exifcard
