#pragma once

#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UICollectionReusableView.h"

class QLabel;

namespace exifcard {

/// The last item of a list that has more to come: a spinner, a message and a bar.
class LoadingMoreCollectionViewCell : public UICollectionViewCell {
    Q_OBJECT

public:
    LoadingMoreCollectionViewCell();
    ~LoadingMoreCollectionViewCell() override;

    /// The bar's width in points.
    NSLayoutConstraint progressBarWidthConstraint;
    QLabel& loadingMessageLabel();

    void startAnimatingLoading();
    /// Takes over a changed width: over that time, or at once for 0 seconds.
    void layOutBar(double seconds);
    void prepareForReuse() override;
};

} // namespace exifcard
