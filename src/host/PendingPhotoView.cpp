#include "host/PendingPhotoView.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "host/HostColors.h"
#include "host/HostFont.h"
#include "host/RemovingButton.h"
#include "host/SheetButton.h"
#include "host/StoredPicture.h"
#include "host/WrappedText.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/NamedImages.h"
#include "platform/uikit/PictureButton.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>

namespace exifcard {
namespace {

constexpr int kThumbnailSide = 56;
constexpr int kThumbnailRadius = 12;
constexpr int kGap = 10;
constexpr int kTitleLineHeight = 18;
constexpr int kLineHeight = 16;
constexpr int kBottomGap = 8;
constexpr int kAboveButton = 6;
constexpr int kMostTitleLines = 3; ///< Of a failure; a photo's own title takes one.
constexpr int kButtonRoom = 40;
constexpr int kButtonOverhang = 10; ///< The finger's room around the disc reaches into the field's padding.

/// As high as the thumbnail, or as three lines of larger text.
int contentHeight() {
    return std::max(kThumbnailSide, hostLineHeight(kTitleLineHeight) + 2 * hostLineHeight(kLineHeight));
}

QString lineText(const std::optional<std::string>& text) {
    return text ? qString(*text) : QString();
}

} // namespace

PendingPhotoView::PendingPhotoView(QWidget* parent)
    : QWidget(parent)
    , _closeButton(makeRemovingButton(*this))
    , _retryButton(new SheetButton(SheetButton::Kind::Quiet, qString(localizedString("Try again")), this)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(_closeButton, &QAbstractButton::clicked, this, &PendingPhotoView::closed);
    connect(_retryButton, &QPushButton::clicked, this, &PendingPhotoView::retried);
    setIsAccessibilityElement(*this, false); // Its buttons are elements.
}

void PendingPhotoView::showMessage(const ConversationEntry& entry) {
    const MSMessageTemplateLayout& layout = entry.message.layout;
    const bool isSamePicture = _entry.picture && entry.picture && _entry.picture->file == entry.picture->file;
    _entry = entry;
    _isFailure = false;
    updateGeometry();
    _lines = {
        lineText(layout.imageTitle), lineText(layout.caption).simplified(), lineText(layout.subcaption)};
    // The caption's runs of spaces are for the wide bubble; here three stand between its parts.
    _lines.caption =
        lineText(layout.caption).split(QStringLiteral("  "), Qt::SkipEmptyParts).join(QStringLiteral("   "));
    const QString text =
        QStringList{_lines.title, _lines.caption.simplified(), _lines.subcaption}.join(QLatin1Char('\n'));
    setToolTip(beginningOf(text.trimmed(), kLongestToolTip));
    setAccessibilityLabel(*this, text.simplified());
    _retryButton->hide();
    if (!isSamePicture) {
        _thumbnail = {};
        loadThumbnail();
    }
    update();
}

void PendingPhotoView::showFailure(const std::string& error) {
    _entry = {};
    _thumbnail = {};
    _isFailure = true;
    updateGeometry();
    _lines = {qString(localizedString("Could not be added")), qString(error), {}};
    setToolTip(qString(error));
    setAccessibilityLabel(*this, QStringList{_lines.title, _lines.caption}.join(QLatin1String(": ")));
    _retryButton->show();
    update();
}

void PendingPhotoView::loadThumbnail() {
    if (!_entry.picture) {
        return;
    }
    const std::string file = _entry.picture->file;
    const QSize pixels = QSize(kThumbnailSide, kThumbnailSide) * devicePixelRatioF();
    loadStoredPicture(file, pixels, *this, [this, file](const QImage& picture) {
        if (_entry.picture && _entry.picture->file == file) {
            _thumbnail = QPixmap::fromImage(picture);
            _thumbnail.setDevicePixelRatio(devicePixelRatioF());
            update();
        }
    });
}

WrappedText PendingPhotoView::titleInWidth(int width) const {
    return {_lines.title,
        {hostFont(13, HostFontWeight::DemiBold), hostLineHeight(kTitleLineHeight),
            _isFailure ? kMostTitleLines : 1},
        width};
}

PendingPhotoView::Places PendingPhotoView::placesInWidth(int width) const {
    constexpr int kTextLeft = kThumbnailSide + kGap;
    const int mostWidth = width - kTextLeft - kButtonRoom;
    Places places = {
        .text = {kTextLeft, 0, mostWidth, contentHeight()}, .retryButton = {}, .height = contentHeight()};
    if (!_isFailure) {
        return places;
    }
    const QSize retry = _retryButton->sizeHint();
    const int widthBesideButton = mostWidth - retry.width() - kGap;
    if (titleInWidth(widthBesideButton).size().height() <= hostLineHeight(kTitleLineHeight)) {
        places.text.setWidth(widthBesideButton);
        places.retryButton = {
            {width - kButtonRoom - retry.width() - 4, (places.height - retry.height()) / 2}, retry};
    } else {
        places.text.setHeight(titleInWidth(mostWidth).size().height() + hostLineHeight(kLineHeight));
        places.retryButton = {{kTextLeft, places.text.height() + kAboveButton}, retry};
        places.height = std::max(places.height, places.retryButton.bottom() + 1);
    }
    return places;
}

QSize PendingPhotoView::sizeHint() const {
    return {kThumbnailSide + kGap + kButtonRoom, heightForWidth(width())};
}

int PendingPhotoView::heightForWidth(int width) const {
    return placesInWidth(width).height + kBottomGap;
}

void PendingPhotoView::resizeEvent(QResizeEvent*) {
    const QRect close(width() - 44 + kButtonOverhang, -kButtonOverhang, 44, 44);
    _closeButton->setGeometry(QStyle::visualRect(layoutDirection(), rect(), close));
    _retryButton->setGeometry(
        QStyle::visualRect(layoutDirection(), rect(), placesInWidth(width()).retryButton));
}

void PendingPhotoView::paintThumbnail(QPainter& painter, const QRect& place) const {
    QPainterPath outline;
    outline.addRoundedRect(QRectF(place), kThumbnailRadius, kThumbnailRadius);
    painter.save();
    painter.setClipPath(outline);
    painter.fillRect(place, qColor(HostColors::placeholder()));
    if (!_thumbnail.isNull()) {
        painter.drawPixmap(place, _thumbnail);
    } else {
        constexpr int kIconSide = 24;
        QRect icon(0, 0, kIconSide, kIconSide);
        icon.moveCenter(place.center());
        painter.drawPixmap(
            icon.topLeft(), imageNamed("photos", kIconSide, secondaryTextColor(), devicePixelRatioF()));
    }
    painter.restore();
}

void PendingPhotoView::paintLines(QPainter& painter, const QRect& place) const {
    struct Line {
        WrappedText text;
        UIColor color;
    };
    const WrappedText::Style style{hostFont(12), hostLineHeight(kLineHeight), 1};
    const int width = place.width();
    const Line lines[] = {
        {titleInWidth(width), Apperance::appearanceTextColor()},
        {captionText(_lines.caption, style, width),
            _isFailure ? secondaryTextColor() : Apperance::appearanceTextColor()},
        {WrappedText(_lines.subcaption, style, width), secondaryTextColor()},
    };
    int height = 0;
    for (const Line& line : lines) {
        height += line.text.size().height();
    }
    double top = place.y() + (place.height() - height) / 2.0;
    for (const Line& line : lines) {
        painter.setPen(qColor(line.color));
        line.text.draw(
            painter, {static_cast<double>(place.x()), top}, width, layoutDirection() == Qt::RightToLeft);
        top += line.text.size().height();
    }
}

void PendingPhotoView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const Places places = placesInWidth(width());
    const QRect thumbnail(0, (places.height - kThumbnailSide) / 2, kThumbnailSide, kThumbnailSide);
    paintThumbnail(painter, QStyle::visualRect(layoutDirection(), rect(), thumbnail));
    paintLines(painter, QStyle::visualRect(layoutDirection(), rect(), places.text));
}

} // namespace exifcard
