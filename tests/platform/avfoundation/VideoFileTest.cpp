#include "platform/avfoundation/ffmpeg/VideoFile.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <span>

#include <sys/mman.h>

namespace exifcard {
namespace {

/// The head of a program stream and then zeros, in which its reader looks for the next packet to the end. The
/// zeros take no memory.
class EndlessStream {
public:
    EndlessStream() {
        constexpr int kAnonymous = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
        _start = mmap(nullptr, kSize, PROT_READ, kAnonymous, -1, 0);
        if (_start == MAP_FAILED || mprotect(_start, kPageSize, PROT_READ | PROT_WRITE) != 0) {
            return;
        }
        constexpr std::uint8_t kHead[] = {0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1, 0, 0, 3, 0xF8, // A pack,
            0, 0, 1, 0xBB, 0, 6, 0x80, 0, 1, 0, 0, 0xFF};                                    // of a system.
        constexpr std::size_t kCopies = 4; // With fewer of them it is not recognised.
        for (std::size_t copy = 0; copy < kCopies; ++copy) {
            std::memcpy(static_cast<std::uint8_t*>(_start) + copy * sizeof kHead, kHead, sizeof kHead);
        }
        _isMade = true;
    }
    ~EndlessStream() {
        if (_start != MAP_FAILED) {
            munmap(_start, kSize);
        }
    }
    EndlessStream(const EndlessStream&) = delete;
    EndlessStream& operator=(const EndlessStream&) = delete;

    bool isMade() const { return _isMade; }
    std::span<const std::uint8_t> bytes() const { return {static_cast<const std::uint8_t*>(_start), kSize}; }

private:
    static constexpr std::size_t kSize = std::size_t(1) << 40U; // Takes a quarter of an hour and more.
    static constexpr std::size_t kPageSize = 4096;

    void* _start = MAP_FAILED;
    bool _isMade = false;
};

TEST(VideoFileTest, GivesUpAStreamThatNeverEnds) {
    const EndlessStream stream;
    ASSERT_TRUE(stream.isMade());
    constexpr double kMostSeconds = 0.05;
    EXPECT_EQ(VideoFile::open(stream.bytes(), kMostSeconds), nullptr);
}

} // namespace
} // namespace exifcard
