#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/FileCommand.h"
#include "cli/JsonWriter.h"
#include "cli/OutputFile.h"
#include "cli/PhotoFile.h"
#include "cli/Session.h"
#include "platform/avfoundation/AVAsset.h"
#include "platform/avfoundation/AVAssetImageGenerator.h"
#include "platform/foundation/ASCII.h"
#include "platform/imageio/CGImageThumbnail.h"
#include "platform/imageio/ImageDrawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>

namespace exifcard {
namespace {

constexpr unsigned kUsualSize = 512;
constexpr unsigned kLargestSize = 16384;
constexpr double kQuality = 0.85;

struct ThumbnailOptions {
    FileArguments files;
    OutputOptions output;
    unsigned size = kUsualSize;
};

struct ImageFormat {
    std::string_view extension;
    Data (*encode)(const UIImage& image);
};

Data encodeJpeg(const UIImage& image) {
    return UIImageJPEGRepresentation(image, kQuality);
}

/// In a folder thumbnails are of the first kind.
constexpr ImageFormat kFormats[] = {
    {"jpg", encodeJpeg},
    {"jpeg", encodeJpeg},
    {"png", UIImagePNGRepresentation},
};

/// Null for an extension that tells of no kind.
const ImageFormat* formatOf(const std::string& path) {
    const std::string extension = lowerCaseASCII(pathExtension(path));
    const auto* const format = std::ranges::find(kFormats, extension, &ImageFormat::extension);
    return format != std::end(kFormats) ? format : nullptr;
}

std::shared_ptr<UIImage> thumbnailOfVideo(const URL& url, unsigned size) {
    AVAssetImageGenerator generator(AVURLAsset::assetWithURL(url));
    generator.appliesPreferredTrackTransform = true;
    generator.maximumSize = {double(size), double(size)};
    return generator.copyCGImageAtTime(CMTime{});
}

std::shared_ptr<UIImage> thumbnailOfFile(const std::string& name, unsigned size) {
    const URL url = urlOfFile(name);
    const auto source = CGImageSourceCreateWithURL(url);
    if (!source || CGImageSourceGetData(*source).empty()) {
        return nullptr;
    }
    if (CGImageSourceGetType(*source).empty()) {
        return thumbnailOfVideo(url, size);
    }
    return CGImageSourceCreateThumbnail(*source, CGImageSourceCopyPropertiesAtIndex(*source, 0),
        {.maximumPixelSize = static_cast<int>(size), .createWithTransform = true});
}

FileResult makeThumbnail(
    const std::string& name, const ThumbnailOptions& options, const SessionOptions& session) {
    const std::string path = outputPath(options.output, name, kFormats[0].extension);
    const auto image = thumbnailOfFile(name, options.size);
    const Data bytes = image ? formatOf(path)->encode(*image) : Data();
    if (bytes.empty()) {
        return failedFile(name, "make a thumbnail of", causeOfFailure(name), session.isJSON);
    }
    if (const auto fault = writeOutput(options.output, path, bytes)) {
        return failedFile(name, "make a thumbnail of", *fault, session.isJSON);
    }
    const int width = image->storedWidth();
    const int height = image->storedHeight();
    if (!session.isJSON) {
        return {.output = fmt::format("{} {} x {}\n", displayLine(path), width, height)};
    }
    JsonWriter json;
    json.beginObject().file(name).key("output").text(path);
    json.key("width").integer(width).key("height").integer(height).endObject();
    return {.output = json.take() + "\n"};
}

ExitStatus makeThumbnails(const ThumbnailOptions& options, Session& session) {
    if (!isFolder(options.output)) {
        if (!isOneFile(options.files)) {
            return session.refuse("several thumbnails need a folder to go to, such as -o thumbnails/");
        }
        if (formatOf(options.output.target) == nullptr) {
            return session.refuse(
                fmt::format("a thumbnail is a .jpg or a .png, not {}", options.output.target));
        }
    }
    return runOverFiles(options.files, session,
        [&](const std::string& name) { return makeThumbnail(name, options, session.options()); });
}

CommandAction declareThumbnail(CommandOptions& command) {
    auto options = std::make_shared<ThumbnailOptions>();
    declareFiles(command, options->files);
    declareOutput(command, options->output);
    command.value("--size", options->size, "The longer side in pixels; default: 512. Nothing is enlarged")
        .named("N")
        .between(1, kLargestSize);
    return [options](Session& session) { return makeThumbnails(*options, session); };
}

} // namespace

const Command kThumbnailCommand = {
    .name = "thumbnail",
    .summary = "Make small upright pictures of photos and videos",
    .examples = R"(Of one photo, as PNG:
  exifcard thumbnail photo.jpg -o small.png
Of all raw files, 256 pixels wide or high, into a folder:
  exifcard thumbnail --size 256 -o thumbnails/ *.NEF)",
    .declare = declareThumbnail,
};

} // namespace exifcard
