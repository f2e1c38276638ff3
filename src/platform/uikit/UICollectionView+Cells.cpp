#include "platform/uikit/UICollectionViewState.h"

#include <QCoreApplication>
#include <QLayout>
#include <QResizeEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <ranges>
#include <utility>

namespace exifcard {
namespace {

/// The toolkit tells a hidden widget and those in it of their sizes when they are shown, but a picture is
/// asked for in the cell's size before that.
void tellSizes(QWidget& widget) {
    if (widget.testAttribute(Qt::WA_PendingResizeEvent)) {
        widget.setAttribute(Qt::WA_PendingResizeEvent, false);
        QResizeEvent event(widget.size(), QSize());
        QCoreApplication::sendEvent(&widget, &event);
    }
    if (QLayout* const layout = widget.layout()) {
        layout->activate();
    }
    for (QObject* const child : widget.children()) {
        if (child->isWidgetType()) {
            tellSizes(*static_cast<QWidget*>(child));
        }
    }
}

/// Parts of the visible height: how far cells are made ahead of the scrolling, how far items are told of
/// ahead, and how far cells that were passed are kept.
constexpr double kMadeAhead = 0.5;
constexpr double kToldAhead = 1;
constexpr double kKeptBehind = 0.25;

bool overlap(const CGRect& one, const CGRect& other) {
    return one.origin.y < other.origin.y + other.size.height &&
           other.origin.y < one.origin.y + one.size.height && one.size.height > 0;
}

} // namespace

void UICollectionView::registerClass(std::string_view identifier, CellFactory factory) {
    _implementation->pool.registerFactory({}, identifier, std::move(factory));
}

void UICollectionView::registerSupplementaryClass(
    std::string_view kind, std::string_view identifier, ReusableViewFactory factory) {
    _implementation->pool.registerFactory(kind, identifier, std::move(factory));
}

UICollectionViewCell& UICollectionView::dequeueReusableCellWithReuseIdentifier(
    std::string_view identifier, IndexPath) {
    return static_cast<UICollectionViewCell&>(_implementation->pool.dequeue({}, identifier));
}

UICollectionReusableView& UICollectionView::dequeueReusableSupplementaryViewOfKind(
    std::string_view kind, std::string_view identifier, IndexPath) {
    return _implementation->pool.dequeue(kind, identifier);
}

UICollectionViewCell* UICollectionView::cellForItemAtIndexPath(IndexPath indexPath) const {
    const auto found = _implementation->cells.find(indexPath);
    return found != _implementation->cells.end() && found->second.isDisplayed ? found->second.cell : nullptr;
}

std::optional<IndexPath> UICollectionView::indexPathForCell(const UICollectionViewCell& cell) const {
    for (const auto& [indexPath, live] : _implementation->cells) {
        if (live.cell == &cell) {
            return indexPath;
        }
    }
    return std::nullopt;
}

std::vector<UICollectionViewCell*> UICollectionView::visibleCells() const {
    std::vector<UICollectionViewCell*> visible;
    for (const auto& [indexPath, live] : _implementation->cells) {
        if (live.isDisplayed) {
            visible.push_back(live.cell);
        }
    }
    return visible;
}

std::vector<IndexPath> UICollectionView::indexPathsForVisibleItems() const {
    std::vector<IndexPath> visible;
    for (const auto& [indexPath, live] : _implementation->cells) {
        if (live.isDisplayed) {
            visible.push_back(indexPath);
        }
    }
    return visible;
}

void UICollectionView::Implementation::updateElements() {
    const CGRect visible = view.bounds();
    endCellsOutside(visible);
    for (const auto& attributes : layout.layoutAttributesForElementsInRect(visible)) {
        if (attributes.isHeader) {
            showHeader(attributes);
        } else {
            display(attributes);
        }
    }
    prefetcher.itemsAreShown(view.indexPathsForVisibleItems());
    aheadTimer.start(0, &view);
}

/// Ends all, backwards, so that each item finds its own view again when the data source is asked anew.
void UICollectionView::Implementation::dropElements() {
    cancelPress();
    auto dropped = std::exchange(cells, {});
    for (auto& [indexPath, live] : dropped | std::views::reverse) {
        endDisplaying(indexPath, live);
        recycle(*live.cell);
    }
    for (auto& [section, live] : std::exchange(headers, {})) {
        pool.giveBack(*live.header);
    }
}

/// After a new layout, or a step of scrolling.
void UICollectionView::Implementation::placeElements() {
    for (auto& [indexPath, live] : cells) {
        if (const auto attributes = layout.layoutAttributesForItemAtIndexPath(indexPath)) {
            live.frame = attributes->frame;
            place(*live.cell, live.frame);
        }
    }
    for (auto& [section, live] : headers) {
        place(*live.header, live.frame);
    }
}

void UICollectionView::Implementation::endCellsOutside(const CGRect& visible) {
    const CGRect kept = keptRect();
    for (auto entry = cells.begin(); entry != cells.end();) {
        auto& [indexPath, live] = *entry;
        if (!overlap(live.frame, visible)) {
            endDisplaying(indexPath, live);
        }
        if (overlap(live.frame, kept)) {
            live.cell->setVisible(live.isDisplayed); // It stays ready, but readers must not find it.
            ++entry;
        } else {
            recycle(*live.cell);
            entry = cells.erase(entry);
        }
    }
    std::erase_if(headers, [this, &visible](const auto& entry) {
        const bool isOutside = !overlap(entry.second.frame, visible);
        if (isOutside) {
            pool.giveBack(*entry.second.header);
        }
        return isOutside;
    });
}

void UICollectionView::Implementation::endDisplaying(IndexPath indexPath, LiveCell& live) {
    if (!live.isDisplayed) {
        return;
    }
    live.isDisplayed = false;
    if (pressed == indexPath) {
        live.cell->setHighlighted(false);
        pressed.reset();
    }
    if (const auto listener = delegate.lock()) {
        listener->didEndDisplayingCell(view, *live.cell, indexPath);
    }
}

void UICollectionView::Implementation::recycle(UICollectionViewCell& cell) {
    if (cell.highlighted()) {
        cell.setHighlighted(false);
    }
    pool.giveBack(cell);
}

/// The item's cell with its attributes, made or dequeued by the data source where there is none yet.
UICollectionView::Implementation::LiveCell* UICollectionView::Implementation::liveCell(
    const UICollectionViewLayoutAttributes& attributes) {
    const IndexPath indexPath = attributes.indexPath;
    if (const auto found = cells.find(indexPath); found != cells.end()) {
        return &found->second;
    }
    if (!isStillThere(indexPath)) {
        view.setNeedsLayout();
        return nullptr;
    }
    UICollectionViewCell* const cell = dataSource.lock()->cellForItemAtIndexPath(view, indexPath);
    if (!cell || !pool.take(*cell)) {
        return nullptr;
    }
    LiveCell& live = cells[indexPath];
    live = {.cell = cell, .frame = attributes.frame};
    place(*cell, live.frame);
    cell->setSelected(selection.contains(indexPath));
    if (pressed == indexPath) {
        cell->setHighlighted(true);
    }
    return &live;
}

void UICollectionView::Implementation::display(const UICollectionViewLayoutAttributes& attributes) {
    LiveCell* const live = liveCell(attributes);
    if (!live || live->isDisplayed) {
        return;
    }
    live->isDisplayed = true;
    if (const auto listener = delegate.lock()) {
        listener->willDisplayCell(view, *live->cell, attributes.indexPath);
    }
    live->cell->show();
}

void UICollectionView::Implementation::showHeader(const UICollectionViewLayoutAttributes& attributes) {
    const IndexPath indexPath = attributes.indexPath;
    const auto source = dataSource.lock();
    if (headers.contains(indexPath.section) || !source) {
        return;
    }
    UICollectionReusableView* const header =
        source->viewForSupplementaryElementOfKind(view, kUICollectionElementKindSectionHeader, indexPath);
    if (!header || !pool.take(*header)) {
        return;
    }
    headers[indexPath.section] = {.header = header, .frame = attributes.frame};
    place(*header, attributes.frame);
    header->show();
}

/// The viewport is moved by whole pixels, so that copied pixels and new ones meet.
void UICollectionView::Implementation::place(UICollectionReusableView& element, const CGRect& frame) const {
    element.setFrame({{frame.origin.x + contentInset.left, frame.origin.y - pixelOffset()}, frame.size});
    if (!element.isVisible()) {
        tellSizes(element);
    }
}

/// What follows the visible part in the direction of scrolling, that many times its height.
CGRect UICollectionView::Implementation::rectAhead(double heights) const {
    CGRect rect = view.bounds();
    const double height = rect.size.height * heights;
    rect.origin.y += isScrollingDown ? rect.size.height : -height;
    rect.size.height = height;
    return rect;
}

CGRect UICollectionView::Implementation::keptRect() const {
    CGRect rect = view.bounds();
    const double ahead = rect.size.height * kMadeAhead;
    const double behind = rect.size.height * kKeptBehind;
    rect.origin.y -= isScrollingDown ? behind : ahead;
    rect.size.height += ahead + behind;
    return rect;
}

/// Tells what is coming up, and makes the cells of one more line; a turn of the main queue each.
void UICollectionView::Implementation::prepareAhead() {
    aheadTimer.stop();
    if (isInPass || isPassDue || areItemsOutdated() || !view.isVisible()) {
        return;
    }
    const QScopedValueRollback inPass(isInPass, true);
    std::vector<IndexPath> upcoming;
    for (const auto& attributes : layout.layoutAttributesForElementsInRect(rectAhead(kToldAhead))) {
        if (!attributes.isHeader && !view.cellForItemAtIndexPath(attributes.indexPath)) {
            upcoming.push_back(attributes.indexPath);
        }
    }
    prefetcher.itemsAreComingUp(view, upcoming);
    auto ahead = layout.layoutAttributesForElementsInRect(rectAhead(kMadeAhead));
    if (!isScrollingDown) {
        std::ranges::reverse(ahead);
    }
    std::optional<double> line;
    for (const auto& attributes : ahead) {
        if (attributes.isHeader || cells.contains(attributes.indexPath)) {
            continue;
        }
        if (line && *line != attributes.frame.origin.y) {
            aheadTimer.start(0, &view);
            break;
        }
        if (liveCell(attributes)) {
            line = attributes.frame.origin.y;
        }
    }
    pool.settle();
}

} // namespace exifcard
