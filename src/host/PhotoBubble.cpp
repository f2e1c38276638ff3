#include "host/PhotoBubble.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "host/HostColors.h"
#include "host/HostFont.h"
#include "host/StoredPicture.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/NamedImages.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QFontMetricsF>
#include <QImage>
#include <QLinearGradient>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>
#include <QUrl>

#include <algorithm>

namespace exifcard {
namespace {

constexpr double kWidestPart = 0.8;
constexpr int kGreatestWidth = 340;
constexpr int kGreatestHeight = 320;
/// A picture that is higher or flatter than these allow is cut at its edges, so that titles and captions have
/// room.
constexpr int kLeastWidth = 220;
constexpr int kLeastHeight = 96;
constexpr int kInset = 14;
constexpr int kTitleBottom = 10;
constexpr int kScrimHeight = 64;
constexpr double kScrimOpacity = 0.62;
constexpr int kBarPadding = 8;
constexpr int kColumnGap = 12;

/// The file of a picture, and its pixels for who asks for them: reading them takes longer than a frame.
class PictureData : public QMimeData {
public:
    explicit PictureData(const QString& file) : _file(file) { setUrls({QUrl::fromLocalFile(file)}); }
    QStringList formats() const override { return QMimeData::formats() << QLatin1String(kImage); }

protected:
    QVariant retrieveData(const QString& format, QMetaType type) const override {
        return format == QLatin1String(kImage) ? QVariant(QImage(_file))
                                               : QMimeData::retrieveData(format, type);
    }

private:
    static constexpr const char* kImage = "application/x-qt-image"; // As the toolkit names it.

    const QString _file;
};

QString layoutText(const std::optional<std::string>& text) {
    return text ? qString(*text) : QString();
}

} // namespace

PhotoBubble::PhotoBubble(ConversationEntry entry, QWidget* parent) : BubbleView(std::move(entry), parent) {
    setCursor(Qt::PointingHandCursor);
    setAccessibilityTraits(*this, kUIAccessibilityTraitButton); // It opens the panel.
}

QSize PhotoBubble::pictureSize(int transcriptWidth) const {
    const auto& picture = entry().picture;
    const int widest = std::min(static_cast<int>(transcriptWidth * kWidestPart), kGreatestWidth);
    if (!picture || picture->width <= 0 || picture->height <= 0) {
        return {widest, kLeastHeight};
    }
    const QSizeF whole =
        QSizeF(picture->width, picture->height).scaled(widest, kGreatestHeight, Qt::KeepAspectRatio);
    return {std::clamp(static_cast<int>(whole.width() + 0.5), std::min(kLeastWidth, widest), widest),
        std::max(static_cast<int>(whole.height() + 0.5), kLeastHeight)};
}

PhotoBubble::Row PhotoBubble::makeRow(const std::optional<std::string>& leading,
    const std::optional<std::string>& trailing,
    bool isCaption,
    int width) const {
    const auto style = isCaption
                           ? WrappedText::Style{hostFont(13, HostFontWeight::Medium), hostLineHeight(18), 2}
                           : WrappedText::Style{hostFont(12), hostLineHeight(16), 2};
    // The trailing text keeps what it needs, up to half of the line.
    const int half = (width - kColumnGap) / 2;
    Row row;
    row.trailing = WrappedText(layoutText(trailing), style, leading ? half : width);
    const int rest = row.trailing.isEmpty() ? width : width - kColumnGap - row.trailing.size().width();
    const QString text = layoutText(leading);
    row.leading = isCaption ? captionText(text, style, rest) : WrappedText(text, style, rest);
    row.color = isCaption ? Apperance::appearanceTextColor() : secondaryTextColor();
    row.height = std::max(row.leading.size().height(), row.trailing.size().height());
    return row;
}

QSize PhotoBubble::sizeInTranscript(int width) {
    _pictureSize = pictureSize(width);
    const MSMessageTemplateLayout& layout = entry().message.layout;
    const int inner = _pictureSize.width() - 2 * kInset;
    _rows.clear();
    for (Row& row : std::vector{makeRow(layout.caption, layout.trailingCaption, /*isCaption=*/true, inner),
             makeRow(layout.subcaption, layout.trailingSubcaption, /*isCaption=*/false, inner)}) {
        if (row.height > 0) {
            _rows.push_back(row);
        }
    }
    int height = _pictureSize.height();
    for (const Row& row : _rows) {
        height += row.height;
    }
    const bool isCut = std::ranges::any_of(
        _rows, [](const Row& row) { return row.leading.isCut() || row.trailing.isCut(); });
    setToolTip(isCut ? beginningOf(spokenText(), kLongestToolTip) : QString());
    loadPicture(_pictureSize);
    return {_pictureSize.width(), height + (_rows.empty() ? 0 : 2 * kBarPadding + 2)};
}

void PhotoBubble::loadPicture(QSize size) {
    const QSize pixels = size * devicePixelRatioF();
    if (!entry().picture || pixels == _loadedSize) {
        return;
    }
    _loadedSize = pixels;
    loadStoredPicture(entry().picture->file, pixels, *this, [this, pixels](const QImage& picture) {
        if (pixels == _loadedSize && !picture.isNull()) {
            _pixmap = QPixmap::fromImage(picture);
            _pixmap.setDevicePixelRatio(devicePixelRatioF());
            update();
        }
    });
}

QMimeData* PhotoBubble::mimeData() const {
    if (entry().picture) {
        return new PictureData(qString(entry().picture->file));
    }
    auto* const copied = new QMimeData;
    copied->setText(layoutText(entry().message.layout.caption));
    return copied;
}

QString PhotoBubble::copyActionText() const {
    return qString(localizedString("Copy picture"));
}

void PhotoBubble::paintPicture(QPainter& painter) const {
    const QRect area(QPoint(), _pictureSize);
    if (!_pixmap.isNull()) {
        painter.drawPixmap(area, _pixmap);
        return;
    }
    constexpr int kIconSide = 32;
    painter.fillRect(area, qColor(HostColors::placeholder()));
    const QPixmap icon = imageNamed("photos", kIconSide, secondaryTextColor(), devicePixelRatioF());
    QRect place(0, 0, kIconSide, kIconSide);
    place.moveCenter(area.center());
    painter.drawPixmap(place.topLeft(), icon);
}

void PhotoBubble::paintTitles(QPainter& painter) const {
    const MSMessageTemplateLayout& layout = entry().message.layout;
    const int inner = _pictureSize.width() - 2 * kInset;
    const WrappedText title(layoutText(layout.imageTitle),
        {hostFont(15, HostFontWeight::DemiBold), hostLineHeight(20), 2}, inner);
    const WrappedText subtitle(
        layoutText(layout.imageSubtitle), {hostFont(12), hostLineHeight(16), 1}, inner);
    const int height = title.size().height() + subtitle.size().height();
    if (title.isEmpty() && subtitle.isEmpty()) {
        return;
    }
    const int bottom = _pictureSize.height();
    const int scrimTop = bottom - std::max(kScrimHeight, height + 3 * kTitleBottom);
    QLinearGradient scrim(0, scrimTop, 0, bottom);
    scrim.setColorAt(0, QColor(0, 0, 0, 0));
    scrim.setColorAt(1, QColor::fromRgbF(0, 0, 0, static_cast<float>(kScrimOpacity)));
    painter.fillRect(QRect(0, scrimTop, _pictureSize.width(), bottom - scrimTop), scrim);
    painter.setPen(Qt::white);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const double top = bottom - kTitleBottom - height;
    title.draw(painter, {kInset, top}, inner, mirrored);
    subtitle.draw(painter, {kInset, top + title.size().height()}, inner, mirrored);
}

void PhotoBubble::paintRows(QPainter& painter) const {
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int inner = width() - 2 * kInset;
    double top = _pictureSize.height() + kBarPadding;
    for (const Row& row : _rows) {
        painter.setPen(qColor(row.color));
        row.leading.draw(painter, {kInset, top}, inner, mirrored);
        row.trailing.draw(painter, {kInset, top}, inner, !mirrored);
        top += row.height;
    }
}

void PhotoBubble::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.save();
    painter.setClipPath(outline());
    painter.fillRect(rect(), qColor(HostColors::incomingBubble()));
    paintPicture(painter);
    paintTitles(painter);
    paintRows(painter);
    painter.restore();
    paintFocus(painter);
}

} // namespace exifcard
