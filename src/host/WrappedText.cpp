#include "host/WrappedText.h"

#include "platform/uikit/Text+Qt.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

/// Longer than all that a photo's settings fill; breaking a million characters takes minutes.
constexpr qsizetype kLongestText = 8000;
constexpr int kMostLines = 1000;
/// No line of a window holds as many.
constexpr qsizetype kLongestLine = 500;

/// The places where the lines of one paragraph begin and how long they are.
QStringList linesOfParagraph(const QString& paragraph, const QFont& font, int width) {
    QTextLayout layout(paragraph, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.append(paragraph.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return lines.isEmpty() ? QStringList{QString()} : lines;
}

/// @param most  After that many and one more, paragraphs are given as they are.
QStringList linesOf(const QString& text, const QFont& font, int width, int most) {
    QStringList lines;
    for (const QString& paragraph : text.split(QLatin1Char('\n'))) {
        lines += lines.size() > most ? QStringList{paragraph} : linesOfParagraph(paragraph, font, width);
    }
    return lines;
}

void shrink(QFont& font, double scale) {
    if (font.pixelSize() > 0) {
        font.setPixelSize(std::max(1, static_cast<int>(std::floor(font.pixelSize() * scale))));
    } else {
        font.setPointSizeF(font.pointSizeF() * scale);
    }
}

QString withoutTrailingSpaces(QString line) {
    while (line.endsWith(QLatin1Char(' '))) {
        line.chop(1);
    }
    return line;
}

/// With the spaces within a setting ("ISO 100") made such that no line breaks at them.
QString withSettingsKeptWhole(QString caption) {
    if (!caption.contains(QStringLiteral("  "))) {
        return caption;
    }
    for (qsizetype i = 1; i + 1 < caption.size(); ++i) {
        if (caption[i] == QLatin1Char(' ') && !caption[i - 1].isSpace() && !caption[i + 1].isSpace()) {
            caption[i] = QChar::Nbsp;
        }
    }
    return caption;
}

} // namespace

WrappedText::WrappedText(const QString& text, Style style, int width) : _style(std::move(style)) {
    if (text.isEmpty()) {
        return;
    }
    const int maximumLines = _style.maximumLines > 0 ? _style.maximumLines : kMostLines;
    const qsizetype longest = std::min(maximumLines * kLongestLine, kLongestText);
    _lines = linesOf(beginningOf(text, longest), _style.font, width, maximumLines);
    _isCut = text.size() > longest;
    const QFontMetricsF metrics(_style.font);
    if (_lines.size() > maximumLines) {
        const QStringList rest = _lines.mid(maximumLines - 1);
        _lines = _lines.first(maximumLines);
        _lines.last() =
            metrics.elidedText(beginningOf(rest.join(QLatin1Char(' ')), kLongestLine), Qt::ElideRight, width);
        _isCut = true;
    }
    double widest = 0;
    for (QString& line : _lines) {
        line = withoutTrailingSpaces(line);
        widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    _size = {static_cast<int>(std::ceil(widest)), static_cast<int>(_lines.size()) * _style.lineHeight};
}

void WrappedText::draw(QPainter& painter, const QPointF& topLeft, int width, bool alignedRight) const {
    painter.setFont(_style.font);
    QRectF line(topLeft, QSizeF(width, _style.lineHeight));
    const int alignment = Qt::AlignVCenter | (alignedRight ? Qt::AlignRight : Qt::AlignLeft) |
                          Qt::AlignAbsolute | Qt::TextSingleLine | Qt::TextDontClip;
    for (const QString& text : _lines) {
        painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        painter.drawText(line, alignment, text);
        line.translate(0, _style.lineHeight);
    }
}

WrappedText captionText(const QString& text, WrappedText::Style style, int width) {
    constexpr double kSmallestScale = 0.85;
    const QString caption = withSettingsKeptWhole(beginningOf(text, kLongestText));
    const double needed = QFontMetricsF(style.font).horizontalAdvance(beginningOf(caption, kLongestLine));
    if (needed > width) {
        const double scale = std::max(width / needed, kSmallestScale);
        shrink(style.font, scale);
    }
    return WrappedText(caption, std::move(style), width);
}

} // namespace exifcard
