#pragma once

class QAbstractButton;
class QLabel;
class QWidget;

namespace exifcard {

class UIImageView;

/// The views of a card's interface file that all kinds of card share. Null where a kind has none: what is
/// done to it then has no effect.
struct CardOutlets {
    UIImageView* imageView = nullptr;
    UIImageView* smallThumbNailImageViewOnBackSide = nullptr;
    QLabel* imageFileNameLabel = nullptr; ///< Of the size strip.
    QLabel* fileNameLabelOnBackSide = nullptr;
    QAbstractButton* favoriteButton = nullptr; ///< Checked for a favourite.
    QAbstractButton* playButton = nullptr;
    QAbstractButton* iCloudDownloadButton = nullptr;
    QWidget* isSelectedHolderView = nullptr;
};

} // namespace exifcard
