#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/CGImageThumbnail.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/UIImage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace exifcard {
namespace {

/// Waves that grow finer to the right and steeper downward, in three colours, and an edge: what a poor filter
/// blurs, shifts or makes flicker. The finest wave is a third as fine as the smallest thumbnail below can
/// show.
Bitmap testCard(int width, int height) {
    Bitmap card{.width = width, .height = height, .channels = 3, .pixels = {}, .iccProfile = {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double fineness = 0.01 + 0.07 * x / width;
            const double wave = std::sin(2 * std::numbers::pi * (fineness * x / 8 + 0.003 * y * y / height));
            const bool isBeyondEdge = x * 3 > y * 2 + width;
            card.pixels.push_back(static_cast<std::uint8_t>(127 + 100 * wave));
            card.pixels.push_back(static_cast<std::uint8_t>(isBeyondEdge ? 220 : 40));
            card.pixels.push_back(static_cast<std::uint8_t>(255.0 * y / height));
        }
    }
    return card;
}

/// The mean of the pixels that lie under one of the small picture, each by the part that does.
double meanUnder(const Bitmap& whole, const Bitmap& small, int x, int y, int channel) {
    const double left = double(x) * whole.width / small.width;
    const double right = double(x + 1) * whole.width / small.width;
    const double top = double(y) * whole.height / small.height;
    const double bottom = double(y + 1) * whole.height / small.height;
    double sum = 0;
    double area = 0;
    for (int row = int(top); row < std::min(whole.height, int(std::ceil(bottom))); ++row) {
        for (int column = int(left); column < std::min(whole.width, int(std::ceil(right))); ++column) {
            const double part = (std::min(right, column + 1.0) - std::max(left, double(column))) *
                                (std::min(bottom, row + 1.0) - std::max(top, double(row)));
            const auto index = (std::size_t(row) * std::size_t(whole.width) + std::size_t(column)) * 3;
            sum += part * whole.pixels[index + std::size_t(channel)];
            area += part;
        }
    }
    return sum / area;
}

struct Distance {
    double mean = 0;  ///< Of all values' differences, in levels of 255.
    double shift = 0; ///< Of the means of all values, with its sign.
};

Distance distanceFromMeans(const Bitmap& whole, const Bitmap& small) {
    Distance distance;
    for (int y = 0; y < small.height; ++y) {
        for (int x = 0; x < small.width; ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                const auto index = (std::size_t(y) * std::size_t(small.width) + std::size_t(x)) * 3;
                const double difference =
                    small.pixels[index + std::size_t(channel)] - meanUnder(whole, small, x, y, channel);
                distance.mean += std::abs(difference);
                distance.shift += difference;
            }
        }
    }
    const auto values = double(small.width) * small.height * 3;
    return {distance.mean / values, distance.shift / values};
}

TEST(ThumbnailDistanceTest, ThumbnailsAreCloseToTheMeansOfTheWholePicture) {
    const auto card = std::make_shared<const Bitmap>(testCard(1600, 1200));
    const auto picture = UIImage::imageWithBitmap(card);
    const Data files[] = {UIImageJPEGRepresentation(*picture, 0.95), UIImagePNGRepresentation(*picture)};
    for (const Data& file : files) {
        const auto source = CGImageSourceCreateWithData(file);
        for (const int side : {100, 257, 512, 900}) {
            SCOPED_TRACE(CGImageSourceGetType(*source) + " " + std::to_string(side));
            const auto thumbnail =
                CGImageSourceCreateThumbnail(*source, CGImageSourceCopyPropertiesAtIndex(*source, 0),
                    {.maximumPixelSize = side, .createFromImageAlways = true});
            const auto pixels = thumbnail ? thumbnail->bitmap() : nullptr;
            ASSERT_TRUE(pixels);
            ASSERT_EQ(pixels->width, side);
            ASSERT_EQ(pixels->channels, 3);
            const Distance distance = distanceFromMeans(*card, *pixels);
            EXPECT_LT(distance.mean, 3.0);
            EXPECT_LT(std::abs(distance.shift), 0.5);
        }
    }
}

} // namespace
} // namespace exifcard
