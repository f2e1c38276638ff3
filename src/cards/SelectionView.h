#pragma once

#include "platform/uikit/UIView.h"

namespace exifcard {

/// Lies over a tile that is selected: an amber border, a wash and a tick.
class SelectionView : public UIView {
    Q_OBJECT

public:
    explicit SelectionView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace exifcard
