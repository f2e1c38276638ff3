#pragma once

#include "host/BubbleView.h"
#include "host/WrappedText.h"
#include "platform/uivalues/UIColor.h"

#include <QPixmap>

#include <string>
#include <vector>

namespace exifcard {

/// A message with a photo: the picture with its titles over the lower edge, the captions below.
class PhotoBubble : public BubbleView {
    Q_OBJECT

public:
    PhotoBubble(ConversationEntry entry, QWidget* parent);

    QSize sizeInTranscript(int width) override;

protected:
    QMimeData* mimeData() const override;
    QPixmap dragPicture() const override { return _pixmap; }
    QString copyActionText() const override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// A line of the bar below the picture: one text at each side.
    struct Row {
        WrappedText leading;
        WrappedText trailing;
        UIColor color;
        int height = 0;
    };

    QSize pictureSize(int transcriptWidth) const;
    Row makeRow(const std::optional<std::string>& leading,
        const std::optional<std::string>& trailing,
        bool isCaption,
        int width) const;
    void loadPicture(QSize size);
    void paintPicture(QPainter& painter) const;
    void paintTitles(QPainter& painter) const;
    void paintRows(QPainter& painter) const;

    std::vector<Row> _rows;
    QSize _pictureSize;
    QSize _loadedSize; ///< In pixels, of the picture that was asked for.
    QPixmap _pixmap;   ///< Null until it is loaded.
};

} // namespace exifcard
