// Walks a folder, reads the header and the fingerprint of every file and inserts a row for it, 500 a
// transaction: what an import cannot do without, and the peer of `exifcard import`.
#include "platform/foundation/Data.h"
#include "platform/foundation/Dictionary.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/photos/import/Fingerprint.h"

#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace exifcard;

constexpr int kRowsATransaction = 500;

void execute(sqlite3* database, const char* sql) {
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(database));
        std::exit(1);
    }
}

void insert(sqlite3_stmt* row, const fs::path& path) {
    struct stat status {};
    const auto file = lstat(path.c_str(), &status) == 0 ? Data::mappedFileForEnds(path) : std::nullopt;
    if (!file) {
        return;
    }
    const auto source = CGImageSourceCreateWithData(*file);
    const auto properties = CGImageSourceCopyPropertiesAtIndex(*source, 0);
    if (!properties) {
        return;
    }
    const auto* const exif = properties->objectForKey(kCGImagePropertyExifDictionary).dictionaryView();
    const auto* const date =
        exif != nullptr ? exif->objectForKey(kCGImagePropertyExifDateTimeOriginal).text() : nullptr;
    sqlite3_bind_text(row, 1, path.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_int64(row, 2, status.st_size);
    sqlite3_bind_int64(row, 3, status.st_mtim.tv_sec);
    sqlite3_bind_int64(row, 4, static_cast<std::int64_t>(status.st_ino));
    sqlite3_bind_int64(row, 5, quickFingerprint(*file));
    sqlite3_bind_int64(row, 6, properties->objectForKey(kCGImagePropertyPixelWidth).integerValue());
    sqlite3_bind_int64(row, 7, properties->objectForKey(kCGImagePropertyPixelHeight).integerValue());
    sqlite3_bind_text(row, 8, date != nullptr ? date->c_str() : "", -1, SQLITE_TRANSIENT);
    sqlite3_step(row);
    sqlite3_reset(row);
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) {
        std::fprintf(stderr, "usage: benchmark_import_loop FOLDER DATABASE\n");
        return 2;
    }
    sqlite3* database = nullptr;
    sqlite3_open(arguments[2], &database);
    execute(database,
        "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL;"
        "CREATE TABLE files (path TEXT PRIMARY KEY, size, modified, inode, quick, width, height, taken);"
        "CREATE INDEX by_content ON files (quick); BEGIN");
    sqlite3_stmt* row = nullptr;
    sqlite3_prepare_v2(database, "INSERT INTO files VALUES (?, ?, ?, ?, ?, ?, ?, ?)", -1, &row, nullptr);
    int count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(arguments[1])) {
        if (entry.is_regular_file()) {
            insert(row, entry.path());
            if (++count % kRowsATransaction == 0) {
                execute(database, "COMMIT; BEGIN");
            }
        }
    }
    execute(database, "COMMIT");
    sqlite3_finalize(row);
    sqlite3_close(database);
    std::printf("%d files\n", count);
    return 0;
}
