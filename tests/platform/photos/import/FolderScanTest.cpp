#include "platform/photos/import/FolderScan.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

class FolderScanTest : public testing::Test {
protected:
    void write(const fs::path& name) {
        fs::create_directories((_root / name).parent_path());
        std::ofstream(_root / name) << "content";
    }

    /// "folder: file file" for each folder below the root, and the problems behind "!".
    std::string scan() {
        std::string text;
        std::string problems;
        FolderScan folders(_root, [&](const ImportProblem& problem) {
            problems += '!';
            problems += problem.path.substr(_root.string().size()) + " " + problem.cause;
        });
        while (const auto folder = folders.next()) {
            text += folder->path.substr(_root.string().size()) + "/:";
            for (const ScannedFile& file : folder->files) {
                text += ' ';
                text += file.name;
            }
            text += folder->isWhole ? "\n" : " …\n";
        }
        return text + problems;
    }

    TemporaryHome _home;
    fs::path _root = _home.path() / "root";
};

TEST_F(FolderScanTest, GoesThroughAllFoldersInOrder) {
    for (const auto* const name :
        {"b.jpg", "a.heic", "notes.txt", "2024/c.mov", "2023/12/d.nef", ".trash/e.jpg", "\xff\xfe.jpg"}) {
        write(name);
    }
    EXPECT_EQ(scan(), "/: a.heic b.jpg \xff\xfe.jpg\n/2023/:\n/2023/12/: d.nef\n/2024/: c.mov\n");
}

TEST_F(FolderScanTest, FollowsNoLink) {
    write("a.jpg");
    write("../outside/secret.jpg");
    fs::create_symlink(_root, _root / "loop");
    fs::create_symlink(_root.parent_path() / "outside", _root / "out");
    fs::create_symlink(_root.parent_path() / "outside/secret.jpg", _root / "secret.jpg");
    EXPECT_EQ(scan(), "/: a.jpg\n");
}

TEST_F(FolderScanTest, TellsWhatIsNoRegularFileAndGoesOn) {
    write("z.jpg");
    ASSERT_EQ(mkfifo((_root / "pipe.jpg").c_str(), 0600), 0);
    fs::create_directory(_root / "folder.jpg");
    EXPECT_EQ(scan(), "/: z.jpg\n/folder.jpg/:\n!/pipe.jpg is a pipe");
}

TEST_F(FolderScanTest, TellsWhatItMayNotLookAt) {
    write("locked/a.jpg");
    write("b.jpg");
    fs::permissions(_home.path(), fs::perms::all);
    fs::permissions(_root / "locked", fs::perms::none);
    const uid_t user = geteuid();
    constexpr uid_t kNobody = 65534;
    const bool isSuperuser = user == 0; // Nothing is forbidden to that one.
    ASSERT_TRUE(!isSuperuser || seteuid(kNobody) == 0);
    const std::string found = scan();
    ASSERT_TRUE(!isSuperuser || seteuid(user) == 0);
    fs::permissions(_root / "locked", fs::perms::owner_all);
    EXPECT_EQ(found, "/: b.jpg\n/locked/: …\n!/locked Permission denied");
}

TEST(MountPointTest, IsAFolderOnWhichADriveIsMounted) {
    const TemporaryHome home;
    EXPECT_TRUE(isMountPoint("/proc"));
    EXPECT_FALSE(isMountPoint("/proc/self"));
    EXPECT_FALSE(isMountPoint(home.path()));
    EXPECT_FALSE(isMountPoint(home.path() / "missing"));
}

TEST_F(FolderScanTest, AFileChangedInPlaceHasAnotherStamp) {
    write("a.jpg");
    const auto before = stampOfFile(_root / "a.jpg");
    std::ofstream(_root / "a.jpg") << "CONTENT";
    const auto after = stampOfFile(_root / "a.jpg");
    ASSERT_TRUE(before && after);
    EXPECT_NE(*before, *after);
    EXPECT_FALSE(stampOfFile(_root).has_value());
}

} // namespace
} // namespace exifcard
