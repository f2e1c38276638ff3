#pragma once

#include "platform/uikit/UIView.h"

class QVariantAnimation;

namespace exifcard {

/// The amber bar along the foot of the loading cell: grows to its own width, which a constraint sets.
class LoadingBarView : public UIView {
    Q_OBJECT

public:
    explicit LoadingBarView(QWidget* parent = nullptr);

    /// Grows to that width in points over that time, or at once for 0 seconds.
    void showWidth(double width, double seconds);
    /// In points; lags behind the width while it grows.
    double shownWidth() const { return _shownWidth; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVariantAnimation* _growing; ///< A child.
    double _shownWidth = 0;
};

} // namespace exifcard
