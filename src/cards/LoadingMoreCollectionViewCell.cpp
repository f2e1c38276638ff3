#include "cards/LoadingMoreCollectionViewCell.h"

#include "appearance/Apperance.h"
#include "appearance/uikit/Apperance+Views.h"
#include "appearance/uikit/UIAppearance+Shadow.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIFont.h"
#include "ui_LoadingMoreCollectionViewCell.h"

#include <QFont>

namespace exifcard {
namespace {

constexpr double kCornerRadius = 12;
constexpr double kMessageSize = 13;

} // namespace

LoadingMoreCollectionViewCell::LoadingMoreCollectionViewCell() {
    Ui::LoadingMoreCollectionViewCell interface;
    interface.setupUi(this);
    _loadingMessageLabel = interface.loadingMessageLabel;
    _spinner = interface.loadingMoreActivityIndicatorView;
    _bar = interface.progressBarView;
    progressBarWidthConstraint = NSLayoutConstraint(*_bar, NSLayoutConstraint::Attribute::Width);
    progressBarWidthConstraint.setConstant(0);
    layer().cornerRadius = kCornerRadius;
    setAppearanceOnView(*this);
    setAppearanceTextColorOnLabel(*_loadingMessageLabel);
    if (const auto font = UIFont::fontWithName("AvenirNext-Regular", kMessageSize)) {
        _loadingMessageLabel->setFont(qFont(*font));
    }
    _spinner->setColor(Apperance::appearanceTintColor());
    // Readers are told what the spinner alone tells; the message, where there is one, they find in it.
    setAccessibilityLabel(*this, qString(localizedString("Loading")));
    setAccessibilityTraits(*this, kUIAccessibilityTraitUpdatesFrequently);
    setIsAccessibilityElement(*this, false);
}

LoadingMoreCollectionViewCell::~LoadingMoreCollectionViewCell() = default;

void LoadingMoreCollectionViewCell::startAnimatingLoading() {
    _spinner->startAnimating();
}

void LoadingMoreCollectionViewCell::layOutBar(double seconds) {
    _bar->showWidth(progressBarWidthConstraint.constant(), seconds);
}

void LoadingMoreCollectionViewCell::prepareForReuse() {
    UICollectionViewCell::prepareForReuse();
    progressBarWidthConstraint.setConstant(0);
    layOutBar(0);
}

void LoadingMoreCollectionViewCell::resizeEvent(QResizeEvent* event) {
    UICollectionViewCell::resizeEvent(event);
    setShadowEffectForLayer(layer());
}

} // namespace exifcard
