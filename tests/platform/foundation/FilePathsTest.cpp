#include "platform/foundation/FilePaths.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

mode_t modeOf(const fs::path& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
}

std::string contentOf(const std::string& path) {
    return std::string(Data::mappedFile(path).value_or(Data()).text());
}

TEST(FilePathsTest, IgnoresARelativeXDGFolder) {
    const TemporaryHome home;
    EXPECT_EQ(configurationFolder(), home.path() / "config/exifcard");
    setenv("HOME", "/nobody", 1);
    setenv("XDG_CONFIG_HOME", "here", 1);
    setenv("XDG_DATA_HOME", "", 1);
    unsetenv("XDG_CACHE_HOME");
    EXPECT_EQ(configurationFolder(), "/nobody/.config/exifcard");
    EXPECT_EQ(dataFolder(), "/nobody/.local/share/exifcard");
    EXPECT_EQ(cacheFolder(), "/nobody/.cache/exifcard");
}

TEST(FilePathsTest, WhatItMakesIsForTheOwnerOnly) {
    const TemporaryHome home;
    const std::string folder = home.path() / "one/two/";
    ASSERT_TRUE(makeFolder(folder));
    EXPECT_TRUE(makeFolder(folder));
    ASSERT_TRUE(writeFileAtomically(folder + "file", Data::fromText("text")));
    ASSERT_TRUE(writeFileAtomically(folder + "locked", Data::fromText("text"), folder + "locked.new"));
    EXPECT_EQ(modeOf(home.path() / "one"), 0700U);
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(folder + "file"), 0600U);
    EXPECT_EQ(modeOf(folder + "locked"), 0600U);
    EXPECT_FALSE(makeFolder(folder + "file/below"));
}

TEST(FilePathsTest, AWriteLeavesNothingBesideTheFile) {
    const TemporaryHome home;
    const std::string path = home.path() / "file";
    ASSERT_TRUE(writeFileAtomically(path, Data::fromText("old")));
    ASSERT_TRUE(writeFileAtomically(path, Data::fromText("new"), path + ".new"));
    EXPECT_EQ(contentOf(path), "new");
    fs::create_directory(home.path() / "folder");
    EXPECT_FALSE(writeFileAtomically(home.path() / "folder", Data()));
    EXPECT_FALSE(writeFileAtomically(home.path() / "missing/file", Data()));
    fs::remove(home.path() / "folder");
    EXPECT_EQ(std::distance(fs::directory_iterator(home.path()), fs::directory_iterator()), 1);
}

TEST(FilePathsTest, ASymbolicLinkStaysOne) {
    const TemporaryHome home;
    const std::string target = home.path() / "target";
    const std::string link = home.path() / "link";
    ASSERT_TRUE(writeFileAtomically(target, Data::fromText("old")));
    fs::create_symlink(target, link);
    ASSERT_TRUE(writeFileAtomically(link, Data::fromText("new")));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(contentOf(target), "new");
}

TEST(FilePathsTest, AResourceLiesBesideTheProgramOrNowhere) {
    const auto folder = fs::read_symlink("/proc/self/exe").parent_path() / "share/exifcard";
    const std::string name = "file-paths-test";
    EXPECT_EQ(resourcePath(name), "");
    ASSERT_TRUE(makeFolder(folder));
    ASSERT_TRUE(writeFileAtomically(folder / name, Data()));
    EXPECT_EQ(resourcePath(name), folder / name);
    fs::remove(folder / name);
    EXPECT_EQ(modulePath(name), "");
}

} // namespace
} // namespace exifcard
