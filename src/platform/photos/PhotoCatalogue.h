#pragma once

#include "platform/sqlite/SQLiteDatabase.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

class AssetByteSource;
class CatalogueConnections;
class CatalogueWatcher;
struct AssetFile;

/// The database of the photo library, `library.sqlite` in the data folder, with a backup of what only it
/// knows (favourites, hidden assets, the user's albums, the library's roots) in `library-backup.sqlite`
/// beside it.
///
/// A damaged catalogue is moved aside under another name and begun anew; then,
/// and when it was deleted, the backup gives back the roots at once, and the
/// rest as the import finds the files again. Thread-safe.
class PhotoCatalogue : public std::enable_shared_from_this<PhotoCatalogue> {
public:
    /// The catalogue that the platform's classes ask: of the data folder, unless another was set.
    static std::shared_ptr<PhotoCatalogue> shared();
    /// Null: the data folder's again, opened when it is next wanted.
    static void setShared(std::shared_ptr<PhotoCatalogue> catalogue);
    /// The catalogue of a folder, which is made when something is first written.
    /// @param longestWait  For other programs that write.
    static std::shared_ptr<PhotoCatalogue> inFolder(
        std::string folder, std::chrono::milliseconds longestWait = SQLiteDatabase::kLongestWait);

    ~PhotoCatalogue();
    PhotoCatalogue(const PhotoCatalogue&) = delete;
    PhotoCatalogue& operator=(const PhotoCatalogue&) = delete;

    const std::string& folder() const { return _folder; }
    std::string file() const { return _folder + "/library.sqlite"; }
    /// Why it cannot be read now: one sentence with the file and the cause, for the
    /// caller to tell. Blocks.
    std::optional<std::string> error();

    /// Whether it was begun anew in place of one that is lost, and its roots are still to be read again.
    /// Blocks.
    bool needsRebuild();
    void finishRebuild();

    /// Who brings the bytes of roots of that kind; "folder" is there from the start.
    void setByteSource(std::string_view kind, std::shared_ptr<AssetByteSource> source);
    /// Null for a kind that nobody brings.
    std::shared_ptr<AssetByteSource> byteSource(std::string_view kind) const;

    /// Connections to the database; for the sources of this room.
    CatalogueConnections& connections() { return *_connections; }
    CatalogueWatcher& watcher() { return *_watcher; }

private:
    PhotoCatalogue(std::string folder, std::chrono::milliseconds longestWait);

    struct Sources;
    const std::string _folder;
    std::unique_ptr<CatalogueConnections> _connections;
    std::unique_ptr<CatalogueWatcher> _watcher;
    std::unique_ptr<Sources> _sources;
};

} // namespace exifcard
