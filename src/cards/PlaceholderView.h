#pragma once

#include "platform/uikit/UIView.h"

namespace exifcard {

/// Stands where a photo has no picture: an icon in the middle of its place.
class PlaceholderView : public UIView {
    Q_OBJECT

public:
    /// @param place  Owns the view, which covers it.
    explicit PlaceholderView(QWidget& place);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace exifcard
