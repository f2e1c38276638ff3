#include "platform/photos/import/FolderWatch.h"

#include "platform/foundation/FileDescriptor.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include <sys/eventfd.h>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

class FolderWatchTest : public testing::Test {
protected:
    /// Whether the change is told before nothing happens for long.
    bool isTold(const std::function<bool(const FolderWatch::Changes& changes)>& isWanted) {
        constexpr std::chrono::seconds kLongest(20);
        for (;;) {
            const auto changes = watch.wait(neverStopped.number(), kLongest);
            if (!changes || changes->isEmpty()) {
                return false;
            }
            if (isWanted(*changes)) {
                return true;
            }
        }
    }
    bool isTreeTold(const fs::path& folder) {
        return isTold([&](const auto& changes) { return changes.trees.contains(folder.string()); });
    }
    bool isPhotoTold(const fs::path& folder) {
        std::ofstream(folder / "photo.jpg") << "new";
        return isTold([&](const auto& changes) { return changes.folders.contains(folder.string()); });
    }

    /// How many folders the system watches for this program.
    static std::ptrdiff_t countOfWatches() {
        std::ptrdiff_t count = 0;
        for (const auto& entry : fs::directory_iterator("/proc/self/fdinfo")) {
            std::ifstream file(entry.path());
            const auto isWatch = [](const std::string& word) { return word == "inotify"; };
            count += std::count_if(std::istream_iterator<std::string>(file), {}, isWatch);
        }
        return count;
    }

    const TemporaryHome home;
    const fs::path above = home.path() / "above";
    const fs::path root = above / "photos";
    const FileDescriptor neverStopped = FileDescriptor(eventfd(0, EFD_CLOEXEC));
    FolderWatch watch;
};

TEST_F(FolderWatchTest, ATreeThatGoesAndComesAgainIsToldAndWatched) {
    fs::create_directories(root / "2024");
    ASSERT_TRUE(watch.addTree(root));
    const auto before = countOfWatches();
    const fs::path away = home.path() / "away";
    struct Case {
        const char* name;
        std::function<void()> go;
        std::function<void()> come;
    };
    const auto make = [this] { fs::create_directories(root / "2024"); };
    const Case cases[] = {
        {"deleted and made again", [this] { fs::remove_all(root); }, make},
        {"deleted with the folder above it", [this] { fs::remove_all(above); }, make},
        {"moved away and back", [&] { fs::rename(root, away); }, [&] { fs::rename(away, root); }},
        {"moved away with the folder above it", [&] { fs::rename(above, home.path() / "elsewhere"); }, make},
        {"moved away and another made", [&] { fs::rename(root, away); }, make},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        c.go();
        ASSERT_TRUE(
            watch.wait(neverStopped.number(), std::chrono::milliseconds(1))); // It may be told or not.
        c.come();
        ASSERT_TRUE(isTreeTold(root));
        EXPECT_TRUE(isPhotoTold(root / "2024"));
        EXPECT_EQ(countOfWatches(), before);
    }
}

TEST_F(FolderWatchTest, ATreeIsWaitedForInFoldersAboveItAsTheyComeAndGo) {
    ASSERT_TRUE(watch.addTree(root));
    for (const bool isGoneAgain : {true, false}) {
        ASSERT_TRUE(watch.wait(neverStopped.number(), std::chrono::milliseconds(1)));
        EXPECT_EQ(countOfWatches(), 1); // Of one folder above.
        fs::create_directory(above);
        ASSERT_TRUE(watch.wait(neverStopped.number(), std::chrono::milliseconds(1)));
        if (isGoneAgain) {
            fs::rename(above, home.path() / "elsewhere");
        }
    }
    fs::create_directory(root);
    EXPECT_TRUE(isTreeTold(root));
    EXPECT_TRUE(isPhotoTold(root));
}

TEST_F(FolderWatchTest, ATreeThatReturnsWithinAnotherIsTold) {
    fs::create_directories(root / ".hidden/own"); // Not looked into from above.
    ASSERT_TRUE(watch.addTree(root) && watch.addTree(root / ".hidden/own"));
    fs::remove_all(root / ".hidden");
    ASSERT_TRUE(watch.wait(neverStopped.number(), std::chrono::milliseconds(1)));
    fs::create_directories(root / ".hidden/own");
    EXPECT_TRUE(isTreeTold(root / ".hidden/own"));
    EXPECT_TRUE(isPhotoTold(root));
    EXPECT_TRUE(isPhotoTold(root / ".hidden/own"));
}

} // namespace
} // namespace exifcard
