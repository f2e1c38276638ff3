#pragma once

#include "platform/uivalues/UIColor.h"

#include <QAbstractButton>

#include <optional>
#include <string>

namespace exifcard {

/// A round button with one of the bundled pictures, at least 44 by 44 to the finger however small its disc.
class IconButton : public QAbstractButton {
    Q_OBJECT

public:
    struct Look {
        std::string icon; ///< As `imageNamed` takes it.
        double iconSide = 24;
        double discSide = 44;
        std::optional<UIColor> disc; ///< Nothing: only the picture.
        UIColor color;
    };

    /// @param name  What a screen reader says, and the tooltip.
    IconButton(Look look, const QString& name, QWidget* parent);

    /// The small cross that takes something out of the input field.
    static IconButton* forRemoving(QWidget* parent);

    QSize sizeHint() const override { return {kSideOfTarget, kSideOfTarget}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    static constexpr int kSideOfTarget = 44;

    Look _look;
};

} // namespace exifcard
