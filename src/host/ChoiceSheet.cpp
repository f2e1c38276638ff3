#include "host/ChoiceSheet.h"

#include "appearance/Apperance.h"
#include "appearance/ThemeColors.h"
#include "host/HostFont.h"
#include "platform/uikit/Accessibility.h"
#include "platform/uikit/UIColor+Qt.h"
#include "ui_ChoiceSheet.h"

#include <QKeyEvent>
#include <QPainter>

namespace exifcard {
namespace {

constexpr double kRadius = 14;
constexpr double kVeilOpacity = 0.34;

} // namespace

ChoiceSheet::ChoiceSheet(
    const QString& title, const QString& text, std::vector<Choice> choices, QWidget* parent)
    : QWidget(parent)
    , _ui(std::make_unique<Ui::ChoiceSheet>())
    , _choices(std::move(choices)) {
    _ui->setupUi(this);
    _ui->titleLabel->setText(title);
    _ui->titleLabel->setFont(hostFont(17, HostFontWeight::DemiBold));
    _ui->textLabel->setText(text);
    _ui->textLabel->setFont(hostFont(13));
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, qColor(Apperance::appearanceTextColor()));
    _ui->titleLabel->setPalette(colors);
    colors.setColor(QPalette::WindowText, qColor(secondaryTextColor()));
    _ui->textLabel->setPalette(colors);
    SheetButton* const buttons[] = {_ui->firstButton, _ui->secondButton, _ui->thirdButton};
    for (std::size_t index = 0; index < std::size(buttons); ++index) {
        buttons[index]->setVisible(index < _choices.size());
        if (index < _choices.size()) {
            buttons[index]->setText(_choices[index].text);
            buttons[index]->setKind(index == 0 ? SheetButton::Kind::Filled : SheetButton::Kind::Quiet);
            connect(buttons[index], &SheetButton::clicked, this, [this, index] { choose(index); });
        }
    }
    setAccessibilityLabel(*this, title);
    setAccessibilityHint(*this, text);
    setIsAccessibilityElement(*this, false); // Its buttons are elements.
    setAccessibilityViewIsModal(*this, true);
    setAttribute(Qt::WA_DeleteOnClose);
    setGeometry(parent->rect());
    parent->installEventFilter(this);
}

ChoiceSheet::~ChoiceSheet() = default;

void ChoiceSheet::choose(std::size_t index) {
    closeAndCall(_choices[index].chosen);
}

void ChoiceSheet::closeAndCall(std::function<void()> handler) {
    close();
    if (handler) {
        handler();
    }
}

void ChoiceSheet::showEvent(QShowEvent*) {
    raise();
    _focusedBefore = window()->focusWidget();
    _ui->firstButton->setFocus(Qt::OtherFocusReason);
}

void ChoiceSheet::closeEvent(QCloseEvent*) {
    if (_focusedBefore) {
        _focusedBefore->setFocus(Qt::OtherFocusReason);
    }
}

void ChoiceSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && _dismissed) {
        closeAndCall(_dismissed);
    } else if (event->key() == Qt::Key_Escape) {
        choose(_choices.size() - 1);
    }
    event->accept(); // What lies below waits for the answer.
}

bool ChoiceSheet::focusNextPrevChild(bool next) {
    QList<QWidget*> buttons;
    for (SheetButton* const button : {_ui->firstButton, _ui->secondButton, _ui->thirdButton}) {
        if (button->isVisible()) {
            buttons.append(button);
        }
    }
    if (buttons.isEmpty()) {
        return QWidget::focusNextPrevChild(next); // It is being hidden.
    }
    const qsizetype present = std::max<qsizetype>(buttons.indexOf(focusWidget()), 0);
    const qsizetype step = next ? 1 : buttons.size() - 1;
    buttons.at((present + step) % buttons.size())
        ->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool ChoiceSheet::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QWidget::eventFilter(watched, event);
}

void ChoiceSheet::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor::fromRgbF(0, 0, 0, static_cast<float>(kVeilOpacity)));
    painter.setPen(QPen(qColor(hairlineColor()), 1));
    painter.setBrush(qColor(Apperance::appearanceBackgroundColor()));
    painter.drawRoundedRect(QRectF(_ui->card->geometry()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

} // namespace exifcard
