#include "platform/uikit/CollectionCellPool.h"

#include "platform/foundation/PlatformException.h"
#include "platform/uikit/UICollectionReusableView.h"

#include <algorithm>

namespace exifcard {

void CollectionCellPool::registerFactory(
    std::string_view kind, std::string_view identifier, Factory factory) {
    _kinds[Key(kind, identifier)].factory = std::move(factory);
}

UICollectionReusableView& CollectionCellPool::dequeue(std::string_view kind, std::string_view identifier) {
    const auto found = _kinds.find(Key(kind, identifier));
    if (found == _kinds.end()) {
        std::string reason = "no class or interface file is registered for the reuse identifier ";
        reason += identifier;
        throw PlatformException("NSInternalInconsistencyException", reason);
    }
    Kind& its = found->second;
    if (its.waiting.empty()) {
        return make(its, identifier);
    }
    UICollectionReusableView& view = *its.waiting.back();
    its.waiting.pop_back();
    _handedOut.push_back({&view, &its});
    view.prepareForReuse();
    return view;
}

UICollectionReusableView& CollectionCellPool::make(Kind& kind, std::string_view identifier) {
    UICollectionReusableView* const view = kind.factory().release();
    view->setParent(&_parent);
    view->lower(); // Below the focus ring and the scroll indicator.
    view->_reuseIdentifier = identifier;
    _handedOut.push_back({view, &kind});
    return *view;
}

bool CollectionCellPool::take(UICollectionReusableView& view) {
    const auto found = std::ranges::find(_handedOut, &view, &HandedOut::view);
    if (found == _handedOut.end()) {
        return false;
    }
    _kindOfTaken[&view] = found->kind;
    _handedOut.erase(found);
    return true;
}

void CollectionCellPool::giveBack(UICollectionReusableView& view) {
    const auto found = _kindOfTaken.find(&view);
    if (found != _kindOfTaken.end()) {
        found->second->waiting.push_back(&view);
        _kindOfTaken.erase(found);
    }
}

void CollectionCellPool::settle() {
    for (const HandedOut& handedOut : _handedOut) {
        handedOut.kind->waiting.push_back(handedOut.view);
    }
    _handedOut.clear();
    for (auto& [key, kind] : _kinds) {
        for (UICollectionReusableView* const view : kind.waiting) {
            view->hide();
        }
    }
}

} // namespace exifcard
