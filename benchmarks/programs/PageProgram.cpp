// Reads the first page of a library, or without a length opens its database and selects 1: what a list costs
// a whole process until it has its first photos.
//
//     benchmark_page FOLDER [LENGTH]
#include "platform/photos/CatalogueSchema.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/sqlite/SQLiteDatabase.h"

#include <cstdlib>

int main(int argumentCount, char** arguments) {
    using namespace exifcard;
    const std::string folder = argumentCount > 1 ? arguments[1] : "";
    if (argumentCount < 3) {
        SQLiteDatabase database(folder + "/library.sqlite", catalogueMigrations());
        return database.query("SELECT 1").step() ? 0 : 1;
    }
    PHPhotoLibrary::grantForThisProcess();
    PhotoCatalogue::setShared(PhotoCatalogue::inFolder(folder));
    PHFetchOptions options;
    options.sortDescriptors = {{"creationDate", false}, {"modificationDate", false}};
    const auto length = std::strtoul(arguments[2], nullptr, 10);
    return PHAsset::fetchAssetsWithOptions(options)->objectsInRange(0, length).size() == length ? 0 : 1;
}
