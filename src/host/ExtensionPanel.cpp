#include "host/ExtensionPanel.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "host/PanelHandle.h"
#include "platform/uikit/MSMessagesAppViewController.h"
#include "platform/uikit/ScreenTransition.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UITraitCollection.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScopedValueRollback>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

constexpr int kMovementMilliseconds = 350;
constexpr double kCompactPart = 0.365;
constexpr int kLeastCompactHeight = 240;
constexpr int kGreatestCompactHeight = 310;
constexpr double kRadius = 14;
constexpr double kSwitchingDistance = 60;
constexpr double kSwitchingVelocity = 500; ///< Points a second.
constexpr double kResistance = 0.5;

} // namespace

/// What the extension knows of the panel.
class ExtensionPanel::Host final : public MSMessagesAppHost {
public:
    explicit Host(ExtensionPanel& panel) : _panel(&panel) {}

    void presentationStyleRequested(MSMessagesAppPresentationStyle presentationStyle) override {
        if (_panel) {
            _panel->setStyle(presentationStyle, /*isAnimated=*/true);
        }
    }

private:
    QPointer<ExtensionPanel> _panel;
};

ExtensionPanel::ExtensionPanel(std::shared_ptr<MSMessagesAppViewController> extension, QWidget* parent)
    : QWidget(parent)
    , _extension(std::move(extension))
    , _host(std::make_shared<Host>(*this))
    , _handle(new PanelHandle(this))
    , _content(new QWidget(this))
    , _movement(new QVariantAnimation(this)) {
    _extension->setHost(_host);
    connect(_handle, &PanelHandle::clicked, this, &ExtensionPanel::toggle);
    connect(_handle, &PanelHandle::dragBegan, this, &ExtensionPanel::dragBegan);
    connect(_handle, &PanelHandle::dragged, this, &ExtensionPanel::dragged);
    connect(_handle, &PanelHandle::dragEnded, this, &ExtensionPanel::dragEnded);
    _movement->setDuration(kMovementMilliseconds);
    _movement->setEasingCurve(QEasingCurve::OutCubic);
    connect(_movement, &QVariantAnimation::valueChanged, this,
        [this](const QVariant& value) { setPanelHeight(value.toDouble()); });
    connect(_movement, &QVariantAnimation::finished, this, &ExtensionPanel::finishMovement);
}

ExtensionPanel::~ExtensionPanel() {
    deactivate();
}

int ExtensionPanel::compactHeight(int windowHeight) {
    return std::clamp(static_cast<int>(std::lround(kCompactPart * windowHeight)), kLeastCompactHeight,
        kGreatestCompactHeight);
}

int ExtensionPanel::heightOf(Style style) const {
    return style == Style::Compact ? compactHeight(_window.height()) : _window.height() - _expandedTop;
}

void ExtensionPanel::setRoom(QSize window, int expandedTop) {
    finishMovement();
    _window = window;
    _expandedTop = expandedTop;
    setPanelHeight(heightOf(_style));
}

void ExtensionPanel::setPanelHeight(double height) {
    _height = height;
    const int rounded = static_cast<int>(std::lround(height));
    setGeometry(0, _window.height() - rounded, _window.width(), rounded);
    layOutContent();
    const bool isCovering = _style == Style::Expanded && rounded >= heightOf(Style::Expanded);
    if (std::exchange(_isCovering, isCovering) != isCovering) {
        emit coveringChanged(isCovering);
    }
}

void ExtensionPanel::layOutContent() {
    _handle->setGeometry(0, 0, width(), PanelHandle::kHeight);
    _content->setGeometry(0, PanelHandle::kHeight, width(), std::max(height() - PanelHandle::kHeight, 0));
    if (_extension->isViewLoaded()) {
        // As large as at the end of a movement, so that the screen is laid out once.
        const int least = heightOf(_style) - PanelHandle::kHeight;
        resizeExtension({width(), std::max(_content->height(), least)});
    }
}

void ExtensionPanel::resizeExtension(QSize size) {
    QWidget& view = _extension->view();
    const CGSize told = {static_cast<double>(size.width()), static_cast<double>(size.height())};
    // The steps of a movement are not worth a layout each; its end is.
    const bool isSettled = !isMoving() && !_isDragged;
    const bool isTold = isActive() && isSettled && size != _toldSize;
    if (isSettled) {
        _toldSize = size;
    }
    if (isTold) {
        _extension->viewWillTransitionToSize(told, /*isComplete=*/false);
    }
    view.setGeometry(0, 0, size.width(), size.height());
    if (isTold) {
        _extension->viewWillTransitionToSize(told, /*isComplete=*/true);
    }
}

void ExtensionPanel::activate(const std::shared_ptr<MSConversation>& conversation) {
    deactivate();
    QWidget& view = _extension->view(); // Its `viewDidLoad` comes first.
    view.setParent(_content);
    layOutContent();
    _extension->becomeActive(conversation, _style);
    _extension->beginAppearanceTransition(/*isAppearing=*/true, /*animated=*/false);
    view.show();
    _extension->endAppearanceTransition();
}

void ExtensionPanel::deactivate() {
    if (!isActive()) {
        return;
    }
    finishMovement();
    _extension->beginAppearanceTransition(/*isAppearing=*/false, /*animated=*/false);
    _extension->view().hide();
    _extension->endAppearanceTransition();
    _extension->resignActive();
}

bool ExtensionPanel::isActive() const {
    return _extension->activeConversation() != nullptr;
}

bool ExtensionPanel::isMoving() const {
    return _movement->state() == QAbstractAnimation::Running;
}

void ExtensionPanel::toggle() {
    setStyle(_style == Style::Compact ? Style::Expanded : Style::Compact, /*isAnimated=*/true);
}

void ExtensionPanel::setStyle(Style style, bool isAnimated) {
    if (style == _style || style == Style::Transcript) {
        return;
    }
    finishMovement();
    const bool isFading = isAnimated && UITraitCollection::currentTraitCollection().isMotionReduced;
    QWidget& window = *parentWidget();
    auto* const fade = isFading ? new ScreenTransition(window, window, ScreenTransition::Kind::CrossFade,
                                      window.rect(), &window)
                                : nullptr;
    const bool hadFocus = _content->isAncestorOf(window.focusWidget());
    _style = style;
    _handle->setExpanded(style == Style::Expanded);
    if (isActive()) {
        _isInTransition = true;
        _extension->beginTransition(style);
    }
    if (hadFocus && !_content->isAncestorOf(window.focusWidget())) {
        focusContent(); // The keys stay in the panel when its screen becomes another one.
    }
    layOutContent();
    emit styleChanged();
    if (fade != nullptr) {
        setPanelHeight(heightOf(style));
        connect(fade, &ScreenTransition::finished, fade, &ScreenTransition::deleteLater);
        fade->start();
        finishMovement();
    } else if (isAnimated && isVisible()) {
        moveTo(heightOf(style));
    } else {
        setPanelHeight(heightOf(style));
        finishMovement();
    }
}

void ExtensionPanel::moveTo(int height) {
    _movement->setStartValue(_height);
    _movement->setEndValue(static_cast<double>(height));
    _movement->start();
}

void ExtensionPanel::finishMovement() {
    if (isMoving()) {
        _movement->stop();
        setPanelHeight(heightOf(_style));
    } else {
        layOutContent(); // One that came to its end by itself.
    }
    if (std::exchange(_isInTransition, false)) {
        _extension->finishTransition();
    }
}

void ExtensionPanel::dragBegan() {
    finishMovement();
    _isDragged = true;
    _heightBeforeDrag = _height;
}

void ExtensionPanel::dragged(double distance) {
    const double least = heightOf(Style::Compact);
    const double most = heightOf(Style::Expanded);
    const double wanted = _heightBeforeDrag + distance;
    const double within = std::clamp(wanted, least, most);
    const double resisted = within + (wanted - within) * kResistance;
    setPanelHeight(std::max(resisted, static_cast<double>(PanelHandle::kHeight)));
}

void ExtensionPanel::dragEnded(double distance, double velocity) {
    _isDragged = false;
    const double direction = _style == Style::Compact ? 1 : -1;
    if (distance * direction > kSwitchingDistance || velocity * direction > kSwitchingVelocity) {
        toggle();
    } else {
        moveTo(heightOf(_style));
    }
}

/// The first of the extension's views that takes keys; null without one.
QWidget* ExtensionPanel::contentForKeys() const {
    if (!_extension->isViewLoaded()) {
        return nullptr;
    }
    const auto children = _extension->view().findChildren<QWidget*>();
    const auto first = std::ranges::find_if(children, [](const QWidget* child) {
        return child->isVisible() && (child->focusPolicy() & Qt::TabFocus) != 0;
    });
    return first == children.end() ? nullptr : *first;
}

void ExtensionPanel::focusContent() {
    QWidget* const content = contentForKeys();
    (content == nullptr ? _handle : content)->setFocus(Qt::ShortcutFocusReason);
}

bool ExtensionPanel::passKey(const QKeyEvent& event) {
    QWidget* const content = contentForKeys();
    if (content == nullptr || _isPassingKey || _content->isAncestorOf(window()->focusWidget())) {
        return false; // What is not taken comes up to the window again.
    }
    const QScopedValueRollback isPassing(_isPassingKey, true);
    QKeyEvent passed(event.type(), event.key(), event.modifiers(), event.text());
    return QApplication::sendEvent(content, &passed) && passed.isAccepted();
}

void ExtensionPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    // The sides and the lower corners lie beyond the window's edge.
    outline.addRoundedRect(QRectF(-0.5, 0.5, width() + 1, height() + 2 * kRadius), kRadius, kRadius);
    painter.setPen(QPen(qColor(hairlineColor()), 1));
    painter.setBrush(qColor(Apperance::appearanceBackgroundColor()));
    painter.drawPath(outline);
}

void ExtensionPanel::resizeEvent(QResizeEvent*) {
    layOutContent();
}

} // namespace exifcard
