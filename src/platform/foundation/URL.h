#pragma once

#include <string>
#include <string_view>

namespace exifcard {

/// A web or file address, kept as its absolute text.
class URL {
public:
    URL() = default;
    /// A text as it stands; nothing is escaped or checked.
    static URL withString(std::string text);
    /// "file://" and the path with everything but RFC 3986's unreserved letters and "/" percent-escaped.
    static URL fileURLWithPath(std::string_view path);

    const std::string& absoluteString() const { return _text; }
    bool isEmpty() const { return _text.empty(); }
    bool isFileURL() const { return _text.starts_with("file://"); }
    /// The path with escapes undone; of a text without a scheme the text itself.
    std::string path() const;
    /// The last component of the path, escapes undone.
    std::string lastPathComponent() const;

    bool operator==(const URL&) const = default;

private:
    std::string _text;
};

/// "/a/b/" gives "b", "/" gives "/", "" gives "".
std::string lastPathComponent(std::string_view path);
/// "a.tar.gz" gives "a.tar"; ".profile" stays.
std::string stringByDeletingPathExtension(std::string_view path);
/// "a.tar.gz" gives "gz"; ".profile" gives "".
std::string pathExtension(std::string_view path);

} // namespace exifcard
