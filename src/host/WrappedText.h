#pragma once

#include <QFont>
#include <QSize>
#include <QString>
#include <QStringList>

class QColor;
class QPainter;
class QPointF;

namespace exifcard {

/// What a tooltip shows at most.
inline constexpr qsizetype kLongestToolTip = 2000;

/// A text broken into lines of a given width. Runs of spaces are kept; a last line that does not fit ends
/// with an ellipsis. Of a text that is longer than anybody reads in one piece the beginning is shown.
class WrappedText {
public:
    struct Style {
        QFont font;
        int lineHeight = 0;   ///< In logical pixels.
        int maximumLines = 0; ///< 0: as many as there are, up to a thousand.
    };

    WrappedText() = default;
    WrappedText(const QString& text, Style style, int width);

    /// The width of the longest line and the height of all.
    QSize size() const { return _size; }
    bool isCut() const { return _isCut; }
    bool isEmpty() const { return _lines.isEmpty(); }
    /// @param alignedRight  Lines end at `topLeft` plus `width`.
    void draw(QPainter& painter, const QPointF& topLeft, int width, bool alignedRight) const;

private:
    QStringList _lines;
    Style _style;
    QSize _size = {0, 0};
    bool _isCut = false;
};

/// A photo's caption: the font shrinks down to 85 % so that it fits into one line; a longer one takes as many
/// as `style` allows. Where runs of spaces part its settings, a line breaks between two settings, not within
/// one.
WrappedText captionText(const QString& text, WrappedText::Style style, int width);

} // namespace exifcard
