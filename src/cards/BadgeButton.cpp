#include "cards/BadgeButton.h"

#include "appearance/ThemeColors.h"
#include "platform/uikit/Text+Qt.h"

namespace exifcard {
namespace {

constexpr double kPictureSide = 19;
constexpr double kInset = 5;

} // namespace

BadgeButton::BadgeButton(QWidget* parent)
    : PictureButton({.pictureSide = kPictureSide,
                        .color = UIColor::whiteColor(),
                        .discColor = pictureBadgeColor(),
                        .inset = kInset},
          QString(),
          parent) {
    setFocusPolicy(Qt::NoFocus);
}

QString BadgeButton::picture() const {
    return qString(look().picture);
}

void BadgeButton::setPicture(const QString& picture) {
    Look changed = look();
    changed.picture = textFromQString(picture);
    setLook(std::move(changed));
}

void BadgeButton::setUncheckedPicture(const char* picture) {
    Look changed = look();
    changed.uncheckedPicture = picture;
    setLook(std::move(changed));
}

void BadgeButton::setPictureSide(double pictureSide) {
    Look changed = look();
    changed.pictureSide = pictureSide;
    setLook(std::move(changed));
}

void BadgeButton::setDiscSide(double discSide) {
    Look changed = look();
    changed.discSide = discSide;
    setLook(std::move(changed));
}

void BadgeButton::setPlace(Qt::Alignment place) {
    Look changed = look();
    changed.place = place;
    setLook(std::move(changed));
}

void BadgeButton::setPictureColor(const UIColor& color) {
    Look changed = look();
    changed.color = color;
    setLook(std::move(changed));
}

} // namespace exifcard
