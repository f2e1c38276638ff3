#include "platform/foundation/Data.h"

#include "platform/foundation/MappedFile.h"

#include <algorithm>

namespace exifcard {

class Data::Storage {
public:
    explicit Storage(std::vector<std::uint8_t> bytes) : _bytes(std::move(bytes)) {}
    explicit Storage(std::unique_ptr<MappedFile> file) : _file(std::move(file)) {}

    std::span<const std::uint8_t> bytes() const { return _file ? _file->bytes() : std::span(_bytes); }
    bool wasCutShort() const { return _file && _file->wasCutShort(); }

private:
    std::vector<std::uint8_t> _bytes;
    std::unique_ptr<MappedFile> _file;
};

Data::Data(std::shared_ptr<const Storage> storage, std::span<const std::uint8_t> bytes)
    : _storage(std::move(storage))
    , _bytes(bytes) {
}

Data Data::fromBytes(std::vector<std::uint8_t> bytes) {
    auto storage = std::make_shared<const Storage>(std::move(bytes));
    const auto view = storage->bytes();
    return {std::move(storage), view};
}

Data Data::fromText(std::string_view text) {
    return fromBytes(std::vector<std::uint8_t>(text.begin(), text.end()));
}

std::optional<Data> Data::mappedFile(const std::string& path) {
    return fromMappedFile(MappedFile::open(path, Reading::Whole));
}

std::optional<Data> Data::mappedFileForEnds(const std::string& path) {
    return fromMappedFile(MappedFile::open(path, Reading::Ends));
}

std::optional<Data> Data::fromMappedFile(std::unique_ptr<MappedFile> file) {
    if (!file) {
        return std::nullopt;
    }
    auto storage = std::make_shared<const Storage>(std::move(file));
    const auto view = storage->bytes();
    return Data(std::move(storage), view);
}

std::string_view Data::text() const {
    return {reinterpret_cast<const char*>(_bytes.data()), _bytes.size()};
}

Data Data::slice(std::size_t offset, std::size_t length) const {
    const std::size_t begin = std::min(offset, _bytes.size());
    return {_storage, _bytes.subspan(begin, std::min(length, _bytes.size() - begin))};
}

bool Data::wasCutShort() const {
    return _storage && _storage->wasCutShort();
}

bool Data::operator==(const Data& other) const {
    return std::ranges::equal(_bytes, other._bytes);
}

} // namespace exifcard
