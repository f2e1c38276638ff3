#pragma once

#include <memory>
#include <string_view>

namespace exifcard {

/// A compiled regular expression of ICU's language. Immutable, so usable from any thread.
class RegularExpression {
public:
    /// Null for a pattern that is none, or is longer than 16 KiB.
    static std::shared_ptr<const RegularExpression> make(std::string_view pattern, bool isCaseIgnored);
    ~RegularExpression();
    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;

    /// Whether the whole text fits. A search that takes too long or too deep does not.
    bool matchesWhole(std::string_view text) const;

private:
    class Implementation;
    explicit RegularExpression(std::unique_ptr<const Implementation> implementation);

    std::unique_ptr<const Implementation> _implementation;
};

} // namespace exifcard
