#pragma once

#include "platform/uikit/UIView.h"

#include <string>

namespace exifcard {

class MBBarProgressView;
class MBRoundProgressView;
class SteadyLabel;
class UIActivityIndicatorView;

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
    const std::string& detailsLabelText() const { return _detailsLabelText; }
    void setDetailsLabelText(std::string text);
    float progress() const { return _progress; }
    void setProgress(float progress); ///< 0 … 1
    /// Was told to hide and is fading out.
    bool isLeaving() const { return _isLeaving; }
    /// Shown in that mode; owned by the overlay from then on. Null for none.
    void setCustomView(QWidget* customView);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    explicit MBProgressHUD(QWidget& view);

    void hide(bool animated);
    void fade(double from, double to, bool isLeaving);
    void updateAccessibility();
    QWidget* indicator() const;
    void showIndicator();
    void layOut();

    MBProgressHUDMode _mode = MBProgressHUDMode::Indeterminate;
    std::string _labelText;
    std::string _detailsLabelText;
    float _progress = 0;
    bool _isLeaving = false;
    UIActivityIndicatorView* _spinner; // The views below are children.
    MBRoundProgressView* _disc;
    MBBarProgressView* _bar;
    QWidget* _customView = nullptr;
    SteadyLabel* _label;
    SteadyLabel* _detailsLabel;
    UIView* _box;
};

} // namespace exifcard
