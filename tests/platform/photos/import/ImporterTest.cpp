#include "platform/photos/import/Importer.h"

#include "platform/photos/PHAsset.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/photos/PhotoCatalogue.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

/// Takes in a folder of one photo in a home of its own.
class ImporterTest : public testing::Test {
protected:
    ImporterTest() {
        PhotoCatalogue::setShared(nullptr);
        PHPhotoLibrary::setAuthorization(PHAuthorizationStatus::Authorized);
        put("known/a.jpg");
    }
    ~ImporterTest() override { PhotoCatalogue::setShared(nullptr); }

    void put(const fs::path& name) const {
        fs::create_directories((photos / name).parent_path());
        fs::copy_file(EXIFCARD_TEST_DATA "/leica-q2.jpg", photos / name);
    }

    /// @param whenScanned  Called after each folder, with how many files were seen.
    ImportReport import(const std::function<void(std::size_t fileCount)>& whenScanned = nullptr) {
        problems.clear();
        const auto onProgress = [&whenScanned](const ImportProgress& progress) {
            if (progress.isScanning && whenScanned) {
                whenScanned(progress.fileCount);
            }
        };
        return Importer(PhotoCatalogue::shared(),
            {.onProblem =
                    [this](const ImportProblem& problem) {
                        problems.push_back(problem.path + ": " + problem.cause);
                    },
                .onNotice = [](std::string_view) {},
                .onProgress = onProgress},
            1)
            .importTrees({photos});
    }

    const TemporaryHome home;
    const fs::path photos = home.path() / "photos";
    const fs::path away = home.path() / "away";
    std::vector<std::string> problems;
};

TEST_F(ImporterTest, ADriveThatIsLostBetweenLookingAndReadingForgetsNothing) {
    import();
    ASSERT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 1U);
    fs::rename(photos / "known/a.jpg", photos / "known/b.jpg"); // Seen as missing and new, until all is away.
    const auto lost = import([this](std::size_t fileCount) {
        if (fileCount == 1) {
            fs::rename(photos, away);
        }
    });
    EXPECT_EQ(lost.assets.vanished, 0U);
    EXPECT_EQ(lost.error, std::nullopt);
    EXPECT_EQ(problems,
        std::vector{photos.string() + ": is no longer there; what the library holds of it is kept"});
    EXPECT_EQ(PHAsset::fetchAssetsWithOptions()->count(), 1U);
    fs::rename(away, photos);
    EXPECT_EQ(import().assets.moved, 1U);
    EXPECT_EQ(problems, std::vector<std::string>());
}

} // namespace
} // namespace exifcard
