#include "platform/coreimage/libraw/RawDecoder.h"

#include "platform/foundation/ProcessorTime.h"

#include <libraw/libraw.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>

namespace exifcard {
namespace {

// The largest backs have 150 megapixels. Developing takes some 12 bytes a pixel.
constexpr std::size_t kMaximumSensorPixels = std::size_t(160) << 20U;
constexpr unsigned kMaximumWorkingMegabytes = 2048;
// Of this thread: a 100-megapixel picture takes some 20 on a slow machine. A damaged file could take minutes.
constexpr double kMostSeconds = 60;
// Some decoders read whole blocks, of which the last need not be full.
constexpr std::size_t kMostMissingBytes = std::size_t(64) << 10U;
constexpr int kBitsOfChannel = 8;
constexpr int kSrgb = 1;

// LibRaw's turn is a sum: 4 exchanges rows and columns, after 2 upside down and 1 left to right.
constexpr int kExifOfFlip[] = {1, 2, 4, 3, 5, 8, 6, 7};

/// Counts what is asked for beyond the end of the file: most decoders take the rest for zeros.
class CountingStream : public LibRaw_buffer_datastream {
public:
    explicit CountingStream(std::span<const std::uint8_t> bytes)
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the library only reads, but takes no const.
        : LibRaw_buffer_datastream(const_cast<std::uint8_t*>(bytes.data()), bytes.size()) {}

    std::size_t missingBytes() const { return _missingBytes; }
    void startCounting() { _missingBytes = 0; }

    int read(void* target, std::size_t size, std::size_t count) override {
        const int taken = LibRaw_buffer_datastream::read(target, size, count);
        const auto bytes = taken > 0 ? static_cast<std::size_t>(taken) * size : 0;
        _missingBytes += size * count - std::min(bytes, size * count);
        return taken;
    }

    int get_char() override {
        const int character = LibRaw_buffer_datastream::get_char();
        _missingBytes += character < 0 ? 1 : 0;
        return character;
    }

    int seek(INT64 offset, int whence) override {
        if (whence == SEEK_SET && offset > size()) {
            _missingBytes += static_cast<std::size_t>(offset - size());
        }
        return LibRaw_buffer_datastream::seek(offset, whence);
    }

private:
    std::size_t _missingBytes = 0;
};

class Library : public LibRaw {
public:
    Library() : LibRaw(LIBRAW_OPIONS_NO_DATAERR_CALLBACK | LIBRAW_OPIONS_NO_MEMERR_CALLBACK) {}

    /// Where in the file the preview begins.
    std::size_t previewOffset() const {
        const auto offset = libraw_internal_data.internal_data.toffset;
        return offset > 0 ? static_cast<std::size_t>(offset) : 0;
    }

    /// Where in the file the sensor's pixels of a CR3 end; 0 for other files, which do not all tell.
    std::size_t pixelEnd() const {
        const auto& unpacker = libraw_internal_data.unpacker_data;
        const auto end = unpacker.data_offset + unpacker.data_size;
        return unpacker.crx_track_selected >= 0 && end > 0 ? static_cast<std::size_t>(end) : 0;
    }
};

/// One picture in LibRaw's hands, opened.
class RawFile {
public:
    /// Null for what is no raw picture, or one whose sensor is out of reason.
    static std::unique_ptr<RawFile> open(std::span<const std::uint8_t> bytes);

    Library& library() { return _library; }
    std::span<const std::uint8_t> previewBytes() const;
    /// Reads the sensor's pixels. False also where they end too early: the rest would be black or noise.
    bool unpack();
    libraw_data_t& data() { return _library.imgdata; }

private:
    explicit RawFile(std::span<const std::uint8_t> bytes) : _bytes(bytes), _stream(bytes) {}

    static int isOverdue(void* file, LibRaw_progress /*stage*/, int /*iteration*/, int /*expected*/) {
        return processorSecondsOfThread() > static_cast<RawFile*>(file)->_deadline ? 1 : 0;
    }

    std::span<const std::uint8_t> _bytes;
    CountingStream _stream; // Outlives the library, which reads from it.
    Library _library;
    double _deadline = processorSecondsOfThread() + kMostSeconds;
};

std::unique_ptr<RawFile> RawFile::open(std::span<const std::uint8_t> bytes) {
    std::unique_ptr<RawFile> file(new RawFile(bytes));
    file->_library.set_progress_handler(isOverdue, file.get());
    file->data().params.max_raw_memory_mb = kMaximumWorkingMegabytes;
    if (file->_library.open_datastream(&file->_stream) != LIBRAW_SUCCESS) {
        return nullptr;
    }
    const auto& sizes = file->data().sizes;
    const std::size_t pixels = std::size_t(sizes.raw_width) * sizes.raw_height;
    return pixels > 0 && pixels <= kMaximumSensorPixels ? std::move(file) : nullptr;
}

/// No sensor gives nothing but zeros: then they were not in the file. True for what is no mosaic.
bool hasSensorPixels(const libraw_data_t& data) {
    const ushort* const pixels = data.rawdata.raw_image;
    const std::size_t count = std::size_t(data.sizes.raw_width) * data.sizes.raw_height;
    return pixels == nullptr || std::any_of(pixels, pixels + count, [](ushort pixel) { return pixel != 0; });
}

bool RawFile::unpack() {
    if (_library.pixelEnd() > _bytes.size() + kMostMissingBytes) {
        return false; // That decoder would leave the picture's memory as it got it, and be content.
    }
    _stream.startCounting();
    return _library.unpack() == LIBRAW_SUCCESS && _stream.missingBytes() <= kMostMissingBytes &&
           hasSensorPixels(data());
}

/// Runs a call into the library, which reports some damage by throwing.
template<typename Work>
auto guarded(Work work) -> decltype(work()) {
    try {
        return work();
    } catch (...) {
        return std::nullopt;
    }
}

std::optional<RawFacts> factsOf(RawFile& file) {
    RawFacts facts;
    facts.exifOrientation = kExifOfFlip[static_cast<unsigned>(file.data().sizes.flip) & 7U];
    file.data().params.user_flip = 0;
    if (file.library().adjust_sizes_info_only() != LIBRAW_SUCCESS) {
        return std::nullopt;
    }
    facts.size = {file.data().sizes.iwidth, file.data().sizes.iheight};
    return facts.size.width > 0 && facts.size.height > 0 ? std::optional(facts) : std::nullopt;
}

/// Empty where they do not lie wholly in the file.
std::span<const std::uint8_t> RawFile::previewBytes() const {
    const std::size_t offset = _library.previewOffset();
    const std::size_t length = _library.imgdata.thumbnail.tlength;
    const bool isInside = offset <= _bytes.size() && length <= _bytes.size() - offset;
    return isInside ? _bytes.subspan(offset, length) : std::span<const std::uint8_t>();
}

std::optional<Bitmap> unpackedPreview(RawFile& file) {
    if (file.library().unpack_thumb() != LIBRAW_SUCCESS) {
        return std::nullopt;
    }
    const libraw_thumbnail_t& thumbnail = file.data().thumbnail;
    const std::size_t size = std::size_t(thumbnail.twidth) * thumbnail.theight * 3;
    const bool isRgb = thumbnail.tformat == LIBRAW_THUMBNAIL_BITMAP && thumbnail.thumb != nullptr &&
                       size > 0 && size == thumbnail.tlength;
    if (!isRgb) {
        return std::nullopt;
    }
    Bitmap bitmap;
    bitmap.width = thumbnail.twidth;
    bitmap.height = thumbnail.theight;
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(thumbnail.thumb);
    bitmap.pixels.assign(bytes, bytes + size);
    return bitmap;
}

std::optional<RawPreview> previewOf(RawFile& file) {
    constexpr std::uint8_t kJpegStart[] = {0xff, 0xd8, 0xff};
    const auto bytes = file.previewBytes();
    if (bytes.size() < sizeof(kJpegStart)) {
        return std::nullopt;
    }
    // The library would open a JPEG only to find out its colours, and write about its damage.
    if (std::equal(std::begin(kJpegStart), std::end(kJpegStart), bytes.begin())) {
        return RawPreview{{bytes.begin(), bytes.end()}, {}};
    }
    auto bitmap = unpackedPreview(file);
    return bitmap ? std::optional(RawPreview{{}, std::move(*bitmap)}) : std::nullopt;
}

bool isHalfEnough(PixelSize full, std::optional<PixelSize> wanted) {
    return wanted && wanted->width <= full.width / 2 && wanted->height <= full.height / 2;
}

void chooseRendering(libraw_output_params_t& parameters, bool isHalf) {
    parameters.half_size = isHalf ? 1 : 0;
    parameters.use_camera_wb = 1;
    parameters.output_color = kSrgb;
    parameters.output_bps = kBitsOfChannel;
    parameters.user_flip = 0;
}

std::optional<Bitmap> bitmapOf(LibRaw& library) {
    Bitmap bitmap;
    int bits = 0;
    library.get_mem_image_format(&bitmap.width, &bitmap.height, &bitmap.channels, &bits);
    const bool isPlain = bits == kBitsOfChannel && (bitmap.channels == 1 || bitmap.channels == 3);
    if (!isPlain || bitmap.width <= 0 || bitmap.height <= 0) {
        return std::nullopt;
    }
    const int stride = bitmap.width * bitmap.channels;
    bitmap.pixels.resize(static_cast<std::size_t>(stride) * static_cast<std::size_t>(bitmap.height));
    const bool isCopied = library.copy_mem_image(bitmap.pixels.data(), stride, 0) == LIBRAW_SUCCESS;
    return isCopied ? std::optional(std::move(bitmap)) : std::nullopt;
}

std::optional<Bitmap> developed(std::span<const std::uint8_t> bytes, std::optional<PixelSize> wanted) {
    const auto file = RawFile::open(bytes);
    if (!file) {
        return std::nullopt;
    }
    Library& library = file->library();
    const auto& sizes = file->data().sizes;
    chooseRendering(file->data().params, isHalfEnough({sizes.width, sizes.height}, wanted));
    const bool isDone = file->unpack() && library.dcraw_process() == LIBRAW_SUCCESS;
    return isDone ? bitmapOf(library) : std::nullopt;
}

} // namespace

std::optional<RawFacts> RawDecoder::facts(std::span<const std::uint8_t> file) const {
    return guarded([&] {
        const auto raw = RawFile::open(file);
        return raw ? factsOf(*raw) : std::nullopt;
    });
}

std::optional<RawPreview> RawDecoder::preview(std::span<const std::uint8_t> file) const {
    return guarded([&] {
        const auto raw = RawFile::open(file);
        return raw ? previewOf(*raw) : std::nullopt;
    });
}

std::optional<Bitmap> RawDecoder::develop(
    std::span<const std::uint8_t> file, std::optional<PixelSize> wanted) const {
    return guarded([&] { return developed(file, wanted); });
}

} // namespace exifcard
