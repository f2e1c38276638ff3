#pragma once

#include "cards/ExifDataCollectionListViewCell.h"

namespace exifcard {

class DateFormatter;

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
    /// The formatter of all tiles, with the pattern that the user chose.
    static const DateFormatter& sharedDateFormatter();
    bool isDisplayingTimeAgo() const { return _isDisplayingTimeAgo; }
    void prepareForReuse() override;

protected:
    void updateAccessibility() override;
    void layoutSubviews() override;

private:
    void setUpLabels();
    void showExposure();
    void placeTexts();
    void showDate(const std::string& text);

    const std::unique_ptr<Ui::ExifGridWithDetailsCollectionViewCell> _interface;
    bool _isDisplayingTimeAgo = false;
};

} // namespace exifcard
