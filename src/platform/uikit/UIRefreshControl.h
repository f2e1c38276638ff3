#pragma once

#include "platform/uikit/UIView.h"

namespace exifcard {

class UIActivityIndicatorView;

/// The spinner above a list that is pulled down: 60 points high. Pulling past that sends `valueChanged` once.
class UIRefreshControl : public UIView {
    Q_OBJECT

public:
    static constexpr double kHeight = 60;

    explicit UIRefreshControl(QWidget* parent = nullptr);

    bool isRefreshing() const { return _isRefreshing; }
    /// Shows the spinner; sends nothing and does not scroll. Harmless when repeated, as `endRefreshing` is,
    /// after which the list scrolls back.
    void beginRefreshing();
    void endRefreshing();

    /// For the list: how far it is pulled, in points; 0 while it is not.
    void setPull(double points);
    /// For the list: the user pulled far enough; refreshing begins, and `valueChanged` is sent.
    void pullPastTrigger();

signals:
    void valueChanged();
    void began();
    void ended();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    UIActivityIndicatorView* _spinner = nullptr;
    bool _isRefreshing = false;
};

} // namespace exifcard
