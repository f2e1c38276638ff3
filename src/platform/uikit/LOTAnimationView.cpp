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
#include <functional>
#include <map>
#include <utility>

namespace exifcard {
namespace {

constexpr double kLargestSideInPixels = 2048;
constexpr double kSlowest = 0.01;

} // namespace

/// One for all views of a name. Main queue only.
class LOTAnimationView::Scene {
public:
    /// Null for an unknown or a broken one.
    static std::shared_ptr<Scene> named(const std::string& name) {
        static std::map<std::string, std::weak_ptr<Scene>, std::less<>> known;
        std::weak_ptr<Scene>& kept = known[name];
        std::shared_ptr<Scene> scene = kept.lock();
        if (!scene) {
            scene = loaded(name);
            kept = scene;
        }
        return scene;
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
    static std::shared_ptr<Scene> loaded(const std::string& name) {
        QFile file(QStringLiteral(":/animations/%1.json").arg(qString(name)));
        if (!file.open(QIODevice::ReadOnly)) {
            return nullptr;
        }
        const QByteArray text = file.readAll();
        auto animation = rlottie::Animation::loadFromData(text.toStdString(), name);
        if (!animation || animation->totalFrame() == 0 || !(animation->frameRate() > 0)) {
            errorLog(fmt::format("The animation {} cannot be read.", name));
            return nullptr;
        }
        const double first = QJsonDocument::fromJson(text).object().value(QStringLiteral("ip")).toDouble();
        return std::make_shared<Scene>(std::move(animation), first);
    }

    std::unique_ptr<rlottie::Animation> _animation;
    double _startFrame;
};

std::unique_ptr<LOTAnimationView> LOTAnimationView::animationNamed(std::string_view name) {
    return std::unique_ptr<LOTAnimationView>(new LOTAnimationView(name));
}

LOTAnimationView::LOTAnimationView(std::string_view name) : _name(name) {
}

LOTAnimationView::~LOTAnimationView() = default;

LOTAnimationView::Scene* LOTAnimationView::scene() const {
    if (!_isLoaded) {
        _isLoaded = true;
        _scene = Scene::named(_name);
    }
    return _scene.get();
}

QVariantAnimation& LOTAnimationView::playing() {
    if (!_playing) {
        _playing = std::make_unique<QVariantAnimation>();
        connect(_playing.get(), &QVariantAnimation::valueChanged, this,
            [this](const QVariant& frame) { showFrame(frame.toDouble()); });
        connect(_playing.get(), &QVariantAnimation::finished, this, [this] { finish(/*isFinished=*/true); });
    }
    return *_playing;
}

void LOTAnimationView::showFrame(double frame) {
    _frame = frame;
    update();
    // What ends by itself goes on: somebody may wait for the end.
    if (_isPlaying && _playing->loopCount() < 0 && !isSeen()) {
        _playing->pause(); // Until it is painted again.
    }
}

bool LOTAnimationView::isSeen() const {
    return isVisible() && !window()->isMinimized() && !visibleRegion().isEmpty();
}

void LOTAnimationView::playFromFrame(double fromFrame, double toFrame, CompletionBlock completion) {
    finish(/*isFinished=*/false);
    if (completion) {
        _completionBlock = std::move(completion);
    }
    _isPlaying = true;
    const Scene* const played = scene();
    if (!played) {
        finish(/*isFinished=*/false);
        return;
    }
    const double first = played->bounded(fromFrame);
    _frame = first;
    _target = played->bounded(toFrame);
    const double seconds = std::abs(_target - first) / played->frameRate() / std::max(_speed, kSlowest);
    update();
    QVariantAnimation& animation = playing();
    animation.setStartValue(first);
    animation.setEndValue(_target);
    // Not even one without a length ends within this call.
    animation.setDuration(std::max(1, static_cast<int>(std::lround(seconds * 1000))));
    animation.setLoopCount(_loops && seconds > 0 ? -1 : 1);
    animation.start();
}

void LOTAnimationView::playToFrame(double toFrame, CompletionBlock completion) {
    playFromFrame(currentFrame(), toFrame, std::move(completion));
}

void LOTAnimationView::stop() {
    finish(/*isFinished=*/false);
    _frame.reset();
    update();
}

void LOTAnimationView::setLoopAnimation(bool loops) {
    _loops = loops;
    if (_isPlaying && _playing) {
        _playing->setLoopCount(loops ? -1 : _playing->currentLoop() + 1);
        if (_playing->state() == QAbstractAnimation::Paused) {
            _playing->resume(); // The last round ends, seen or not.
        }
    }
}

double LOTAnimationView::startFrame() const {
    return scene() ? scene()->startFrame() : 0;
}

double LOTAnimationView::currentFrame() const {
    return _frame ? *_frame : startFrame();
}

double LOTAnimationView::targetFrame() const {
    return _isPlaying ? _target : currentFrame();
}

void LOTAnimationView::finish(bool isFinished) {
    if (!std::exchange(_isPlaying, false)) {
        return;
    }
    if (_playing) {
        _playing->stop();
    }
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
    if (_playing && _playing->state() == QAbstractAnimation::Paused) {
        _playing->resume();
    }
    const QSizeF pixels = QSizeF(size()) * devicePixelRatioF();
    if (pixels.isEmpty() || std::max(pixels.width(), pixels.height()) > kLargestSideInPixels || !scene()) {
        return;
    }
    QImage image = scene()->picture(currentFrame(), pixels.toSize());
    image.setDevicePixelRatio(devicePixelRatioF());
    QPainter(this).drawImage(0, 0, image);
}

} // namespace exifcard
