#include "platform/uikit/LOTAnimationView.h"

#include "platform/foundation/Log.h"
#include "platform/uikit/Text+Qt.h"

#include <fmt/core.h>
#include <rlottie.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>
#include <utility>

namespace exifcard {
namespace {

constexpr double kLargestSideInPixels = 2048;
constexpr double kSlowest = 0.01;

} // namespace

class LOTAnimationView::Scene {
public:
    /// Null for an unknown or a broken one.
    static std::unique_ptr<Scene> named(std::string_view name) {
        QFile file(QStringLiteral(":/animations/%1.json").arg(qString(name)));
        if (!file.open(QIODevice::ReadOnly)) {
            return nullptr;
        }
        const QByteArray text = file.readAll();
        auto animation = rlottie::Animation::loadFromData(text.toStdString(), std::string(name));
        if (!animation || animation->totalFrame() == 0 || !(animation->frameRate() > 0)) {
            errorLog(fmt::format("The animation {} cannot be read.", name));
            return nullptr;
        }
        const double first = QJsonDocument::fromJson(text).object().value(QStringLiteral("ip")).toDouble();
        return std::make_unique<Scene>(std::move(animation), first);
    }

    Scene(std::unique_ptr<rlottie::Animation> animation, double startFrame)
        : _animation(std::move(animation))
        , _startFrame(startFrame) {}

    double startFrame() const { return _startFrame; }
    double frameRate() const { return _animation->frameRate(); }
    double bounded(double frame) const {
        const auto last = _startFrame + static_cast<double>(_animation->totalFrame()) - 1;
        return std::isnan(frame) ? _startFrame : std::clamp(frame, _startFrame, last);
    }

    QImage picture(double frame, QSize pixels) const {
        QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        rlottie::Surface surface(reinterpret_cast<std::uint32_t*>(image.bits()),
            static_cast<std::size_t>(pixels.width()), static_cast<std::size_t>(pixels.height()),
            static_cast<std::size_t>(image.bytesPerLine()));
        _animation->renderSync(static_cast<std::size_t>(std::lround(frame - _startFrame)), surface);
        return image;
    }

private:
    std::unique_ptr<rlottie::Animation> _animation;
    double _startFrame;
};

std::unique_ptr<LOTAnimationView> LOTAnimationView::animationNamed(std::string_view name) {
    return std::unique_ptr<LOTAnimationView>(new LOTAnimationView(Scene::named(name)));
}

LOTAnimationView::LOTAnimationView(std::unique_ptr<Scene> scene)
    : _scene(std::move(scene))
    , _playing(std::make_unique<QVariantAnimation>())
    , _frame(startFrame()) {
    connect(_playing.get(), &QVariantAnimation::valueChanged, this, [this](const QVariant& frame) {
        _frame = frame.toDouble();
        update();
    });
    connect(_playing.get(), &QVariantAnimation::finished, this, [this] { finish(/*isFinished=*/true); });
}

LOTAnimationView::~LOTAnimationView() = default;

void LOTAnimationView::playFromFrame(double fromFrame, double toFrame, CompletionBlock completion) {
    finish(/*isFinished=*/false);
    if (completion) {
        _completionBlock = std::move(completion);
    }
    _isPlaying = true;
    if (!_scene) {
        finish(/*isFinished=*/false);
        return;
    }
    _frame = _scene->bounded(fromFrame);
    _target = _scene->bounded(toFrame);
    const double seconds = std::abs(_target - _frame) / _scene->frameRate() / std::max(_speed, kSlowest);
    update();
    _playing->setStartValue(_frame);
    _playing->setEndValue(_target);
    // Not even one without a length ends within this call.
    _playing->setDuration(std::max(1, static_cast<int>(std::lround(seconds * 1000))));
    _playing->setLoopCount(_loops && seconds > 0 ? -1 : 1);
    _playing->start();
}

void LOTAnimationView::playToFrame(double toFrame, CompletionBlock completion) {
    playFromFrame(_frame, toFrame, std::move(completion));
}

void LOTAnimationView::stop() {
    finish(/*isFinished=*/false);
    _frame = startFrame();
    update();
}

void LOTAnimationView::setLoopAnimation(bool loops) {
    _loops = loops;
    if (_isPlaying) {
        _playing->setLoopCount(loops ? -1 : _playing->currentLoop() + 1);
    }
}

double LOTAnimationView::startFrame() const {
    return _scene ? _scene->startFrame() : 0;
}

double LOTAnimationView::currentFrame() const {
    return _frame;
}

double LOTAnimationView::targetFrame() const {
    return _isPlaying ? _target : _frame;
}

void LOTAnimationView::finish(bool isFinished) {
    if (!std::exchange(_isPlaying, false)) {
        return;
    }
    _playing->stop();
    if (isFinished) {
        _frame = _target;
        update();
    }
    // A completion may play on.
    if (const CompletionBlock completion = std::exchange(_completionBlock, nullptr)) {
        completion(isFinished);
    }
}

void LOTAnimationView::paintEvent(QPaintEvent* event) {
    UIView::paintEvent(event);
    const QSizeF pixels = QSizeF(size()) * devicePixelRatioF();
    if (!_scene || pixels.isEmpty() || std::max(pixels.width(), pixels.height()) > kLargestSideInPixels) {
        return;
    }
    QImage image = _scene->picture(_frame, pixels.toSize());
    image.setDevicePixelRatio(devicePixelRatioF());
    QPainter(this).drawImage(0, 0, image);
}

} // namespace exifcard
