#pragma once

#include "cards/ExifDataCollectionListViewCell.h"

namespace exifcard {

namespace Ui {
class ExifGridWithDetailsCollectionViewCell;
}

/// A tile of a grid: the picture over camera, exposure, size and date.
class ExifGridWithDetailsCollectionViewCell : public ExifDataCollectionListViewCell {
    Q_OBJECT

public:
    ExifGridWithDetailsCollectionViewCell();
    ~ExifGridWithDetailsCollectionViewCell() override;

    void setExifInfo(const std::shared_ptr<ExifInformation>& exifInfo,
        ExifOriginalCellBlock withExifOriginalCellBlock) override;
    /// Changes between the date and the time since then.
    void toggleTimeStamp();
    void showDateTimeAgo();
    void showDateTimeStamp();
    bool isDisplayingTimeAgo() const { return _isDisplayingTimeAgo; }
    void prepareForReuse() override;

protected:
    void updateAccessibility() override;

private:
    void setUpLabels();
    void showExposure();
    void showDate(const std::string& text);

    const std::unique_ptr<Ui::ExifGridWithDetailsCollectionViewCell> _interface;
    bool _isDisplayingTimeAgo = false;
};

} // namespace exifcard
