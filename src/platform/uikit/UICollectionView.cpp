#include "platform/uikit/UICollectionView.h"

#include "platform/uikit/UIAppearance.h"
#include "platform/uikit/UICollectionViewAccessibility.h"
#include "platform/uikit/UICollectionViewState.h"

#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScrollEvent>
#include <QScrollPrepareEvent>
#include <QScroller>
#include <QTimerEvent>
#include <QWheelEvent>

namespace exifcard {
namespace {

/// The viewport paints every pixel of itself, so that scrolling can copy what is already there.
UIView* makeViewport() {
    auto* const viewport = new UIView;
    viewport->setBackgroundRole(QPalette::Window);
    viewport->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport->setBackgroundColor(UIColor(RGBA{1, 1, 1, 1}, RGBA{0, 0, 0, 1}));
    return viewport;
}

} // namespace

UICollectionView::Implementation::Implementation(UICollectionView& collectionView)
    : view(collectionView)
    , layout(collectionView)
    , pool(*collectionView.viewport()) {
    indicator = new ScrollIndicator(view.viewport());
    focusRing = new ItemFocusRing(view.viewport());
}

UICollectionView::UICollectionView(QWidget* parent) : QAbstractScrollArea(parent) {
    installCollectionViewAccessibility();
    setViewport(makeViewport());
    if (const auto color = defaultColor("UICollectionView", "backgroundColor")) {
        setBackgroundColor(*color);
    }
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    _implementation = std::make_unique<Implementation>(*this);
    // Touches only: the mouse's drags stay for swipes and the selection of ranges.
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    connect(QScroller::scroller(viewport()), &QScroller::stateChanged, this, [this](QScroller::State state) {
        if (state == QScroller::Dragging) {
            _implementation->cancelPress();
        } else if (state == QScroller::Inactive) {
            _implementation->releasePull();
        }
    });
    connect(&_implementation->scrollAnimation, &QVariantAnimation::valueChanged, this,
        [this](const QVariant& value) { _implementation->moveTo(value.toDouble()); });
    _implementation->updateOvershoot();
}

UICollectionView::~UICollectionView() {
    QScroller::scroller(viewport())->disconnect(this);
    _implementation->scrollAnimation.disconnect(this);
}

void UICollectionView::setDataSource(std::weak_ptr<UICollectionViewDataSource> dataSource) {
    const auto& present = _implementation->dataSource;
    if (!dataSource.expired() && !present.owner_before(dataSource) && !dataSource.owner_before(present)) {
        return;
    }
    _implementation->dataSource = std::move(dataSource);
    reloadData();
}

std::shared_ptr<UICollectionViewDataSource> UICollectionView::dataSource() const {
    return _implementation->dataSource.lock();
}

void UICollectionView::setPrefetchDataSource(
    std::weak_ptr<UICollectionViewDataSourcePrefetching> dataSource) {
    _implementation->prefetcher.setDataSource(std::move(dataSource));
}

void UICollectionView::setDelegate(std::weak_ptr<UICollectionViewDelegateFlowLayout> delegate) {
    _implementation->delegate = std::move(delegate);
    _implementation->layout.invalidateLayout();
}

std::shared_ptr<UICollectionViewDelegateFlowLayout> UICollectionView::delegate() const {
    return _implementation->delegate.lock();
}

UICollectionViewFlowLayout& UICollectionView::collectionViewLayout() {
    return _implementation->layout;
}

const UICollectionViewFlowLayout& UICollectionView::collectionViewLayout() const {
    return _implementation->layout;
}

void UICollectionView::setUserInteractionEnabled(bool isEnabled) {
    _implementation->isInteractionEnabled = isEnabled;
    // Events pass the viewport and its cells by and reach the list itself, whose gestures go on.
    viewport()->setAttribute(Qt::WA_TransparentForMouseEvents, !isEnabled);
    if (!isEnabled) {
        _implementation->cancelPress();
    }
}

bool UICollectionView::isUserInteractionEnabled() const {
    return _implementation->isInteractionEnabled;
}

void UICollectionView::setBackgroundColor(const UIColor& color) {
    const bool isOpaque = color.resolved(UIUserInterfaceStyle::Light).alpha >= 1 &&
                          color.resolved(UIUserInterfaceStyle::Dark).alpha >= 1;
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent, isOpaque);
    static_cast<UIView*>(viewport())->setBackgroundColor(color);
}

bool UICollectionView::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
        layoutIfNeeded();
        break;
    case QEvent::LayoutDirectionChange:
        setNeedsLayout();
        break;
    case QEvent::Timer: {
        const int timer = static_cast<QTimerEvent*>(event)->timerId();
        if (timer == _implementation->aheadTimer.timerId()) {
            _implementation->prepareAhead();
            return true;
        }
        if (timer == _implementation->wheelPullTimer.timerId()) {
            _implementation->releasePull();
            return true;
        }
        break;
    }
    default:
        break;
    }
    return QAbstractScrollArea::event(event);
}

bool UICollectionView::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::Paint:
        return false; // The viewport paints itself.
    case QEvent::Resize:
    case QEvent::Move:
        QAbstractScrollArea::viewportEvent(event);
        return false; // The viewport is to hear of it too.
    case QEvent::ScrollPrepare:
        _implementation->prepareTouchScroll(*static_cast<QScrollPrepareEvent*>(event));
        return true;
    case QEvent::Scroll:
        _implementation->touchScroll(*static_cast<QScrollEvent*>(event));
        return true;
    case QEvent::Wheel:
        event->setAccepted(_implementation->wheel(*static_cast<QWheelEvent*>(event)));
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        event->setAccepted(_implementation->mouse(*event));
        return true;
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        event->setAccepted(_implementation->touch(*event));
        return true;
    default:
        return QAbstractScrollArea::viewportEvent(event);
    }
}

void UICollectionView::resizeEvent(QResizeEvent*) {
    _implementation->isPassDue = true;
    layoutIfNeeded();
    _implementation->placeOverlays();
}

void UICollectionView::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(_implementation->key(*event));
}

} // namespace exifcard
