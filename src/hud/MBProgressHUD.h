#pragma once

#include "platform/uikit/UIView.h"

#include <string>

namespace exifcard {

/// The platform's numbers.
enum class MBProgressHUDMode {
    Indeterminate = 0,            ///< A spinner.
    Determinate = 1,              ///< A filling disc.
    DeterminateHorizontalBar = 2, ///< A bar.
    AnnularDeterminate = 3,       ///< A filling ring.
    CustomView = 4,
    Text = 5
};

/// A dark box over a view that tells that something takes time: an indicator and two labels. Covers the
/// view, follows its size and lets no touch through. Main queue.
class MBProgressHUD : public UIView {
    Q_OBJECT

public:
    /// A new overlay on `view`, which owns it.
    static MBProgressHUD* showHUDAddedTo(QWidget& view, bool animated);
    /// @return Whether there was one: that on top goes.
    static bool hideHUDForView(QWidget& view, bool animated);
    /// @return How many there were.
    static std::size_t hideAllHUDsForView(QWidget& view, bool animated);

    MBProgressHUDMode mode() const { return _mode; }
    void setMode(MBProgressHUDMode mode);
    const std::string& labelText() const { return _labelText; }
    void setLabelText(std::string text);
    void setDetailsLabelText(std::string text);
    float progress() const { return _progress; }
    void setProgress(float progress); ///< 0 … 1

private:
    explicit MBProgressHUD(QWidget& view);

    MBProgressHUDMode _mode = MBProgressHUDMode::Indeterminate;
    std::string _labelText;
    std::string _detailsLabelText;
    float _progress = 0;
};

} // namespace exifcard
