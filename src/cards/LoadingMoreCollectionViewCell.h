#pragma once

#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UICollectionReusableView.h"

class QLabel;

namespace exifcard {

class LoadingBarView;
class UIActivityIndicatorView;

/// The last item of a list that has more to come: a spinner, a message and a bar.
class LoadingMoreCollectionViewCell : public UICollectionViewCell {
    Q_OBJECT

public:
    LoadingMoreCollectionViewCell();
    ~LoadingMoreCollectionViewCell() override;

    /// The bar's width in points.
    NSLayoutConstraint progressBarWidthConstraint;
    QLabel& loadingMessageLabel() { return *_loadingMessageLabel; }
    UIActivityIndicatorView& loadingMoreActivityIndicatorView() { return *_spinner; }
    const LoadingBarView& progressBarView() const { return *_bar; }

    void startAnimatingLoading();
    /// Takes over a changed width: over that time, or at once for 0 seconds.
    void layOutBar(double seconds);
    void prepareForReuse() override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLabel* _loadingMessageLabel; // These are children.
    UIActivityIndicatorView* _spinner;
    LoadingBarView* _bar;
};

} // namespace exifcard
