#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QWidget;

namespace exifcard {

class UICollectionReusableView;

/// The views of a collection view that no item has at the moment, and how new ones are made.
class CollectionCellPool {
public:
    using Factory = std::function<std::unique_ptr<UICollectionReusableView>()>;

    /// @param parent  Owns the views that are made.
    explicit CollectionCellPool(QWidget& parent) : _parent(parent) {}

    /// @param kind  Of a supplementary view; empty for cells.
    void registerFactory(std::string_view kind, std::string_view identifier, Factory factory);
    /// A waiting view after its `prepareForReuse`, else a new, hidden one. It counts as handed out until it
    /// is taken or given back.
    /// @throws PlatformException "NSInternalInconsistencyException" for what is not registered.
    UICollectionReusableView& dequeue(std::string_view kind, std::string_view identifier);
    /// The view that the data source answered is in use.
    /// @return Whether it was handed out before.
    bool take(UICollectionReusableView& view);
    void giveBack(UICollectionReusableView& view);
    /// Gives back what was handed out and not taken, and hides all that waits.
    void settle();

private:
    struct Kind {
        Factory factory;
        std::vector<UICollectionReusableView*> waiting;
    };
    struct HandedOut {
        UICollectionReusableView* view = nullptr;
        Kind* kind = nullptr;
    };
    using Key = std::pair<std::string, std::string>;

    UICollectionReusableView& make(Kind& kind, std::string_view identifier);

    QWidget& _parent;
    std::map<Key, Kind> _kinds;
    std::vector<HandedOut> _handedOut;
    std::map<const UICollectionReusableView*, Kind*> _kindOfTaken;
};

} // namespace exifcard
