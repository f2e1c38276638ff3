#include "host/InputBar.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "host/HostColors.h"
#include "host/HostFont.h"
#include "host/PendingPhotoView.h"
#include "host/PendingTextView.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/PictureButton.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace exifcard {
namespace {

constexpr int kGreatestFieldWidth = 640;
constexpr int kSideMargin = 12;
constexpr int kVerticalMargin = 8;
constexpr double kFieldRadius = 20;
constexpr int kFieldPadding = 10;

/// The rounded background of what waits and of the line.
class Field : public QWidget {
public:
    using QWidget::QWidget;
    void setRingShown(bool isShown) {
        _isRingShown = isShown;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(qColor(hairlineColor()), 1));
        painter.setBrush(qColor(HostColors::field()));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kFieldRadius, kFieldRadius);
        if (_isRingShown) {
            paintFocusRing(painter, QRectF(rect()), kFieldRadius);
        }
    }

private:
    bool _isRingShown = false;
};

class Hairline : public QWidget {
public:
    explicit Hairline(QWidget* parent) : QWidget(parent) { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), qColor(hairlineColor())); }
};

const ConversationEntry* entryOfKind(
    const std::vector<ConversationEntry>& entries, ConversationEntry::Kind kind) {
    const auto found = std::ranges::find(entries, kind, &ConversationEntry::kind);
    return found == entries.end() ? nullptr : &*found;
}

} // namespace

InputBar::InputBar(QWidget* parent)
    : QWidget(parent)
    , _field(new Field(this))
    , _errorLabel(new QLabel(this))
    , _failureView(new PendingPhotoView(_field))
    , _photoView(new PendingPhotoView(_field))
    , _separator(new Hairline(_field))
    , _textView(new PendingTextView(_field))
    , _line(new QLineEdit(_field))
    , _sendButton(new PictureButton({.picture = "send",
                                        .pictureSide = 20,
                                        .color = HostColors::onAmber(),
                                        .discSide = 30,
                                        .discColor = Apperance::yellowColor()},
          qString(localizedString("Send")),
          _field)) {
    _errorLabel->setWordWrap(true);
    _errorLabel->hide();
    _line->setFrame(false);
    _line->setPlaceholderText(qString(localizedString("Add a comment")));
    _line->setAccessibleName(qString(localizedString("Comment")));
    _line->installEventFilter(this);
    auto* const lineRow = new QHBoxLayout;
    lineRow->setContentsMargins(0, 0, 0, 0);
    lineRow->setSpacing(0);
    lineRow->addSpacing(kFieldPadding + 4);
    lineRow->addWidget(_line, 1);
    lineRow->addWidget(_sendButton);
    auto* const column = new QVBoxLayout(_field);
    _waiting = new QVBoxLayout;
    _waiting->setContentsMargins(kFieldPadding, 0, kFieldPadding, 0);
    _waiting->setSpacing(0);
    for (QWidget* const row : {static_cast<QWidget*>(_failureView), static_cast<QWidget*>(_photoView),
             static_cast<QWidget*>(_textView), _separator}) {
        _waiting->addWidget(row);
    }
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(_waiting);
    column->addLayout(lineRow);
    connect(_line, &QLineEdit::textChanged, this, &InputBar::updateSendButton);
    connect(_line, &QLineEdit::textChanged, this, &InputBar::alignLine);
    connect(_line, &QLineEdit::returnPressed, this, &InputBar::sendRequested);
    connect(_sendButton, &QAbstractButton::clicked, this, &InputBar::sendRequested);
    connect(_photoView, &PendingPhotoView::closed, this, &InputBar::dropRequested);
    connect(_failureView, &PendingPhotoView::closed, this, &InputBar::clearFailedInsertions);
    connect(_failureView, &PendingPhotoView::retried, this, &InputBar::retryRequested);
    connect(_textView, &PendingTextView::closed, this, &InputBar::dropRequested);
    takeAppearance();
    alignLine();
    updateContent();
}

void InputBar::showPending(const std::vector<ConversationEntry>& pending) {
    _pending = pending;
    if (entryOfKind(_pending, ConversationEntry::Kind::Message) != nullptr) {
        std::erase_if(_failed, [](const auto& failure) { return failure.message.has_value(); });
    }
    updateContent();
}

void InputBar::showFailedInsertion(const MSConversation::FailedInsertion& failure) {
    _failed.push_back(failure);
    updateContent();
}

void InputBar::clearFailedInsertions() {
    _failed.clear();
    updateContent();
}

void InputBar::showError(const QString& error) {
    _errorLabel->setText(error);
    _errorLabel->setVisible(!error.isEmpty());
    emit heightChanged();
}

void InputBar::setSending(bool isSending) {
    _isSending = isSending;
    updateSendButton();
}

QString InputBar::typedText() const {
    return _line->text();
}

bool InputBar::hasTypedText() const {
    return !_line->text().trimmed().isEmpty();
}

void InputBar::setTypedText(const QString& text) {
    _line->setText(text);
}

void InputBar::clearTypedText(const QString& sentText) {
    // What was typed while the rest was being sent stays.
    if (_line->text() == sentText) {
        _line->clear();
    }
}

void InputBar::focusLine() {
    _line->setFocus(Qt::OtherFocusReason); // The ring is for who came by the keyboard.
}

void InputBar::updateContent() {
    const auto* const message = entryOfKind(_pending, ConversationEntry::Kind::Message);
    const auto* const text = entryOfKind(_pending, ConversationEntry::Kind::Text);
    const bool hasFailed = !_failed.empty();
    if (hasFailed) {
        _failureView->showFailure(_failed.back().error);
    }
    if (message != nullptr) {
        _photoView->showMessage(*message);
    }
    const bool showsPhoto = message != nullptr;
    _failureView->setVisible(hasFailed);
    _photoView->setVisible(showsPhoto);
    _textView->setVisible(text != nullptr);
    if (text != nullptr) {
        _textView->setText(qString(text->text), /*isClosable=*/!showsPhoto);
    }
    const bool showsAny = hasFailed || showsPhoto || text != nullptr;
    _separator->setVisible(showsAny);
    _field->layout()->setContentsMargins(0, showsAny ? kFieldPadding : 0, 0, 0);
    _waiting->invalidate(); // Its height is asked for at once.
    updateSendButton();
    emit heightChanged();
}

void InputBar::updateSendButton() {
    _sendButton->setEnabled(!_isSending && (!_pending.empty() || hasTypedText()));
}

/// A text stands on the side where its own words begin; while there is none, hint and cursor stand where the
/// window's language begins, whatever the keyboard writes.
void InputBar::alignLine() {
    const bool isFromRight = layoutDirection() == Qt::RightToLeft;
    const Qt::Alignment start = Qt::AlignAbsolute | (isFromRight ? Qt::AlignRight : Qt::AlignLeft);
    _line->setAlignment(Qt::AlignVCenter | (_line->text().isEmpty() ? start : Qt::AlignLeading));
}

void InputBar::takeAppearance() {
    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, qColor(Apperance::appearanceTextColor()));
    colors.setColor(QPalette::PlaceholderText, qColor(secondaryTextColor()));
    _line->setPalette(colors);
    _line->setFont(hostFont(15));
    colors.setColor(QPalette::WindowText, qColor(Apperance::appearanceTextColor()));
    _errorLabel->setPalette(colors);
    _errorLabel->setFont(hostFont(12));
}

void InputBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), qColor(chromeColor()));
    painter.fillRect(QRect(0, 0, width(), 1), qColor(hairlineColor()));
}

void InputBar::resizeEvent(QResizeEvent*) {
    const int fieldWidth = std::min(width() - 2 * kSideMargin, kGreatestFieldWidth);
    const int left = (width() - fieldWidth) / 2;
    int top = kVerticalMargin;
    if (!_errorLabel->isHidden()) {
        const int errorHeight = _errorLabel->heightForWidth(fieldWidth);
        _errorLabel->setGeometry(left, top, fieldWidth, errorHeight);
        top += errorHeight + kVerticalMargin / 2;
    }
    _field->setGeometry(left, top, fieldWidth, height() - top - kVerticalMargin - kOverlapOfPanel);
}

int InputBar::heightOfField(int fieldWidth) const {
    const QLayout& layout = *_field->layout();
    return layout.hasHeightForWidth() ? layout.totalHeightForWidth(fieldWidth)
                                      : layout.totalSizeHint().height();
}

int InputBar::heightForWidth(int barWidth) const {
    const int fieldWidth = std::min(barWidth - 2 * kSideMargin, kGreatestFieldWidth);
    int needed = 2 * kVerticalMargin + kOverlapOfPanel + heightOfField(fieldWidth);
    if (!_errorLabel->isHidden()) {
        needed += _errorLabel->heightForWidth(fieldWidth) + kVerticalMargin / 2;
    }
    return needed;
}

void InputBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        alignLine();
    }
    if (event->type() == QEvent::PaletteChange && !_isTakingAppearance) {
        _isTakingAppearance = true;
        takeAppearance();
        _isTakingAppearance = false;
    }
}

bool InputBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == _line && event->type() == QEvent::FocusIn) {
        static_cast<Field*>(_field)->setRingShown(window()->testAttribute(Qt::WA_KeyboardFocusChange));
    } else if (watched == _line && event->type() == QEvent::FocusOut) {
        static_cast<Field*>(_field)->setRingShown(false);
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace exifcard
