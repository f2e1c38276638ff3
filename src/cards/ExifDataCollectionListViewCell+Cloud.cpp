#include "cards/ExifDataCollectionListViewCell.h"

#include "cards/CardState.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Log.h"

#include <QAbstractButton>

#include <cmath>
#include <memory>
#include <utility>

namespace exifcard {
namespace {

// The frames of the cloud's animation.
constexpr double kIdleFrame = 0;
constexpr double kFirstWaitingFrame = 1;
constexpr double kLastWaitingFrame = 60;
constexpr double kFirstProgressFrame = 61;
constexpr double kProgressFrames = 60;
constexpr double kFinishingSpeed = 1.4;

constexpr double kShareOfBadge = 0.7;

/// Calls the completion at the first of the ends that it is told.
ExifDataCollectionListViewCell::CompletionBlock onlyOnce(
    ExifDataCollectionListViewCell::CompletionBlock completion) {
    if (!completion) {
        return nullptr;
    }
    const auto pending =
        std::make_shared<ExifDataCollectionListViewCell::CompletionBlock>(std::move(completion));
    return [pending](bool isFinished) {
        if (const auto completionNow = std::exchange(*pending, nullptr)) {
            completionNow(isFinished);
        }
    };
}

} // namespace

LOTAnimationView* ExifDataCollectionListViewCell::cloudDownloadingAnimationView() const {
    return _implementation->cloudDownloadingAnimationView;
}

void ExifDataCollectionListViewCell::createAnimationViewWithName(std::string_view name) {
    QAbstractButton* const badge = outlets().iCloudDownloadButton;
    if (!badge) {
        return;
    }
    LOTAnimationView* const animation = LOTAnimationView::animationNamed(name).release();
    animation->setParent(badge);
    const double width = badge->width();
    const double height = badge->height();
    animation->setFrame({{width * (1 - kShareOfBadge) / 2, height * (1 - kShareOfBadge) / 2},
        {width * kShareOfBadge, height * kShareOfBadge}});
    animation->setLoopAnimation(true);
    animation->setAttribute(Qt::WA_TransparentForMouseEvents);
    _implementation->cloudDownloadingAnimationView = animation;
}

void ExifDataCollectionListViewCell::setICloudDownloadProgress(
    double progress, CompletionBlock withCompletion) {
    if (exifInfo()) {
        updateAccessibility();
    }
    LOTAnimationView* const animation = cloudDownloadingAnimationView();
    if (!animation) {
        return;
    }
    if (progress < 0) {
        animation->setLoopAnimation(false);
        animation->playToFrame(kIdleFrame, nullptr);
        return;
    }
    if (progress == 0) {
        debugLog("iCloudProgress == 0.0, Resuming infinite animation");
        animation->stop();
        animation->setLoopAnimation(true);
        animation->playFromFrame(kFirstWaitingFrame, kLastWaitingFrame, nullptr);
        return;
    }
    const double target = std::trunc(kFirstProgressFrame + kProgressFrames * progress);
    const CompletionBlock completion = onlyOnce(std::move(withCompletion));
    animation->setAnimationSpeed(progress == 1 ? kFinishingSpeed : 1);
    animation->setLoopAnimation(false);
    if (animation->startFrame() > 1) {
        animation->playToFrame(target, completion);
    } else {
        animation->playFromFrame(kFirstProgressFrame, target, completion);
    }
    animation->setCompletionBlock(completion);
}

void ExifDataCollectionListViewCell::stopShowingDownloadingFromCloud() {
    setICloudDownloadProgress(-1);
    if (LOTAnimationView* const animation = cloudDownloadingAnimationView()) {
        animation->setLoopAnimation(false);
        animation->playToFrame(kIdleFrame, nullptr);
    }
}

bool ExifDataCollectionListViewCell::isOriginalElsewhere() const {
    const auto& record = _implementation->exifInfo;
    return record && record->imageResultIsInCloud && !record->hasFinishedDownloadingImageResultFromCloud;
}

void ExifDataCollectionListViewCell::forceDownloadFromICloudIfNeeded() {
    const auto owner = _implementation->listViewController.lock();
    if (owner && isOriginalElsewhere()) {
        owner->requestToDownloadiCloudAssetAtCell(*this);
    }
}

} // namespace exifcard
