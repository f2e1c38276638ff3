#include "screens/EmptyStateView.h"

#include "appearance/Apperance.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/NamedImages.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"
#include "platform/uikit/UIFont.h"
#include "screens/ListScreenRequests.h"
#include "screens/PillButton.h"
#include "settings/PersistanceManager.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace exifcard {
namespace {

constexpr int kDiscSide = 72;
constexpr int kIconSide = 32;
constexpr int kMostTextWidth = 280;
constexpr int kLeastTextWidth = 120;
constexpr int kNarrowing = 4;
constexpr int kSideMargin = 24;
constexpr int kAboveTitle = 16;
constexpr int kTitleHeight = 22;
constexpr int kAboveExplanation = 4;
constexpr int kAboveButton = 14;

struct EmptyStateTexts {
    EmptyListReason reason;
    const char* imageName;
    const char* title;
    const char* button; ///< Null for none.
};

constexpr EmptyStateTexts kTexts[] = {
    {EmptyListReason::NoPhotos, "photos", N_("No photos yet"), N_("Add photos…")},
    {EmptyListReason::NoAccess, "lock", N_("No access to your photos"), N_("Allow access")},
    {EmptyListReason::Filter, "location", N_("Nothing matches the filter"), N_("Show all photos")},
    {EmptyListReason::EmptyAlbum, "grid", N_("This album is empty"), nullptr},
};

const EmptyStateTexts& textsOf(EmptyListReason reason) {
    return *std::ranges::find(kTexts, reason, &EmptyStateTexts::reason);
}

/// Names the filter that hides the photos.
std::string_view explanationOfFilter() {
    const auto& settings = PersistanceManager::sharedInstance();
    if (settings.locationFilter() == 1) {
        return localizedString(
            "Every photo here is hidden by “only with a location”. Change the filter to see them.");
    }
    if (settings.locationFilter() == 2) {
        return localizedString(
            "Every photo here is hidden by “only without a location”. Change the filter to see them.");
    }
    return localizedString(
        "Every photo here is hidden because it has no EXIF. Change the filter to see them.");
}

std::string_view explanationOf(EmptyListReason reason) {
    switch (reason) {
    case EmptyListReason::NoPhotos:
        return localizedString("Photos you add to your library appear here with their camera settings.");
    case EmptyListReason::NoAccess:
        return localizedString(
            "Allow access to choose and send photos. Nothing is sent until you press Send.");
    case EmptyListReason::Filter:
        return explanationOfFilter();
    case EmptyListReason::EmptyAlbum:
        return localizedString("Add photos to the album, then pull down to refresh.");
    }
    return {};
}

QFont fontNamed(const char* name, double size) {
    const auto font = UIFont::fontWithName(name, size);
    return font ? qFont(*font) : QFont();
}

} // namespace

EmptyStateView::EmptyStateView(QWidget& list)
    : QWidget(&list)
    , _titleFont(fontNamed("AvenirNext-DemiBold", 17))
    , _explanationFont(fontNamed("AvenirNext-Regular", 13)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    _button = new PillButton(list);
    connect(_button, &QAbstractButton::clicked, this, [this] { buttonTapped(); });
    list.installEventFilter(this);
    setGeometry(list.rect());
    setReason(_reason);
    show();
}

EmptyStateView::~EmptyStateView() {
    QWidget& list = *parentWidget();
    const bool hadFocus = _button && list.window()->focusWidget() == _button;
    list.setFocusProxy(nullptr);
    if (hadFocus) {
        list.setFocus(); // The keys are for what there is now.
    }
    delete _button;
}

void EmptyStateView::setReason(EmptyListReason reason) {
    _reason = reason;
    const char* const button = textsOf(reason).button;
    _button->setText(button != nullptr ? qString(localizedString(button)) : QString());
    _button->setVisible(button != nullptr);
    parentWidget()->setFocusProxy(
        button != nullptr ? _button : nullptr); // An empty list has nothing for keys.
    setIsAccessibilityElement(*this, true);
    setAccessibilityTraits(*this, kUIAccessibilityTraitStaticText);
    setAccessibilityLabel(*this, title());
    setAccessibilityValue(*this, explanation());
    layOut();
    update();
}

QString EmptyStateView::title() const {
    return qString(localizedString(textsOf(_reason).title));
}

QString EmptyStateView::explanation() const {
    return qString(explanationOf(_reason));
}

void EmptyStateView::buttonTapped() {
    auto& center = NotificationCenter::defaultCenter();
    if (_reason == EmptyListReason::NoPhotos) {
        center.postNotificationName(kAddPhotosRequestedNotification, this);
    } else if (_reason == EmptyListReason::NoAccess) {
        center.postNotificationName(kLibraryAccessRequestedNotification, this);
    } else {
        emit allPhotosWanted();
    }
}

QRect EmptyStateView::explanationRect() const {
    const int most = std::max(std::min(kMostTextWidth, width() - 2 * kSideMargin), 1);
    const QString text = explanation();
    const auto heightOf = [metrics = QFontMetrics(_explanationFont), &text](int lineWidth) {
        return metrics.boundingRect(QRect(0, 0, lineWidth, 1000), Qt::TextWordWrap, text).height();
    };
    const int height = heightOf(most);
    int narrow = most;
    while (narrow > kLeastTextWidth && heightOf(narrow - kNarrowing) == height) {
        narrow -= kNarrowing; // Lines of about one length, without a word alone at the end.
    }
    const int top = contentTop() + kDiscSide + kAboveTitle + kTitleHeight + kAboveExplanation;
    return {(width() - narrow) / 2, top, narrow, height};
}

int EmptyStateView::contentTop() const {
    // Two lines of explanation, and the button where there is one.
    const int texts = kAboveTitle + kTitleHeight + kAboveExplanation + 36;
    const int button = _button->isVisibleTo(parentWidget()) ? kAboveButton + _button->height() : 0;
    return std::max((height() - kDiscSide - texts - button) / 2, 4);
}

void EmptyStateView::layOut() {
    _button->adjustSize();
    const QRect explanation = explanationRect();
    _button->move((width() - _button->width()) / 2, explanation.bottom() + kAboveButton);
    raise();
    _button->raise();
}

bool EmptyStateView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
        layOut();
    }
    return QWidget::eventFilter(watched, event);
}

void EmptyStateView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // Of each text its own.
    const QRect disc((width() - kDiscSide) / 2, contentTop(), kDiscSide, kDiscSide);
    painter.setPen(Qt::NoPen);
    painter.setBrush(qColor(Apperance::ultraLightGrayColor()));
    painter.drawEllipse(disc);
    const QPointF corner(disc.center().x() + 1 - kIconSide / 2, disc.center().y() + 1 - kIconSide / 2);
    painter.drawPixmap(QRectF(corner, QSizeF(kIconSide, kIconSide)),
        imageNamed(
            textsOf(_reason).imageName, kIconSide, Apperance::appearanceTextColor(), devicePixelRatioF()),
        QRectF());
    painter.setPen(qColor(Apperance::appearanceTextColor()));
    painter.setFont(_titleFont);
    const QRect explanation = explanationRect();
    painter.drawText(QRect(0, explanation.top() - kAboveExplanation - kTitleHeight, width(), kTitleHeight),
        Qt::AlignCenter, title());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.setFont(_explanationFont);
    painter.drawText(explanation, Qt::AlignHCenter | Qt::TextWordWrap, this->explanation());
}

} // namespace exifcard
