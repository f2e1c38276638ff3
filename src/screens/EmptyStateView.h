#pragma once

#include <QAbstractButton>
#include <QFont>
#include <QPointer>
#include <QWidget>

#include <optional>

namespace exifcard {

/// Why a list shows no photo.
enum class EmptyListReason { NoPhotos, NoAccess, Filter, EmptyAlbum };

/// Tells why a list shows no photo, and offers what helps with at most one button. Covers the list, follows
/// its size and lets touches through, so that the list can still be pulled.
class EmptyStateView : public QWidget {
    Q_OBJECT

public:
    /// @param list  Owns the view.
    explicit EmptyStateView(QWidget& list);
    ~EmptyStateView() override;

    void setReason(EmptyListReason reason);
    EmptyListReason reason() const { return _reason; }
    QString title() const;
    QString explanation() const;
    /// Null where nothing helps.
    QAbstractButton* button() const { return _button; }

signals:
    /// The settings are to hide no photo any more.
    void allPhotosWanted();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buttonTapped();
    void layOut();
    QRect explanationRect() const;
    int contentTop() const;

    EmptyListReason _reason = EmptyListReason::NoPhotos;
    QPointer<QAbstractButton> _button; // Beside this view, not in it: it takes touches.
    QFont _titleFont;
    QFont _explanationFont;
};

} // namespace exifcard
