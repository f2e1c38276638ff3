#pragma once

#include <QPushButton>

namespace exifcard {

/// A button with round ends: filled with the text's colour, or quiet with a line around it.
class SheetButton : public QPushButton {
    Q_OBJECT

public:
    enum class Kind { Filled, Quiet };

    SheetButton(Kind kind, const QString& text, QWidget* parent);
    /// For interface files: a filled one.
    explicit SheetButton(QWidget* parent) : SheetButton(Kind::Filled, QString(), parent) {}

    void setKind(Kind kind);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Kind _kind;
};

} // namespace exifcard
