#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class MappedFile;

/// Immutable bytes, shared by every copy: held in memory, or a mapped file of
/// which only the pages that are read are ever loaded.
class Data {
public:
    /// No bytes.
    Data() = default;

    static Data fromBytes(std::vector<std::uint8_t> bytes);
    static Data fromText(std::string_view text);

    /// Maps the regular file at `path` for reading.
    /// @return Nothing for a path that cannot be opened or is no regular file
    ///         (a folder, a FIFO, a device); never blocks on one.
    static std::optional<Data> mappedFile(const std::string& path);
    /// The same for a file of which the beginning and the end alone are read, or little more: an import must
    /// not fetch all of every photo from the disk.
    static std::optional<Data> mappedFileForEnds(const std::string& path);

    std::size_t size() const { return _bytes.size(); }
    bool empty() const { return _bytes.empty(); }
    const std::uint8_t* data() const { return _bytes.data(); }

    /// The bytes; valid while this Data or a copy or a slice of it lives.
    std::span<const std::uint8_t> bytes() const { return _bytes; }
    std::string_view text() const;

    /// Part of the same storage, uncopied. Positions beyond the end give the
    /// bytes that there are.
    Data slice(std::size_t offset, std::size_t length) const;

    /// Whether a mapped file turned out shorter than it was when it was mapped:
    /// what was read beyond its end came out as zeros, so the result of reading
    /// is to be dropped. Always false for bytes in memory.
    bool wasCutShort() const;

    /// Equal bytes.
    bool operator==(const Data& other) const;

private:
    class Storage;
    static std::optional<Data> fromMappedFile(std::unique_ptr<MappedFile> file);
    Data(std::shared_ptr<const Storage> storage, std::span<const std::uint8_t> bytes);

    std::shared_ptr<const Storage> _storage;
    std::span<const std::uint8_t> _bytes;
};

} // namespace exifcard
