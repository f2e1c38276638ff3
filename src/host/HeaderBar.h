#pragma once

#include <QString>
#include <QWidget>

namespace exifcard {

class PictureButton;

/// The bar above a conversation: initials, name and subject, and the way to the other conversations.
class HeaderBar : public QWidget {
    Q_OBJECT

public:
    static constexpr int kHeight = 56;

    explicit HeaderBar(QWidget* parent);

    void setConversation(const QString& name, const QString& subject);
    /// How far an import is, 0 … 1, as a line along the foot; below 0 takes it away.
    void setProgress(double progress);

signals:
    void conversationsRequested();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QString _name;
    QString _subject;
    double _progress = -1;
    PictureButton* _conversationsButton = nullptr;
};

/// "ML" of "Maja Lindqvist"; at most two letters.
QString initialsOf(const QString& name);
/// A disc with the initials, in a colour that follows from the name.
void paintAvatar(QPainter& painter, const QRectF& disc, const QString& name);

} // namespace exifcard
