#pragma once

#include "platform/messages/ConversationStore.h"

#include <QPixmap>
#include <QRect>
#include <QWidget>

#include <optional>
#include <string>

class QPushButton;

namespace exifcard {

class PictureButton;
class WrappedText;

/// The bubble that waits in the input field, small: thumbnail, title, caption and subcaption. Or what is said
/// of one that could not be added.
class PendingPhotoView : public QWidget {
    Q_OBJECT

public:
    explicit PendingPhotoView(QWidget* parent);

    void showMessage(const ConversationEntry& entry);
    /// @param error  Why, for the tooltip.
    void showFailure(const std::string& error);

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

signals:
    void closed();
    void retried();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Lines {
        QString title;
        QString caption;
        QString subcaption;
    };

    /// As from the left, in a view of this width; "Try again" stands below a title that is too long beside
    /// it.
    struct Places {
        QRect text;
        QRect retryButton; ///< Of a failure.
        int height = 0;
    };

    Places placesInWidth(int width) const;
    WrappedText titleInWidth(int width) const;
    void loadThumbnail();
    void paintThumbnail(QPainter& painter, const QRect& place) const;
    void paintLines(QPainter& painter, const QRect& place) const;

    ConversationEntry _entry;
    Lines _lines;
    bool _isFailure = false;
    QPixmap _thumbnail; ///< Null until it is loaded.
    PictureButton* _closeButton = nullptr;
    QPushButton* _retryButton = nullptr;
};

} // namespace exifcard
