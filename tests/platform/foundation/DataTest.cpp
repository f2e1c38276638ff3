#include "platform/foundation/Data.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <fstream>
#include <numeric>

#include <sys/stat.h>

namespace exifcard {
namespace {

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
    constexpr std::size_t kSize = 100'000;
    const std::string path = fileOfSize(home, kSize);
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

} // namespace
} // namespace exifcard
