#pragma once

#include <QLabel>

namespace exifcard {

/// A text with numbers that change while it is shown. It has the room of its widest digits, which differ in
/// the typeface, and begins at the same place: neither it nor what lies around it moves with each change.
class SteadyLabel : public QLabel {
public:
    explicit SteadyLabel(QWidget* parent = nullptr);

    /// Of the text in one line, in points.
    int steadyWidth() const;
    QSize sizeHint() const override;
};

} // namespace exifcard
