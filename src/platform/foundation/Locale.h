#pragma once

#include <string>
#include <string_view>

namespace exifcard {

/// A language and region with its conventions, named as ICU names it ("de_DE").
class Locale {
public:
    explicit Locale(std::string identifier) : _identifier(std::move(identifier)) {}

    /// The user's: from LC_ALL, LC_MESSAGES or LANG ("de_DE.UTF-8" is "de_DE");
    /// none, "C" and "POSIX" are "en_US"; bare names that the machine does not
    /// have installed count all the same.
    static Locale current();
    /// The root locale (identifier ""), without any user's conventions.
    static Locale system() { return Locale(""); }

    const std::string& identifier() const { return _identifier; }
    /// False for the United States and their kin, true elsewhere.
    bool usesMetricSystem() const;
    /// The country's name in this locale's language; "FR" gives "France". The
    /// code itself when it is not known.
    std::string localizedCountryName(std::string_view isoCountryCode) const;

    bool operator==(const Locale& other) const = default;

private:
    std::string _identifier;
};

/// -1, 0 or 1 by the collation of the current locale; case is ignored, accents count.
int localizedCaseInsensitiveCompare(std::string_view left, std::string_view right);

} // namespace exifcard
