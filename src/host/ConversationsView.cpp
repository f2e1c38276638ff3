#include "host/ConversationsView.h"

#include "appearance/Apperance.h"
#include "host/HeaderBar.h"
#include "host/HostColors.h"
#include "host/HostFont.h"
#include "host/WrappedText.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/uikit/FocusRing.h"
#include "platform/uikit/Text+Qt.h"
#include "platform/uikit/UIColor+Qt.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace exifcard {
namespace {

constexpr int kRowHeight = 52;
constexpr int kAvatarSide = 34;
constexpr int kMargin = 16;
constexpr int kLongestName = 200; ///< Letters; well below what the store takes.

/// A row: initials and name; the present conversation on grey.
class RowPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {option.rect.width(), kRowHeight};
    }

    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QString name = index.data(Qt::DisplayRole).toString();
        if ((option.state & (QStyle::State_Selected | QStyle::State_MouseOver)) != 0) {
            painter->fillRect(option.rect, qColor(HostColors::field()));
        }
        const auto mirrored = [&option](const QRect& place) {
            return QStyle::visualRect(option.direction, option.rect, place);
        };
        const QRect avatar(option.rect.x() + kMargin, option.rect.y() + (kRowHeight - kAvatarSide) / 2,
            kAvatarSide, kAvatarSide);
        paintAvatar(*painter, QRectF(mirrored(avatar)), name);
        const int left = avatar.right() + kMargin;
        const QRect text =
            mirrored(QRect(left, option.rect.y(), option.rect.right() - left - kMargin, kRowHeight));
        painter->setPen(qColor(Apperance::appearanceTextColor()));
        WrappedText(name, {hostFont(15, HostFontWeight::Medium), kRowHeight, 1}, text.width())
            .draw(*painter, text.topLeft(), text.width(), option.direction == Qt::RightToLeft);
        const bool isByKeys = option.widget->window()->testAttribute(Qt::WA_KeyboardFocusChange);
        if ((option.state & QStyle::State_HasFocus) != 0 && isByKeys) {
            paintFocusRing(*painter, QRectF(option.rect).adjusted(2, 2, -2, -2), 8);
        }
    }
};

} // namespace

ConversationsView::ConversationsView(QWidget* parent)
    : QWidget(parent)
    , _newName(new QLineEdit(this))
    , _list(new QListWidget(this)) {
    _newName->setPlaceholderText(qString(localizedString("New conversation with …")));
    _newName->setAccessibleName(qString(localizedString("New conversation")));
    _newName->setMaxLength(kLongestName);
    _newName->setFixedHeight(44);
    _newName->setFrame(false);
    _newName->setTextMargins(kMargin, 0, kMargin, 0);
    _list->setFrameShape(QFrame::NoFrame);
    _list->setItemDelegate(new RowPainter(_list));
    _list->setAccessibleName(qString(localizedString("Conversations")));
    _list->setMouseTracking(true);
    _list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(_newName);
    column->addWidget(_list, 1);
    _list->installEventFilter(this);
    connect(_newName, &QLineEdit::returnPressed, this, [this] { choose(_newName->text().trimmed()); });
    const auto chooseItem = [this](const QListWidgetItem* item) { choose(item->text()); };
    connect(_list, &QListWidget::itemClicked, this, chooseItem);
    connect(_list, &QListWidget::itemActivated, this, chooseItem);
    hide();
}

void ConversationsView::setNames(const std::vector<std::string>& names, const std::string& current) {
    _list->clear();
    for (const std::string& name : names) {
        _list->addItem(qString(name));
        if (name == current) {
            _list->setCurrentRow(_list->count() - 1);
        }
    }
}

void ConversationsView::open() {
    _newName->clear();
    _newName->setFont(hostFont(15));
    show();
    raise();
    (_list->count() > 0 ? static_cast<QWidget*>(_list) : _newName)->setFocus(Qt::OtherFocusReason);
}

void ConversationsView::choose(const QString& name) {
    if (name.isEmpty() || !isVisible()) {
        return; // The click that also activates came before.
    }
    hide();
    emit chosen(textFromQString(name));
}

void ConversationsView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), qColor(Apperance::appearanceBackgroundColor()));
}

bool ConversationsView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        window()->setAttribute(Qt::WA_KeyboardFocusChange); // The ring shows where the arrows go.
    }
    return QWidget::eventFilter(watched, event);
}

void ConversationsView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        hide();
        emit closed();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace exifcard
