#pragma once

#include "platform/uikit/UIView.h"

#include <functional>
#include <memory>
#include <string_view>

class QVariantAnimation;

namespace exifcard {

/// Plays a bundled vector animation by its frame numbers.
class LOTAnimationView : public UIView {
    Q_OBJECT

public:
    /// Called once when playing ends, with whether it was played to the end.
    using CompletionBlock = std::function<void(bool isFinished)>;

    /// An unknown name gives a view that shows nothing and whose playing ends at once, not played.
    static std::unique_ptr<LOTAnimationView> animationNamed(std::string_view name);
    ~LOTAnimationView() override;

    /// Replaces what is playing, whose completion is called with false. An empty completion leaves the one
    /// that is set.
    void playFromFrame(double fromFrame, double toFrame, CompletionBlock completion);
    /// From the frame that is shown.
    void playToFrame(double toFrame, CompletionBlock completion);
    /// Goes back to the first frame.
    void stop();

    bool loopAnimation() const { return _loops; }
    /// Also of what is playing, which then ends with the present round.
    void setLoopAnimation(bool loops);
    /// 1 at first; takes effect with the next playing.
    double animationSpeed() const { return _speed; }
    void setAnimationSpeed(double speed) { _speed = speed; }
    /// The completion of what is playing, or of the next playing: the same one that is given to a playing. It
    /// is called once, later than the playing began, and then forgotten. May be empty.
    void setCompletionBlock(CompletionBlock completion) { _completionBlock = std::move(completion); }

    double startFrame() const;   ///< Of the scene.
    double currentFrame() const; ///< The one that is shown.
    /// The frame that playing goes to, or the shown one at rest.
    double targetFrame() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class Scene;

    explicit LOTAnimationView(std::unique_ptr<Scene> scene);
    void finish(bool isFinished);

    std::unique_ptr<Scene> _scene;
    std::unique_ptr<QVariantAnimation> _playing;
    CompletionBlock _completionBlock;
    double _frame = 0;
    double _target = 0;
    double _speed = 1;
    bool _loops = false;
    bool _isPlaying = false;
};

} // namespace exifcard
