#pragma once

#include "platform/uikit/UIView.h"

#include <QPixmap>

#include <memory>

namespace exifcard {

class UIImage;

/// How content is fitted into a view; the platform's numbers.
enum class UIViewContentMode {
    ScaleToFill = 0,
    ScaleAspectFit = 1,
    ScaleAspectFill = 2,
    Redraw = 3,
    Center = 4,
    Top = 5,
    Bottom = 6,
    Left = 7,
    Right = 8,
    TopLeft = 9,
    TopRight = 10,
    BottomLeft = 11,
    BottomRight = 12
};

/// Shows a picture, cut at the view's edges and round corners. What is not decoded yet is decoded in the
/// background and appears when it is ready, until when the picture before stays, in shape; one that does not
/// decode leaves the view empty. The picture is scaled once for a size, when the view is first painted in it.
class UIImageView : public UIView {
    Q_OBJECT

public:
    explicit UIImageView(QWidget* parent = nullptr);
    ~UIImageView() override;

    const std::shared_ptr<const UIImage>& image() const { return _image; }
    /// Null clears the view.
    void setImage(std::shared_ptr<const UIImage> image);
    UIViewContentMode contentMode() const { return _contentMode; }
    /// A number that is no mode counts as scale to fill.
    void setContentMode(UIViewContentMode contentMode);

signals:
    /// The picture was to be painted, and its bytes turned out to be none.
    void imageDidNotDecode();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class Rendering;

    std::shared_ptr<const UIImage> _image;
    UIViewContentMode _contentMode = UIViewContentMode::ScaleAspectFill;
    std::shared_ptr<Rendering> _rendering; ///< Shared with what runs in the background.
};

} // namespace exifcard
