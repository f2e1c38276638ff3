#pragma once

#include "platform/uivalues/UIColor.h"

#include <QLabel>
#include <QStaticText>

#include <optional>

namespace exifcard {

/// One line of a tile, in a colour that follows the appearance. What does not fit first shrinks, as far as
/// it may, and then ends in an ellipsis; the tooltip has it whole, or the
/// beginning of a very long one. Blanks around it are not drawn.
class TileLabel : public QLabel {
    Q_OBJECT
    Q_PROPERTY(double minimumScaleFactor READ minimumScaleFactor WRITE setMinimumScaleFactor)

public:
    explicit TileLabel(QWidget* parent = nullptr) : QLabel(parent) {}

    void setTextColor(const UIColor& color);
    /// A soft edge around the letters; nothing for none.
    void setHaloColor(const std::optional<UIColor>& color);
    double minimumScaleFactor() const { return _minimumScaleFactor; }
    void setMinimumScaleFactor(double factor) { _minimumScaleFactor = factor; } ///< 1 for not at all.

    /// What is seen of the text.
    QString shownText() const { return shown().text; }
    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Shown {
        QString text;
        double factor = 1; ///< By which it is scaled.
    };

    Shown shown() const;
    double scaleFactor(int wanted) const; ///< For a text of that width.

    UIColor _textColor;
    QStaticText _laidOut; ///< Of the text that was painted last.
    std::optional<UIColor> _haloColor;
    double _minimumScaleFactor = 1;
};

} // namespace exifcard
