#include "host/HeaderBar.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "host/HostFont.h"
#include "host/WrappedText.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/PictureButton.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QLinearGradient>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace exifcard {
namespace {

constexpr int kAvatarSide = 34;
constexpr int kSideMargin = 16;
constexpr int kGap = 12;
constexpr int kProgressHeight = 3;
constexpr double kInitialsPart = 0.38;
/// The bar is 56 high whatever the text's size.
constexpr double kLargestScale = 1.25;

} // namespace

QString initialsOf(const QString& name) {
    QString initials;
    const QStringList words = name.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words) {
        const bool isPair = word.at(0).isHighSurrogate() && word.size() > 1;
        if (&word == &words.first() || &word == &words.last()) {
            initials += word.left(isPair ? 2 : 1).toUpper();
        }
    }
    return initials;
}

void paintAvatar(QPainter& painter, const QRectF& disc, const QString& name) {
    // The same name has the same colour on every computer.
    unsigned hue = 0;
    for (const QChar letter : name) {
        hue = (hue * 31 + letter.unicode()) % 360;
    }
    QLinearGradient gradient(disc.topLeft(), disc.bottomLeft());
    gradient.setColorAt(0, QColor::fromHsl(static_cast<int>(hue), 70, 120));
    gradient.setColorAt(1, QColor::fromHsl(static_cast<int>((hue + 30) % 360), 90, 80));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(disc);
    painter.setPen(Qt::white);
    painter.setFont(hostFont(disc.height() * kInitialsPart, HostFontWeight::DemiBold, /*largestScale=*/1));
    painter.drawText(disc, Qt::AlignCenter, initialsOf(name));
    painter.restore();
}

HeaderBar::HeaderBar(QWidget* parent)
    : QWidget(parent)
    , _conversationsButton(new PictureButton({.picture = "downArrowButton", .color = secondaryTextColor()},
          qString(localizedString("Conversations")),
          this)) {
    setFixedHeight(kHeight);
    connect(_conversationsButton, &QAbstractButton::clicked, this, &HeaderBar::conversationsRequested);
    setAccessibilityTraits(*this, kUIAccessibilityTraitHeader);
    setIsAccessibilityElement(*this, false); // Its button is one.
}

void HeaderBar::setConversation(const QString& name, const QString& subject) {
    _name = name;
    _subject = subject;
    setToolTip(name);
    setAccessibleName(name + QLatin1String(", ") + subject);
    update();
}

void HeaderBar::setProgress(double progress) {
    _progress = progress;
    update();
}

void HeaderBar::resizeEvent(QResizeEvent*) {
    const QRect place(width() - 44 - 6, (height() - 44) / 2, 44, 44);
    _conversationsButton->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
}

void HeaderBar::mouseReleaseEvent(QMouseEvent*) {
    emit conversationsRequested();
}

void HeaderBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), qColor(chromeColor()));
    painter.fillRect(QRect(0, height() - 1, width(), 1), qColor(hairlineColor()));
    const auto mirrored = [this](const QRect& place) {
        return QStyle::visualRect(layoutDirection(), rect(), place);
    };
    const QRect avatar(kSideMargin, (height() - kAvatarSide) / 2, kAvatarSide, kAvatarSide);
    paintAvatar(painter, QRectF(mirrored(avatar)), _name);
    const int textLeft = avatar.right() + 1 + kGap;
    const QRect texts = mirrored(QRect(textLeft, 0, width() - textLeft - 56, height()));
    const WrappedText name(_name,
        {hostFont(15, HostFontWeight::DemiBold, kLargestScale), hostLineHeight(20, kLargestScale), 1},
        texts.width());
    const WrappedText subject(_subject,
        {hostFont(12, HostFontWeight::Regular, kLargestScale), hostLineHeight(16, kLargestScale), 1},
        texts.width());
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    double top = (height() - name.size().height() - subject.size().height()) / 2.0;
    painter.setPen(qColor(Apperance::appearanceTextColor()));
    name.draw(painter, {static_cast<double>(texts.x()), top}, texts.width(), isMirrored);
    top += name.size().height();
    painter.setPen(qColor(secondaryTextColor()));
    subject.draw(painter, {static_cast<double>(texts.x()), top}, texts.width(), isMirrored);
    if (_progress >= 0) {
        const int filled = static_cast<int>(width() * std::min(_progress, 1.0));
        painter.fillRect(mirrored(QRect(0, height() - kProgressHeight, filled, kProgressHeight)),
            qColor(Apperance::yellowColor()));
    }
}

} // namespace exifcard
