#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// What the prefix "xml" stands for without being declared.
inline constexpr std::string_view kXmlAddress = "http://www.w3.org/XML/1998/namespace";

/// A name of an XMP packet: the address of its vocabulary, of those known here, and the name in it.
struct QualifiedName {
    std::string_view address; ///< Empty for a vocabulary that nobody asks for, and for a name without.
    std::string_view name;
};

/// What prefixes stand for at a place of a packet. The XML parser could tell it too, but looks up the whole
/// address for each attribute: an editor's packet has hundreds, and took twice as long.
class XmpPrefixes {
public:
    /// @param known  The addresses to tell of; they outlive this.
    explicit XmpPrefixes(std::span<const std::string_view> known);

    /// Whether an attribute says what a prefix stands for, and is nothing else.
    static bool isDeclaration(std::string_view attribute);
    /// Takes down what an attribute of a new element declares, if it is a declaration.
    ///
    /// @param depth  How many elements the new one lies in.
    /// @return False when more stand for something than in any packet that is meant well: each name asks them
    /// all.
    bool declare(std::string_view attribute, std::string_view value, std::size_t depth);
    /// Forgets what the element at that depth declared.
    void leave(std::size_t depth);

    /// Nothing for a name whose prefix nobody declared. The parts are of `name` and of the addresses known.
    std::optional<QualifiedName> element(std::string_view name) const;
    /// The same, but what has no prefix belongs to no vocabulary.
    std::optional<QualifiedName> attribute(std::string_view name) const;

private:
    struct Declared {
        std::string prefix; ///< Empty for elements without one.
        std::string_view address;
        std::size_t depth = 0;
    };

    std::optional<std::string_view> addressOf(std::string_view prefix) const;

    std::span<const std::string_view> _known;
    std::vector<Declared> _declared; // The innermost last.
};

} // namespace exifcard
