#pragma once

#include "platform/uikit/PictureButton.h"

namespace exifcard {

/// An icon on a disc, in a corner of a picture or in a line of texts. Its checked state is what other kits
/// call selected; only the program changes it. Takes no keys: they go to the list, which knows them.
class BadgeButton : public PictureButton {
    Q_OBJECT
    Q_PROPERTY(QString picture READ picture WRITE setPicture)
    Q_PROPERTY(double pictureSide READ pictureSide WRITE setPictureSide)
    Q_PROPERTY(double discSide READ discSide WRITE setDiscSide)
    Q_PROPERTY(Qt::Alignment place READ place WRITE setPlace)
    Q_PROPERTY(bool marker READ isMarker WRITE setMarker)

public:
    explicit BadgeButton(QWidget* parent = nullptr);

    QString picture() const;
    void setPicture(const QString& picture); ///< The name of a bundled picture; empty for none.
    /// In place of the picture while the button is not checked; empty for the same.
    void setUncheckedPicture(const char* picture);
    double pictureSide() const { return look().pictureSide; }
    void setPictureSide(double pictureSide);
    double discSide() const { return look().discSide; }
    void setDiscSide(double discSide); ///< 0 for no disc.
    Qt::Alignment place() const { return look().place; }
    void setPlace(Qt::Alignment place);
    /// A marker is only looked at: touches go through it.
    bool isMarker() const { return testAttribute(Qt::WA_TransparentForMouseEvents); }
    void setMarker(bool isMarker) { setAttribute(Qt::WA_TransparentForMouseEvents, isMarker); }
    void setPictureColor(const UIColor& color); ///< White at first.

    QSize sizeHint() const override { return size(); }

protected:
    void nextCheckState() override {}
};

} // namespace exifcard
