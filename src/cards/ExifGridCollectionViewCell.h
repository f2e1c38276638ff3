#pragma once

#include "cards/ExifDataCollectionListViewCell.h"

namespace exifcard {

/// A tile of a grid: the picture alone, with a border when it is marked.
class ExifGridCollectionViewCell : public ExifDataCollectionListViewCell {
    Q_OBJECT

public:
    ExifGridCollectionViewCell();
    ~ExifGridCollectionViewCell() override;

    void markSelected();
    void markUnSelected();
    void setIsSelected(bool isSelected) override;

protected:
    void updateAccessibility() override;
    void layoutSubviews() override;

private:
    QWidget* _backgroundBorderView; ///< A child.
};

} // namespace exifcard
