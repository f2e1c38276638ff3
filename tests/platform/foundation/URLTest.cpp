#include "platform/foundation/URL.h"

#include <gtest/gtest.h>

namespace exifcard {
namespace {

TEST(URLTest, AFilePathSurvivesItsURL) {
    constexpr std::string_view kPath = "/photos/IMG 1 100%#?\xC3\xA9.JPG";
    const URL url = URL::fileURLWithPath(kPath);
    EXPECT_EQ(url.absoluteString(), "file:///photos/IMG%201%20100%25%23%3F%C3%A9.JPG");
    EXPECT_TRUE(url.isFileURL());
    EXPECT_EQ(url.path(), kPath);
    EXPECT_EQ(url.lastPathComponent(), "IMG 1 100%#?\xC3\xA9.JPG");
}

TEST(URLTest, FindsThePathInAnyText) {
    struct Case {
        const char* text;
        std::string_view path;
        std::string_view lastComponent;
    };
    constexpr Case cases[] = {
        {"", "", ""},
        {"/a/b", "/a/b", "b"},
        {"/a/x://y", "/a/x://y", "y"},
        {"https://exifcard.example", "", ""},
        {"https://exifcard.example/?a=/b#/c", "/", "/"},
        {"https://exifcard.example/a%2Fb/c%2", "/a/b/c%2", "c%2"},
        {"https://exifcard.example/c%2Fd", "/c/d", "c/d"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(URL::withString(c.text).path(), c.path);
        EXPECT_EQ(URL::withString(c.text).lastPathComponent(), c.lastComponent);
    }
}

TEST(URLTest, CutsPathsIntoNameAndExtension) {
    struct Case {
        std::string_view path;
        std::string_view lastComponent;
        std::string_view withoutExtension;
        std::string_view extension;
    };
    constexpr Case cases[] = {
        {"", "", "", ""},
        {"/", "/", "/", ""},
        {"/a/b/", "b", "/a/b", ""},
        {"a.tar.gz", "a.tar.gz", "a.tar", "gz"},
        {".profile", ".profile", ".profile", ""},
        {"/x.d/.profile", ".profile", "/x.d/.profile", ""},
        {"/x.d/a", "a", "/x.d/a", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(lastPathComponent(c.path), c.lastComponent);
        EXPECT_EQ(stringByDeletingPathExtension(c.path), c.withoutExtension);
        EXPECT_EQ(pathExtension(c.path), c.extension);
    }
}

} // namespace
} // namespace exifcard
