#pragma once

#include "platform/uikit/UIView.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QVariantAnimation;

namespace exifcard {

/// Plays a bundled vector animation by its frame numbers. It is read when it is first shown, played or asked
/// for its frames, and once for all views of its name. What plays round and round rests while it is not seen.
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

    explicit LOTAnimationView(std::string_view name);
    Scene* scene() const; ///< Null for one that cannot be read.
    QVariantAnimation& playing();
    void showFrame(double frame);
    bool isSeen() const;
    void finish(bool isFinished);

    const std::string _name;
    mutable std::shared_ptr<Scene> _scene; ///< Null until it is needed.
    mutable bool _isLoaded = false;
    std::unique_ptr<QVariantAnimation> _playing; ///< Null until it is needed.
    CompletionBlock _completionBlock;
    std::optional<double> _frame; ///< Nothing for the first one.
    double _target = 0;
    double _speed = 1;
    bool _loops = false;
    bool _isPlaying = false;
};

} // namespace exifcard
