#pragma once

#include "platform/uivalues/UIColor.h"

#include <QAbstractButton>

#include <string>

namespace exifcard {

/// A button of 44 by 44 points that shows a bundled picture, as in a bar. Its accessible name is its tooltip
/// too.
class PictureButton : public QAbstractButton {
    Q_OBJECT

public:
    PictureButton(std::string pictureName, const QString& name, QWidget* parent = nullptr);

    void setPictureName(std::string pictureName);
    /// In points; 24 at first.
    void setPictureSide(double side);
    void setColor(const UIColor& color);
    /// Whether the picture points the other way where the language runs from the right.
    void setMirrored(bool isMirrored) { _isMirrored = isMirrored; }

    QSize sizeHint() const override { return {44, 44}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string _pictureName;
    double _side = 24;
    UIColor _color;
    bool _isMirrored = false;
};

} // namespace exifcard
