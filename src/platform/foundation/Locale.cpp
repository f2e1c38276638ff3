#include "platform/foundation/Locale.h"

#include "platform/foundation/UserLanguages.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/ulocdata.h>

#include <algorithm>
#include <memory>
#include <mutex>

namespace exifcard {
namespace {

/// A locale's name with script modifiers as ICU has them: "sr_RS@latin" is "sr_Latn_RS".
std::string identifierFromName(std::string_view name) {
    const auto modifier = std::min(name.find('@'), name.size());
    const auto plain = name.substr(0, std::min(modifier, name.find('.')));
    if (plain.empty() || plain == "C" || plain == "POSIX") {
        return "en_US";
    }
    std::string identifier(plain);
    if (name.substr(modifier) == "@latin") {
        identifier.insert(std::min(identifier.find('_'), identifier.size()), "_Latn");
    }
    return identifier;
}

/// The collator of the current locale, made anew only when the locale changed.
std::shared_ptr<const icu::Collator> currentCollator() {
    static std::mutex mutex;
    static std::string identifier;                        // Guarded by mutex.
    static std::shared_ptr<const icu::Collator> collator; // Guarded by mutex.
    const auto current = Locale::current();
    const std::lock_guard lock(mutex);
    if (!collator || identifier != current.identifier()) {
        auto status = U_ZERO_ERROR;
        std::unique_ptr<icu::Collator> made(
            icu::Collator::createInstance(icu::Locale(current.identifier().c_str()), status));
        if (U_FAILURE(status) != 0) {
            return nullptr;
        }
        made->setStrength(icu::Collator::SECONDARY);
        collator = std::move(made);
        identifier = current.identifier();
    }
    return collator;
}

} // namespace

Locale Locale::current() {
    return Locale(identifierFromName(userLocaleName()));
}

bool Locale::usesMetricSystem() const {
    // ICU takes the root locale for its own likeliest, the United States.
    if (_identifier.empty()) {
        return true;
    }
    auto status = U_ZERO_ERROR;
    return ulocdata_getMeasurementSystem(_identifier.c_str(), &status) != UMS_US;
}

std::string Locale::localizedCountryName(std::string_view isoCountryCode) const {
    constexpr std::size_t kLongestCode = 3;
    std::string code(isoCountryCode);
    const auto isLetter = [](char character) {
        return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
    };
    if (code.empty() || code.size() > kLongestCode || !std::ranges::all_of(code, isLetter)) {
        return code;
    }
    icu::UnicodeString name;
    icu::Locale("", code.c_str()).getDisplayCountry(icu::Locale(_identifier.c_str()), name);
    std::string text;
    return name.toUTF8String(text);
}

int localizedCaseInsensitiveCompare(std::string_view left, std::string_view right) {
    const auto collator = currentCollator();
    if (!collator) {
        return left.compare(right) < 0 ? -1 : static_cast<int>(left != right);
    }
    auto status = U_ZERO_ERROR;
    return collator->compareUTF8(left, right, status);
}

} // namespace exifcard
