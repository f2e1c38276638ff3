#include "platform/uikit/NavigationBar.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/PictureButton.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/TraitChanges.h"
#include "platform/uikit/UIAppearance.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UIFont.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace exifcard {
namespace {

constexpr int kButtonSide = 44;
constexpr int kMargin = 4;

UIColor barColor(std::string_view property, const UIColor& otherwise) {
    return defaultColor("UINavigationBar", property).value_or(otherwise);
}

} // namespace

NavigationBar::NavigationBar(QWidget* parent)
    : UIView(parent)
    , _titleLabel(new QLabel(this))
    , _backButton(new PictureButton({.picture = "backButton",
                                        .color = barColor("tintColor", Apperance::appearanceTextColor()),
                                        .isMirrored = true},
          qString(localizedString("Back")),
          this))
    , _titleColor(barColor("titleTextAttributes.foregroundColor", Apperance::appearanceTextColor())) {
    setBackgroundColor(barColor("barTintColor", barColor("backgroundColor", themeColor())));
    _titleLabel->setAlignment(Qt::AlignCenter);
    _titleLabel->setTextFormat(Qt::PlainText);
    _titleLabel->setFont(qFont(defaultFont("UINavigationBar", "titleTextAttributes.font")
                                   .value_or(UIFont{"AvenirNext-Regular", 17})));
    connect(&TraitChanges::instance(), &TraitChanges::changed, this, &NavigationBar::colorTitle);
    colorTitle();
    setAccessibilityTraits(*_titleLabel, kUIAccessibilityTraitHeader);
    _backButton->hide();
    connect(_backButton, &QAbstractButton::clicked, this, &NavigationBar::backChosen);
}

void NavigationBar::colorTitle() {
    QPalette palette = _titleLabel->palette();
    palette.setColor(QPalette::WindowText, qColor(_titleColor));
    _titleLabel->setPalette(palette);
}

void NavigationBar::setTitle(const QString& title) {
    _title = title;
    layOut();
}

QAbstractButton& NavigationBar::backButton() {
    return *_backButton;
}

void NavigationBar::setButtons(QAbstractButton* left, QAbstractButton* right) {
    for (const auto& button : {_left, _right}) {
        if (button && button != left && button != right && button->parentWidget() == this) {
            button->hide();
        }
    }
    _left = left;
    _right = right;
    for (QAbstractButton* const button : {left, right}) {
        if (button) {
            button->setParent(this);
            button->show();
        }
    }
    layOut();
}

void NavigationBar::layOut() {
    const QRect leftPlace(kMargin, 0, kButtonSide, kButtonSide);
    const QRect rightPlace(width() - kMargin - kButtonSide, 0, kButtonSide, kButtonSide);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    if (_left) {
        _left->setGeometry(isMirrored ? rightPlace : leftPlace);
    }
    if (_right) {
        _right->setGeometry(isMirrored ? leftPlace : rightPlace);
    }
    const int side = _left || _right ? kButtonSide + 2 * kMargin : 4 * kMargin;
    _titleLabel->setGeometry(side, 0, std::max(width() - 2 * side, 0), kHeight - 1);
    const QString shown = _titleLabel->fontMetrics().elidedText(_title, Qt::ElideRight, _titleLabel->width());
    _titleLabel->setText(shown);
    _titleLabel->setToolTip(shown == _title ? QString() : _title);
    setAccessibilityLabel(*_titleLabel, _title);
}

void NavigationBar::paintEvent(QPaintEvent* event) {
    UIView::paintEvent(event);
    QPainter painter(this);
    painter.fillRect(QRect(0, height() - 1, width(), 1), qColor(hairlineColor()));
}

void NavigationBar::resizeEvent(QResizeEvent* event) {
    UIView::resizeEvent(event);
    layOut();
}

void NavigationBar::changeEvent(QEvent* event) {
    UIView::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        layOut();
    }
}

} // namespace exifcard
