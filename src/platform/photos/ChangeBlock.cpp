#include "platform/photos/ChangeBlock.h"

#include "platform/foundation/PlatformException.h"

#include <utility>

namespace exifcard {
namespace {

thread_local ChangeBlock* currentBlock = nullptr;

/// Makes a block the current one for as long as it runs, however it ends.
class CurrentBlock {
public:
    explicit CurrentBlock(ChangeBlock* block) : _before(std::exchange(currentBlock, block)) {}
    ~CurrentBlock() { currentBlock = _before; }
    CurrentBlock(const CurrentBlock&) = delete;
    CurrentBlock& operator=(const CurrentBlock&) = delete;

private:
    ChangeBlock* _before;
};

} // namespace

ChangeBlock& ChangeBlock::current() {
    if (currentBlock == nullptr) {
        throw PlatformException("NSInternalInconsistencyException",
            "This method can only be called from inside of -[PHPhotoLibrary performChanges:completionHandler:]");
    }
    return *currentBlock;
}

void ChangeBlock::gather(const std::function<void()>& block) {
    const CurrentBlock current(this);
    block();
}

} // namespace exifcard
