#include "platform/foundation/LocalizedString.h"

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/MessageCatalogue.h"
#include "platform/foundation/UserLanguages.h"

#include <atomic>
#include <mutex>
#include <vector>

namespace exifcard {
namespace {

/// What was chosen for the user; without a catalogue every text is its key.
struct Localization {
    std::unique_ptr<const MessageCatalogue> catalogue;
};

std::unique_ptr<const MessageCatalogue> catalogueForUser() {
    for (const std::string& language : userLanguages()) {
        const auto path = resourcePath("locale/" + language + "/LC_MESSAGES/exifcard.mo");
        const auto file = path.empty() ? std::nullopt : Data::mappedFile(path);
        if (auto catalogue = file ? MessageCatalogue::fromData(*file) : nullptr) {
            return catalogue;
        }
    }
    return nullptr;
}

std::atomic<const Localization*> currentLocalization = nullptr;
std::atomic<std::uint64_t> resets = 0;

/// Blocks other threads while the catalogue is read, some hundred microseconds once.
const Localization& chooseLocalization() {
    static std::mutex mutex;
    // Never destroyed, for threads that still run when the program ends. Guarded by mutex.
    static auto& chosen = *std::make_unique<std::vector<std::unique_ptr<const Localization>>>().release();
    const std::lock_guard lock(mutex);
    if (const auto* const localization = currentLocalization.load()) {
        return *localization;
    }
    chosen.push_back(std::make_unique<const Localization>(Localization{catalogueForUser()}));
    currentLocalization = chosen.back().get();
    return *chosen.back();
}

const MessageCatalogue* currentCatalogue() {
    const auto* const localization = currentLocalization.load(std::memory_order_acquire);
    return (localization != nullptr ? *localization : chooseLocalization()).catalogue.get();
}

} // namespace

std::string_view localizedString(const char* key) {
    const auto* const catalogue = currentCatalogue();
    return catalogue != nullptr ? catalogue->textForKey(key).value_or(key) : key;
}

std::string localizedStringWithFormat(const char* key, std::initializer_list<FormatArgument> arguments) {
    const auto* const catalogue = currentCatalogue();
    return stringWithFormat(
        catalogue != nullptr ? catalogue->formatForKey(key).value_or(key) : key, arguments);
}

void resetLocalization() {
    currentLocalization = nullptr;
    ++resets;
}

std::uint64_t localizationGeneration() {
    return resets;
}

} // namespace exifcard
