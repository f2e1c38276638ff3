#include "platform/imageio/CGImageSource.h"

#include "platform/foundation/Log.h"
#include "platform/imageio/ContainerReaders.h"
#include "platform/imageio/ContentType.h"

#include <fmt/format.h>

#include <array>
#include <optional>

namespace exifcard {

class CGImageSource {
public:
    CGImageSource(Data data, std::string name)
        : _data(std::move(data))
        , _name(std::move(name))
        , _content(contentTypeOf(_data))
        , _type(_content.identifier) {}

    const Data& data() const { return _data; }
    const std::string& type() const { return _type; }
    std::size_t count() const;
    DictionaryPtr properties(std::size_t index) const;
    LibraryMetadata libraryMetadata() const;

private:
    std::optional<ImageFacts> facts(std::size_t index) const;
    DictionaryPtr refused(std::string_view cause) const;

    Data _data;
    std::string _name; // For the log.
    ContentType _content;
    std::string _type;
};

namespace {

struct ContainerReader {
    std::optional<ImageFacts> (*read)(const Data& file, std::size_t index);
    std::size_t (*count)(const Data& file);
};

std::optional<ImageFacts> readNothing(const Data& /*file*/, std::size_t /*index*/) {
    return std::nullopt;
}

std::size_t countNone(const Data& /*file*/) {
    return 0;
}

std::size_t countOne(const Data& /*file*/) {
    return 1;
}

/// In the order of `Container`.
constexpr ContainerReader kReaders[] = {
    {readNothing, countNone},
    {readJpeg, countOne},
    {readPng, countPng},
    {readGif, countGif},
    {readBmp, countOne},
    {readWebP, countWebP},
    {readHeif, countHeif},
    {readTiff, countTiff},
    {readTiffRaw, countOne},
    {readPanasonicRaw, countOne},
    {readFujiRaw, countOne},
    {readMinoltaRaw, countOne},
    {readCanonCrw, countOne},
};

const ContainerReader& readerFor(Container container) {
    return kReaders[static_cast<std::size_t>(container)];
}

} // namespace

std::size_t CGImageSource::count() const {
    return readerFor(_content.container).count(_data);
}

DictionaryPtr CGImageSource::refused(std::string_view cause) const {
    if (isDebugLogWanted()) {
        debugLog(fmt::format("ImageIO: {}: {}", _name, cause));
    }
    return nullptr;
}

std::optional<ImageFacts> CGImageSource::facts(std::size_t index) const {
    if (_content.container == Container::None) {
        refused("not an image of a known kind");
        return std::nullopt;
    }
    auto facts = readerFor(_content.container).read(_data, index);
    if (!facts) {
        refused("damaged, or without an image of this number");
    }
    return facts;
}

DictionaryPtr CGImageSource::properties(std::size_t index) const {
    const auto found = facts(index);
    auto properties = found ? propertiesFromFacts(*found) : nullptr;
    return _data.wasCutShort() ? refused("cut short while it was read") : properties;
}

LibraryMetadata CGImageSource::libraryMetadata() const {
    const auto found = facts(0);
    auto metadata = found ? libraryMetadataFromFacts(*found) : LibraryMetadata();
    return _data.wasCutShort() ? LibraryMetadata{refused("cut short while it was read"), {}} : metadata;
}

CGImageSourcePtr CGImageSourceCreateWithData(const Data& data) {
    return std::make_shared<const CGImageSource>(data, "data");
}

CGImageSourcePtr CGImageSourceCreateWithURL(const URL& url) {
    auto path = url.path();
    auto data = Data::mappedFile(path);
    return data ? std::make_shared<const CGImageSource>(std::move(*data), std::move(path)) : nullptr;
}

std::size_t CGImageSourceGetCount(const CGImageSource& source) {
    return source.count();
}

const std::string& CGImageSourceGetType(const CGImageSource& source) {
    return source.type();
}

const Data& CGImageSourceGetData(const CGImageSource& source) {
    return source.data();
}

DictionaryPtr CGImageSourceCopyPropertiesAtIndex(const CGImageSource& source, std::size_t index) {
    return source.properties(index);
}

LibraryMetadata CGImageSourceCopyLibraryMetadata(const CGImageSource& source) {
    return source.libraryMetadata();
}

} // namespace exifcard
