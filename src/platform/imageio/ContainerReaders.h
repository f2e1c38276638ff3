#pragma once

#include "platform/foundation/Data.h"
#include "platform/imageio/ImageFacts.h"

#include <cstddef>
#include <optional>

namespace exifcard {

// One reader for each kind of file. The bytes are untrusted and need not be of
// that kind; a reader answers nothing when there is no such image in them, and
// touches only the pages that hold what it looks for.

std::optional<ImageFacts> readJpeg(const Data& file, std::size_t index);
std::optional<ImageFacts> readPng(const Data& file, std::size_t index);
std::optional<ImageFacts> readGif(const Data& file, std::size_t index);
std::optional<ImageFacts> readBmp(const Data& file, std::size_t index);
std::optional<ImageFacts> readWebP(const Data& file, std::size_t index);
/// HEIC, HEIF, AVIF and CR3.
std::optional<ImageFacts> readHeif(const Data& file, std::size_t index);
std::optional<ImageFacts> readTiff(const Data& file, std::size_t index);
/// A raw file that is a TIFF: its one image is the full picture, not a preview.
std::optional<ImageFacts> readTiffRaw(const Data& file, std::size_t index);
std::optional<ImageFacts> readPanasonicRaw(const Data& file, std::size_t index);
std::optional<ImageFacts> readFujiRaw(const Data& file, std::size_t index);
std::optional<ImageFacts> readMinoltaRaw(const Data& file, std::size_t index);
std::optional<ImageFacts> readCanonCrw(const Data& file, std::size_t index);

// How many images there are: frames, pages or top-level pictures. These walk
// through the whole file.

std::size_t countPng(const Data& file);
std::size_t countGif(const Data& file);
std::size_t countWebP(const Data& file);
std::size_t countHeif(const Data& file);
std::size_t countTiff(const Data& file);

} // namespace exifcard
