#pragma once

#include "platform/uivalues/UIColor.h"

#include <QAbstractButton>

namespace exifcard {

/// An icon on a disc, in a corner of a picture or in a line of texts. The disc may be smaller than the
/// button, so that fingers find it. Its checked state is what other kits call selected; only the program
/// changes it.
class BadgeButton : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(QString picture READ picture WRITE setPicture)
    Q_PROPERTY(double pictureSide READ pictureSide WRITE setPictureSide)
    Q_PROPERTY(double discSide READ discSide WRITE setDiscSide)
    Q_PROPERTY(Qt::Alignment place READ place WRITE setPlace)
    Q_PROPERTY(bool marker READ isMarker WRITE setMarker)

public:
    explicit BadgeButton(QWidget* parent = nullptr);

    QString picture() const { return _picture; }
    void setPicture(const QString& picture); ///< The name of a bundled picture; empty for none.
    /// In place of the picture while the button is not checked; empty for the same.
    void setUncheckedPicture(const QString& picture) { _uncheckedPicture = picture; }
    double pictureSide() const { return _pictureSide; }
    void setPictureSide(double pictureSide) { _pictureSide = pictureSide; }
    double discSide() const { return _discSide; }
    void setDiscSide(double discSide) { _discSide = discSide; } ///< 0 for no disc.
    /// Where in the button the disc stands, in the direction of reading.
    Qt::Alignment place() const { return _place; }
    void setPlace(Qt::Alignment place) { _place = place; }
    /// A marker is only looked at: touches go through it.
    bool isMarker() const { return testAttribute(Qt::WA_TransparentForMouseEvents); }
    void setMarker(bool isMarker) { setAttribute(Qt::WA_TransparentForMouseEvents, isMarker); }
    void setPictureColor(const UIColor& color); ///< White at first.
    void setDiscColor(const UIColor& color);

    QSize sizeHint() const override { return size(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void nextCheckState() override {}

private:
    QString _picture;
    QString _uncheckedPicture;
    double _pictureSide = 19;
    double _discSide = 0;
    Qt::Alignment _place = Qt::AlignCenter;
    UIColor _pictureColor = UIColor::whiteColor();
    UIColor _discColor;
};

} // namespace exifcard
