#include "platform/foundation/Data.h"

#include "platform/foundation/MappingBatch.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <numeric>
#include <vector>

#include <sys/stat.h>

namespace exifcard {
namespace {

constexpr std::size_t kMappedSize = 200'000; ///< No copy is made of as many.

std::string fileOfSize(const TemporaryHome& home, std::size_t size) {
    const auto path = home.path() / "file";
    std::ofstream(path) << std::string(size, 'x');
    return path;
}

TEST(DataTest, ASliceSharesAndIsCutToWhatThereIs) {
    const Data whole = Data::fromText("0123456789");
    EXPECT_EQ(whole.slice(2, 3).text(), "234");
    EXPECT_EQ(whole.slice(2, 3).data(), whole.data() + 2);
    EXPECT_EQ(whole.slice(8, 100).text(), "89");
    EXPECT_TRUE(whole.slice(11, 1).empty());
}

TEST(DataTest, FilesMappedInBatchesKeepTheirBytesAsLongAsTheyAreHeld) {
    const TemporaryHome home;
    const auto path = [&home](std::size_t number) { return (home.path() / std::to_string(number)).string(); };
    constexpr std::size_t kFiles = 40;
    std::vector<Data> held;
    {
        const MappingBatch::Use use;
        for (std::size_t number = 0; number < kFiles; ++number) {
            // Some fill a batch of addresses, some are too large for any; a hole takes no room on the disk.
            const std::size_t size = number % 9 == 8 ? 40U << 20U : (number * 977'777 % 20'000'000) + 1;
            std::ofstream(path(number)) << number << ' ';
            std::filesystem::resize_file(path(number), size);
            std::fstream(path(number), std::ios::in | std::ios::out).seekp(-1, std::ios::end) << '$';
            const auto file = Data::mappedFileForEnds(path(number));
            ASSERT_TRUE(file);
            ASSERT_EQ(file->size(), size);
            if (number % 3 != 0) { // The others of the batch are dropped at once.
                held.push_back(*file);
            }
        }
    }
    std::size_t number = 0;
    for (const Data& file : held) {
        number += number % 3 == 0 ? 1 : 0;
        SCOPED_TRACE(number);
        EXPECT_EQ(file.bytes().back(), '$');
        if (file.size() > 4) {
            EXPECT_TRUE(file.text().starts_with(std::to_string(number) + " "));
        }
        EXPECT_FALSE(file.wasCutShort());
        ++number;
    }
}

TEST(DataTest, ManyFilesMappedInBatchesDoNotPileUp) {
    const TemporaryHome home;
    const std::string path = fileOfSize(home, kMappedSize);
    const auto mappings = [] {
        std::ifstream maps("/proc/self/maps");
        return std::count(std::istreambuf_iterator<char>(maps), {}, '\n');
    };
    const MappingBatch::Use use;
    const auto before = mappings();
    for (int times = 0; times < 1000; ++times) {
        ASSERT_TRUE(Data::mappedFileForEnds(path));
    }
    EXPECT_LT(mappings(), before + 100); // The system refuses more than some 65,000.
}

TEST(DataTest, MapsOnlyRegularFilesAndNeverWaits) {
    const TemporaryHome home;
    const std::string fifo = home.path() / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_FALSE(Data::mappedFile(fifo));
    EXPECT_FALSE(Data::mappedFile(home.path()));
    EXPECT_FALSE(Data::mappedFile(home.path() / "missing"));
    EXPECT_FALSE(Data::mappedFile("/dev/zero"));
    const auto empty = Data::mappedFile(fileOfSize(home, 0));
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->empty());
}

TEST(DataTest, AFileCutShortWhileItIsMappedReadsAsZerosAndSaysSo) {
    const TemporaryHome home;
    const std::string path = fileOfSize(home, kMappedSize);
    const auto data = Data::mappedFile(path);
    ASSERT_TRUE(data);
    EXPECT_FALSE(data->wasCutShort());
    std::filesystem::resize_file(path, 0);
    const auto bytes = data->bytes();
    const auto sum = std::accumulate(bytes.begin(), bytes.end(), std::size_t(0));
    EXPECT_EQ(sum, 0U);
    EXPECT_TRUE(data->wasCutShort());
    EXPECT_TRUE(data->slice(5, 5).wasCutShort());
}

TEST(DataTest, ASmallFileStaysAsItWasRead) {
    const TemporaryHome home;
    const std::string path = fileOfSize(home, 1000);
    const auto data = Data::mappedFile(path);
    ASSERT_TRUE(data);
    std::filesystem::resize_file(path, 0);
    EXPECT_EQ(data->text(), std::string(1000, 'x'));
    EXPECT_FALSE(data->wasCutShort());
}

} // namespace
} // namespace exifcard
