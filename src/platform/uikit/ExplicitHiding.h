#pragma once

#include <QWidget>

namespace exifcard {

/// Whether somebody hid the view, rather than that it, or what it stands in, was not shown yet.
inline bool isExplicitlyHidden(const QWidget& view) {
    return view.testAttribute(Qt::WA_WState_ExplicitShowHide) && view.testAttribute(Qt::WA_WState_Hidden);
}

} // namespace exifcard
