#pragma once

#include "platform/messages/ConversationStore.h"

#include <QPixmap>
#include <QWidget>

#include <optional>
#include <string>

class QPushButton;

namespace exifcard {

class PictureButton;

/// The bubble that waits in the input field, small: thumbnail, title, caption and subcaption. Or what is said
/// of one that could not be added.
class PendingPhotoView : public QWidget {
    Q_OBJECT

public:
    explicit PendingPhotoView(QWidget* parent);

    void showMessage(const ConversationEntry& entry);
    /// @param error  Why, for the tooltip.
    void showFailure(const std::string& error);

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
