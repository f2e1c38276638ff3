#include "platform/photos/PHPhotoLibrary.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/OperationQueue.h"
#include "platform/foundation/PlatformException.h"
#include "platform/photos/Authorization.h"
#include "platform/photos/CatalogueTransaction.h"
#include "platform/photos/CatalogueWatcher.h"
#include "platform/photos/ChangeBlock.h"
#include "platform/photos/PhotoCatalogue.h"

#include <utility>

namespace exifcard {
namespace {

OperationQueue& changeQueue() {
    static auto* const queue = new OperationQueue(1);
    return *queue;
}

std::optional<PHError> apply(const ChangeBlock& block) {
    const auto catalogue = PhotoCatalogue::shared();
    const auto database = catalogue->connections().writer();
    {
        CatalogueTransaction transaction(catalogue, database);
        for (const ChangeBlock::Step& step : block.steps()) {
            if (auto error = step(*database, transaction.change())) {
                return error;
            }
        }
        transaction.commit();
    }
    if (const auto& error = database->error()) {
        return PHError{PHErrorCode::InternalError, *error};
    }
    catalogue->connections().writeBackup();
    return std::nullopt;
}

std::optional<PHError> perform(const std::function<void()>& changeBlock) {
    if (!isLibraryReadable()) {
        return PHError{PHErrorCode::AccessUserDenied, "Access to the photo library was denied."};
    }
    ChangeBlock block;
    try {
        block.gather(changeBlock);
    } catch (const PlatformException& exception) {
        errorLog(exception.what());
        return PHError{PHErrorCode::ChangeNotSupported, exception.what()};
    }
    return block.steps().empty() ? std::nullopt : apply(block);
}

} // namespace

PHPhotoLibrary& PHPhotoLibrary::sharedPhotoLibrary() {
    static auto& library = *new PHPhotoLibrary; // Threads may still ask while the program ends.
    return library;
}

void PHPhotoLibrary::performChanges(std::function<void()> changeBlock, CompletionHandler completionHandler) {
    changeQueue().addOperationWithBlock(
        [changeBlock = std::move(changeBlock), completionHandler = std::move(completionHandler)] {
            auto error = perform(changeBlock);
            if (error && error->code == PHErrorCode::InternalError && !completionHandler) {
                errorLog(error->localizedDescription);
            }
            if (completionHandler) {
                DispatchQueue::globalQueue().async([completionHandler, error = std::move(error)] {
                    completionHandler(!error.has_value(), error);
                });
            }
        });
}

std::optional<PHError> PHPhotoLibrary::performChangesAndWait(const std::function<void()>& changeBlock) {
    std::optional<PHError> error;
    DispatchSemaphore done(0);
    changeQueue().addOperationWithBlock([&] {
        error = perform(changeBlock);
        done.signal();
    });
    done.wait();
    return error;
}

void PHPhotoLibrary::registerChangeObserver(const std::shared_ptr<PHPhotoLibraryChangeObserver>& observer) {
    const auto catalogue = PhotoCatalogue::shared();
    catalogue->watcher().addObserver(catalogue, observer);
}

void PHPhotoLibrary::unregisterChangeObserver(const PHPhotoLibraryChangeObserver& observer) {
    PhotoCatalogue::shared()->watcher().removeObserver(observer);
}

} // namespace exifcard
