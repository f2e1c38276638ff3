#include "hud/MBProgressHUD.h"

#include "appearance/ThemeColors.h"
#include "hud/FadeEffect.h"
#include "hud/MBBarProgressView.h"
#include "hud/MBRoundProgressView.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/SteadyLabel.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIActivityIndicatorView.h"
#include "platform/uikit/UIFont.h"

#include <QEvent>
#include <QFont>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

namespace exifcard {
namespace {

constexpr int kHorizontalPadding = 22;
constexpr int kVerticalPadding = 20;
constexpr int kSpacing = 14;
constexpr int kDetailsSpacing = 4;
constexpr int kMargin = 16; ///< Kept free around the box.
constexpr int kSmallestSide = 116;
constexpr double kCornerRadius = 12;
constexpr QSize kSpinnerSize{38, 38};
constexpr int kFadeMilliseconds = 200;

SteadyLabel* makeLabel(QWidget& box, const char* fontName, double size) {
    auto* const label = new SteadyLabel(&box);
    label->setWordWrap(true);
    if (const auto font = UIFont::fontWithName(fontName, size)) {
        label->setFont(qFont(*font));
    }
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Qt::white); // The box is dark in both appearances.
    palette.setColor(QPalette::Text, Qt::white);
    label->setPalette(palette);
    return label;
}

/// In the order of their making, without those that are about to go.
std::vector<MBProgressHUD*> overlaysOf(const QWidget& view) {
    std::vector<MBProgressHUD*> overlays;
    for (QObject* const child : view.children()) {
        auto* const overlay = qobject_cast<MBProgressHUD*>(child);
        if (overlay && !overlay->isLeaving()) {
            overlays.push_back(overlay);
        }
    }
    return overlays;
}

/// Views one below the other.
struct Column {
    struct Item {
        QWidget* view;
        QSize size;
        int spacing; ///< Above it.
    };
    std::vector<Item> items;
    QSize size{0, 0};

    /// @param spacing  Above it, unless it is the first.
    void add(QWidget& view, QSize viewSize, int spacing) {
        items.push_back({&view, viewSize, items.empty() ? 0 : spacing});
        size.setWidth(std::max(size.width(), viewSize.width()));
        size.rheight() += items.back().spacing + viewSize.height();
    }
    /// In the middle of a box.
    void place(QSize box) const {
        int top = (box.height() - size.height()) / 2;
        for (const Item& item : items) {
            top += item.spacing;
            item.view->setGeometry({QPoint((box.width() - item.size.width()) / 2, top), item.size});
            top += item.size.height();
        }
    }
};

/// What would reach the view below. The toolkit hands on to the parent what is not accepted.
bool isInput(QEvent::Type type) {
    constexpr QEvent::Type kTypes[] = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
        QEvent::MouseButtonDblClick, QEvent::MouseMove, QEvent::Wheel, QEvent::ContextMenu,
        QEvent::TouchBegin, QEvent::TouchUpdate, QEvent::TouchEnd, QEvent::TouchCancel};
    return std::ranges::find(kTypes, type) != std::end(kTypes);
}

} // namespace

MBProgressHUD::MBProgressHUD(QWidget& view) : UIView(&view), _box(new UIView(this)) {
    _box->layer().cornerRadius = kCornerRadius;
    _box->setBackgroundColor(overlayBoxColor());
    _spinner = new UIActivityIndicatorView(_box);
    _spinner->setColor(UIColor::whiteColor());
    _spinner->startAnimating();
    _disc = new MBRoundProgressView(_box);
    _bar = new MBBarProgressView(_box);
    _label = makeLabel(*_box, "AvenirNext-Medium", 14);
    _detailsLabel = makeLabel(*_box, "AvenirNext-Regular", 12);
    updateAccessibility();
    setAttribute(Qt::WA_AcceptTouchEvents);
    pinToEdges(*this, view);
    raise();
    layOut();
}

MBProgressHUD* MBProgressHUD::showHUDAddedTo(QWidget& view, bool animated) {
    auto* const overlay = new MBProgressHUD(view);
    overlay->show();
    if (animated) {
        overlay->fade(0, 1, /*isLeaving=*/false);
    }
    return overlay;
}

bool MBProgressHUD::hideHUDForView(QWidget& view, bool animated) {
    const auto overlays = overlaysOf(view);
    if (overlays.empty()) {
        return false;
    }
    overlays.back()->hide(animated);
    return true;
}

std::size_t MBProgressHUD::hideAllHUDsForView(QWidget& view, bool animated) {
    const auto overlays = overlaysOf(view);
    for (MBProgressHUD* const overlay : overlays) {
        overlay->hide(animated);
    }
    return overlays.size();
}

void MBProgressHUD::hide(bool animated) {
    _isLeaving = true;
    setAttribute(Qt::WA_TransparentForMouseEvents); // What lies below can be used again at once.
    if (animated && isVisible()) {
        const auto* const effect = static_cast<const FadeEffect*>(_box->graphicsEffect());
        fade(effect ? effect->opacity() : 1, 0, /*isLeaving=*/true);
    } else {
        QWidget::hide();
        deleteLater();
    }
}

void MBProgressHUD::fade(double from, double to, bool isLeaving) {
    // The effect draws through a picture, so it has the box alone, and stays no longer than the fading. The
    // box has no other.
    auto* effect = static_cast<FadeEffect*>(_box->graphicsEffect());
    if (effect == nullptr) {
        effect = new FadeEffect(this);
        _box->setGraphicsEffect(effect);
    }
    qDeleteAll(effect->findChildren<QVariantAnimation*>());
    effect->setOpacity(from);
    auto* const animation = new QVariantAnimation(effect);
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->setDuration(kFadeMilliseconds);
    connect(animation, &QVariantAnimation::valueChanged, effect,
        [effect](const QVariant& value) { effect->setOpacity(value.toDouble()); });
    connect(animation, &QVariantAnimation::finished, this, [this, isLeaving] {
        if (isLeaving) {
            QWidget::hide();
            deleteLater();
        } else {
            // Deletes the animation too, which is still telling of its end.
            QMetaObject::invokeMethod(
                this, [this] { _box->setGraphicsEffect(_isLeaving ? _box->graphicsEffect() : nullptr); },
                Qt::QueuedConnection);
        }
    });
    animation->start();
}

void MBProgressHUD::setMode(MBProgressHUDMode mode) {
    _mode = mode;
    layOut();
}

void MBProgressHUD::setLabelText(std::string text) {
    if (text == _labelText) {
        return; // Told again with each step of progress.
    }
    _labelText = std::move(text);
    _label->setText(qString(_labelText));
    updateAccessibility();
    layOut();
}

/// Readers are told what the indicator alone tells.
void MBProgressHUD::updateAccessibility() {
    setAccessibilityLabel(*this, qString(_labelText.empty() ? localizedString("Loading") : _labelText));
    setAccessibilityTraits(*this, kUIAccessibilityTraitUpdatesFrequently);
}

void MBProgressHUD::setDetailsLabelText(std::string text) {
    _detailsLabelText = std::move(text);
    _detailsLabel->setText(qString(_detailsLabelText));
    setAccessibilityHint(*this, qString(_detailsLabelText));
    layOut();
}

void MBProgressHUD::setProgress(float progress) {
    _progress = std::isfinite(progress) ? progress : 0;
    _disc->setProgress(_progress);
    _bar->setProgress(_progress);
}

void MBProgressHUD::setCustomView(QWidget* customView) {
    delete _customView;
    _customView = customView;
    if (_customView) {
        _customView->setParent(_box);
    }
    layOut();
}

QWidget* MBProgressHUD::indicator() const {
    switch (_mode) {
    case MBProgressHUDMode::Indeterminate:
        return _spinner;
    case MBProgressHUDMode::Determinate:
    case MBProgressHUDMode::AnnularDeterminate:
        return _disc;
    case MBProgressHUDMode::DeterminateHorizontalBar:
        return _bar;
    case MBProgressHUDMode::CustomView:
        return _customView;
    case MBProgressHUDMode::Text:
        return nullptr;
    }
    return nullptr;
}

void MBProgressHUD::showIndicator() {
    const QWidget* const shown = indicator();
    _disc->setAnnular(_mode == MBProgressHUDMode::AnnularDeterminate);
    const std::initializer_list<QWidget*> indicators = {_spinner, _disc, _bar, _customView};
    for (QWidget* const view : indicators) {
        if (view) {
            view->setVisible(view == shown);
        }
    }
}

void MBProgressHUD::layOut() {
    showIndicator();
    const int most = std::max(width() - 2 * (kMargin + kHorizontalPadding), 1);
    Column column;
    QWidget* const shown = indicator();
    if (shown) {
        column.add(*shown, shown == _spinner ? kSpinnerSize : shown->sizeHint(), 0);
    }
    for (SteadyLabel* const label : {_label, _detailsLabel}) {
        const bool hasText = !label->text().isEmpty();
        label->setVisible(hasText);
        if (hasText) {
            const int wanted = label->steadyWidth();
            const int textWidth = std::min(wanted, most);
            label->setAlignment(wanted > most ? Qt::AlignCenter : Qt::AlignVCenter | Qt::AlignLeading);
            column.add(*label, {textWidth, label->heightForWidth(textWidth)},
                label == _label ? kSpacing : kDetailsSpacing);
        }
    }
    QSize box = column.size + QSize(2 * kHorizontalPadding, 2 * kVerticalPadding);
    if (shown && column.items.size() == 1) {
        box = box.expandedTo({kSmallestSide, kSmallestSide}); // An indicator alone has room around it.
    }
    _box->setGeometry({QPoint((width() - box.width()) / 2, (height() - box.height()) / 2), box});
    column.place(box);
}

void MBProgressHUD::resizeEvent(QResizeEvent* event) {
    UIView::resizeEvent(event);
    layOut();
}

bool MBProgressHUD::event(QEvent* event) {
    if (isInput(event->type())) {
        event->accept();
        return true;
    }
    return UIView::event(event);
}

} // namespace exifcard
