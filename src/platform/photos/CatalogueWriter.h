#pragma once

#include "platform/photos/CatalogueRecords.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class PhotoCatalogue;

/// Writes into the catalogue what was found on disk. For one thread; blocks.
///
/// Changes are put together: after 500 of them, and at `commit`, they are in
/// the library together and observers hear of them. A kill at any moment leaves
/// whole batches. Other writers come in between batches.
///
/// After the first failure every call does nothing; `error` tells it.
class CatalogueWriter {
public:
    static constexpr std::size_t kChangesATransaction = 500;

    explicit CatalogueWriter(std::shared_ptr<PhotoCatalogue> catalogue);
    /// Commits.
    ~CatalogueWriter();
    CatalogueWriter(const CatalogueWriter&) = delete;
    CatalogueWriter& operator=(const CatalogueWriter&) = delete;

    void commit();
    /// One sentence with the file and the cause.
    std::optional<std::string> error() const;

    std::vector<LibraryRoot> roots();
    /// The number of the root of that path, which is added when it is new.
    std::int64_t storeRoot(const LibraryRoot& root);
    /// Its folders and files are forgotten, its assets vanish.
    void removeRoot(std::int64_t root);

    std::vector<LibraryFolder> foldersOfRoot(std::int64_t root);
    /// The number of that folder, which is added when it is new.
    std::int64_t storeFolder(std::int64_t root, std::string_view path);
    /// Remembers whether a drive of its own is mounted on the folder.
    void markMountPoint(std::int64_t folder, bool isMountPoint);
    /// Forgets the folder, and its album. Its assets are to be moved or marked first; those left vanish.
    void removeFolder(std::int64_t folder);
    /// Shows what lies in the folder, without those in it, as an album of that title.
    void showFolderAsAlbum(std::int64_t folder, std::string_view title);

    /// What is known of a folder's files, ascending by name; those of vanished assets too.
    std::vector<CatalogueFile> filesInFolder(std::int64_t folder);
    std::optional<CatalogueFile> fileInFolder(std::int64_t folder, std::string_view name);
    /// Files of the same content, vanished ones too; at most 100.
    std::vector<CatalogueFile> filesWithQuickFingerprint(std::int64_t fingerprint);
    /// Those of one live photo, whatever they are called; at most 100.
    std::vector<CatalogueFile> filesWithContentIdentifier(std::int64_t folder, std::string_view identifier);
    /// The asset that represents the burst, unless it has vanished; 0 without one.
    std::int64_t assetRepresentingBurst(std::string_view burstIdentifier);
    /// Nothing for a number that there is not.
    std::optional<CatalogueAsset> asset(std::int64_t number);

    /// Adds or replaces an asset with all its files. One that was vanished is back, with what the user said
    /// of it. A file that another asset had becomes this one's.
    /// @return Its number; 0 after a failure.
    std::int64_t storeAsset(const CatalogueAsset& asset);
    /// The file was touched, renamed or moved, its bytes are the same.
    void storeFile(const CatalogueFile& file);
    /// Their files are gone. They leave every fetch, but are known when the files come back.
    void markVanished(std::span<const std::int64_t> assets);

private:
    class Implementation;
    std::unique_ptr<Implementation> _implementation;
};

} // namespace exifcard
