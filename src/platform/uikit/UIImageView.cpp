#include "platform/uikit/UIImageView.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/ContentFitting.h"
#include "platform/uikit/LayerPainting.h"
#include "platform/uivalues/UIImage.h"

#include <QPainter>
#include <QPointer>

#include <atomic>
#include <optional>
#include <utility>

namespace exifcard {
namespace {

/// A decoded picture of so many pixels is scaled in a few milliseconds, sooner than a blank frame would be
/// seen.
constexpr double kMostPixelsScaledAtOnce = 1'000'000;

bool isQuicklyDrawn(const UIImage& image) {
    return image.pixelSource() && image.pixelSource()->isDecoded() &&
           double(image.storedWidth()) * image.storedHeight() <= kMostPixelsScaledAtOnce;
}

} // namespace

/// What is shown of the picture, and what of it is being made. Main queue only.
class UIImageView::Rendering : public std::enable_shared_from_this<Rendering> {
public:
    explicit Rendering(UIImageView& view) : _view(&view) {}

    /// The next `prepare` draws another picture. What is shown stays until that is ready.
    void forgetRequest() {
        _requested.reset();
        ++*_latestNumber;
    }
    void clear() {
        forgetRequest();
        _shown = {};
    }
    bool isEmpty() const { return _shown.pixmap.isNull(); }

    /// What is there, in a view of that size. One of another size, until the right one is ready, as a picture
    /// of its own that is fitted in turn: cut, but never out of shape.
    void draw(QPainter& painter, QSize viewSize, UIViewContentMode mode) const {
        if (_shown.content.viewSize == QSizeF(viewSize)) {
            painter.drawPixmap(0, 0, _shown.pixmap);
            return;
        }
        const QRectF part = _shown.covered;
        const double scale = _shown.pixmap.devicePixelRatio();
        painter.save();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.setClipRect(QRect(QPoint(0, 0), viewSize));
        painter.drawPixmap(fittedRect(part.size(), viewSize, mode), _shown.pixmap,
            QRectF(part.topLeft() * scale, part.size() * scale));
        painter.restore();
    }

    void prepare(const std::shared_ptr<const UIImage>& image, const FittedContent& content) {
        if (!image || content.viewSize.isEmpty() || _requested == content) {
            return;
        }
        _requested = content;
        const int number = ++*_latestNumber;
        if (isQuicklyDrawn(*image)) {
            _shown = shownContent(drawnContent(*image, content), *image, content);
            return;
        }
        DispatchQueue::globalQueue().async(
            [image, content, number, latest = _latestNumber, weakSelf = weak_from_this()] {
                if (weakSelf.expired() || *latest != number) {
                    return; // The view is gone, or shows something else by now.
                }
                DispatchQueue::mainQueue().async(
                    [drawn = drawnContent(*image, content), image, content, number, weakSelf] {
                        if (const auto self = weakSelf.lock()) {
                            self->accept(shownContent(drawn, *image, content), number);
                        }
                    });
            });
    }

private:
    struct Shown {
        QPixmap pixmap; ///< Null for nothing.
        FittedContent content;
        QRectF covered; ///< What of the view it covers.
    };

    static Shown shownContent(const QImage& drawn, const UIImage& image, const FittedContent& content) {
        const CGSize size = image.size();
        return {QPixmap::fromImage(drawn), content, coveredRect({size.width, size.height}, content)};
    }

    void accept(Shown shown, int number) {
        if (number != *_latestNumber) {
            return; // Another picture or size was asked for meanwhile.
        }
        _shown = std::move(shown);
        if (!_view) {
            return;
        }
        _view->update();
        if (isEmpty()) {
            emit _view->imageDidNotDecode();
        }
    }

    QPointer<UIImageView> _view;
    Shown _shown;
    std::optional<FittedContent> _requested;
    /// Of the latest request, and one more without any. Read on any thread.
    const std::shared_ptr<std::atomic<int>> _latestNumber = std::make_shared<std::atomic<int>>(0);
};

UIImageView::UIImageView(QWidget* parent) : UIView(parent), _rendering(std::make_shared<Rendering>(*this)) {
}

UIImageView::~UIImageView() = default;

void UIImageView::setImage(std::shared_ptr<const UIImage> image) {
    if (image == _image) {
        return;
    }
    _image = std::move(image);
    if (_image) {
        _rendering->forgetRequest();
    } else {
        _rendering->clear();
    }
    update();
}

void UIImageView::setContentMode(UIViewContentMode contentMode) {
    const bool isMode =
        contentMode >= UIViewContentMode::ScaleToFill && contentMode <= UIViewContentMode::BottomRight;
    _contentMode = isMode ? contentMode : UIViewContentMode::ScaleToFill;
    update();
}

void UIImageView::paintEvent(QPaintEvent* event) {
    UIView::paintEvent(event);
    _rendering->prepare(_image, {size(), _contentMode, layer().cornerRadius, devicePixelRatioF()});
    if (_rendering->isEmpty()) {
        return;
    }
    QPainter painter(this);
    _rendering->draw(painter, size(), _contentMode);
    if (layer().borderWidth > 0) { // A border lies above the content.
        CALayer border = layer();
        border.backgroundColor = UIColor::white(0, 0);
        paintLayer(painter, border, rect());
    }
}

} // namespace exifcard
