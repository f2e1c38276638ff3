#include "platform/imageio/pixels/Resampler.h"

#include "platform/imageio/pixels/TargetSize.h"

#include <zimg.h>

#include <memory>
#include <vector>

namespace exifcard {
namespace {

// The filter keeps as many rows as one row of the result is made of: a few megabytes, or the whole picture
// where a large one becomes a few pixels high.
constexpr std::size_t kMaximumWorkingMemory = std::size_t(1) << 30U;

struct FreeGraph {
    void operator()(zimg_filter_graph* graph) const { zimg_filter_graph_free(graph); }
};
using Graph = std::unique_ptr<zimg_filter_graph, FreeGraph>;

zimg_image_format formatOf(PixelSize size, int channels) {
    zimg_image_format format = {};
    zimg_image_format_default(&format, ZIMG_API_VERSION);
    format.width = static_cast<unsigned>(size.width);
    format.height = static_cast<unsigned>(size.height);
    format.pixel_type = ZIMG_PIXEL_BYTE;
    format.depth = 8;
    format.pixel_range = ZIMG_RANGE_FULL;
    format.color_family = channels == 1 ? ZIMG_COLOR_GREY : ZIMG_COLOR_RGB;
    format.matrix_coefficients = channels == 1 ? ZIMG_MATRIX_UNSPECIFIED : ZIMG_MATRIX_RGB;
    format.alpha = channels == 4 ? ZIMG_ALPHA_STRAIGHT : ZIMG_ALPHA_NONE;
    return format;
}

Graph makeGraph(const zimg_image_format& from, const zimg_image_format& to) {
    zimg_graph_builder_params parameters = {};
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.resample_filter = ZIMG_RESIZE_LANCZOS;
    parameters.resample_filter_uv = ZIMG_RESIZE_BILINEAR; // The eye sees less sharply in colour.
    return Graph(zimg_filter_graph_build(&from, &to, &parameters));
}

/// A few rows of a bitmap as separate planes, which the filter asks for or fills row by row.
class RowWindow {
public:
    /// @param pixels     The bitmap's.
    /// @param lineCount  How many rows the filter looks at together.
    RowWindow(std::uint8_t* pixels, PixelSize size, int channels, unsigned lineCount)
        : _pixels(pixels)
        , _width(static_cast<std::size_t>(size.width))
        , _channels(static_cast<std::size_t>(channels))
        , _stride(AlignedBytes::stride(_width))
        , _mask(zimg_select_buffer_mask(lineCount)) {
        const std::size_t height =
            _mask == ZIMG_BUFFER_MAX ? static_cast<std::size_t>(size.height) : _mask + 1U;
        _rows = AlignedBytes(_channels * height * _stride);
        _planeSize = height * _stride;
    }

    bool isAllocated() const { return _rows.get() != nullptr; }
    std::uint8_t* plane(std::size_t channel) const { return _rows.get() + channel * _planeSize; }
    auto stride() const { return static_cast<std::ptrdiff_t>(_stride); }
    unsigned mask() const { return _mask; }
    std::size_t channelCount() const { return _channels; }

    static int unpack(void* window, unsigned row, unsigned left, unsigned right) {
        static_cast<const RowWindow*>(window)->copy<false>(row, left, right);
        return 0;
    }
    static int pack(void* window, unsigned row, unsigned left, unsigned right) {
        static_cast<const RowWindow*>(window)->copy<true>(row, left, right);
        return 0;
    }

private:
    /// Between the bitmap and the planes; to the bitmap when `isPacking`.
    template<bool isPacking>
    void copy(unsigned row, std::size_t left, std::size_t right) const {
        std::uint8_t* const pixels = _pixels + row * _width * _channels;
        for (std::size_t channel = 0; channel < _channels; ++channel) {
            std::uint8_t* const values = plane(channel) + (row & _mask) * _stride;
            for (std::size_t column = left; column < right; ++column) {
                std::uint8_t& pixel = pixels[column * _channels + channel];
                isPacking ? pixel = values[column] : values[column] = pixel;
            }
        }
    }

    std::uint8_t* _pixels;
    std::size_t _width;
    std::size_t _channels;
    std::size_t _stride;
    unsigned _mask;
    std::size_t _planeSize = 0;
    AlignedBytes _rows;
};

template<typename Buffer>
void describe(Buffer& buffer, const RowWindow& window) {
    for (std::size_t channel = 0; channel < window.channelCount(); ++channel) {
        buffer.plane[channel] = {window.plane(channel), window.stride(), window.mask()};
    }
}

/// Runs the graph into a new bitmap. `unpacked` hands in the rows of the source; null when it lies in planes.
std::optional<Bitmap> runGraph(const zimg_filter_graph* graph,
    const zimg_image_buffer_const& source,
    RowWindow* unpacked,
    PixelSize size,
    int channels) {
    unsigned lineCount = 0;
    std::size_t workingSize = 0;
    zimg_filter_graph_get_output_buffering(graph, &lineCount);
    zimg_filter_graph_get_tmp_size(graph, &workingSize);
    if (workingSize > kMaximumWorkingMemory) {
        return std::nullopt;
    }
    Bitmap result;
    result.width = size.width;
    result.height = size.height;
    result.channels = channels;
    result.pixels.resize(pixelCount(size) * static_cast<std::size_t>(channels));
    RowWindow packed(result.pixels.data(), size, channels, lineCount);
    const AlignedBytes workingMemory(workingSize);
    if (!packed.isAllocated() || workingMemory.get() == nullptr) {
        return std::nullopt;
    }
    zimg_image_buffer destination = {};
    destination.version = ZIMG_API_VERSION;
    describe(destination, packed);
    const auto failure = zimg_filter_graph_process(graph, &source, &destination, workingMemory.get(),
        unpacked != nullptr ? RowWindow::unpack : nullptr, unpacked, RowWindow::pack, &packed);
    return failure == ZIMG_ERROR_SUCCESS ? std::optional(std::move(result)) : std::nullopt;
}

bool isInReason(PixelSize size) {
    return size.width > 0 && size.height > 0 && pixelCount(size) <= kMaximumDecodedPixels;
}

} // namespace

std::optional<Bitmap> resampledRgb(const YuvPlanes& planes, PixelSize size) {
    if (!isInReason(size)) {
        return std::nullopt;
    }
    zimg_image_format from = formatOf(planes.size, 3);
    from.color_family = ZIMG_COLOR_YUV;
    from.matrix_coefficients = ZIMG_MATRIX_BT470_BG;
    from.chroma_location = ZIMG_CHROMA_CENTER;
    from.subsample_w = static_cast<unsigned>(planes.horizontalSubsampling);
    from.subsample_h = static_cast<unsigned>(planes.verticalSubsampling);
    const Graph graph = makeGraph(from, formatOf(size, 3));
    if (!graph) {
        return std::nullopt;
    }
    zimg_image_buffer_const source = {};
    source.version = ZIMG_API_VERSION;
    for (std::size_t index = 0; index < planes.planes.size(); ++index) {
        const auto stride = static_cast<std::ptrdiff_t>(planes.strides[index]);
        source.plane[index] = {planes.planes[index].get(), stride, ZIMG_BUFFER_MAX};
    }
    return runGraph(graph.get(), source, nullptr, size, 3);
}

std::optional<Bitmap> resampledBitmap(const Bitmap& bitmap, const CGRect& region, PixelSize size) {
    if (!isInReason(size)) {
        return std::nullopt;
    }
    zimg_image_format from = formatOf({bitmap.width, bitmap.height}, bitmap.channels);
    from.active_region = {region.origin.x, region.origin.y, region.size.width, region.size.height};
    const Graph graph = makeGraph(from, formatOf(size, bitmap.channels));
    if (!graph) {
        return std::nullopt;
    }
    unsigned lineCount = 0;
    zimg_filter_graph_get_input_buffering(graph.get(), &lineCount);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the window only reads what it unpacks.
    auto* const pixels = const_cast<std::uint8_t*>(bitmap.pixels.data());
    RowWindow unpacked(pixels, {bitmap.width, bitmap.height}, bitmap.channels, lineCount);
    if (!unpacked.isAllocated()) {
        return std::nullopt;
    }
    zimg_image_buffer_const source = {};
    source.version = ZIMG_API_VERSION;
    describe(source, unpacked);
    auto result = runGraph(graph.get(), source, &unpacked, size, bitmap.channels);
    if (result) {
        result->iccProfile = bitmap.iccProfile;
    }
    return result;
}

} // namespace exifcard
