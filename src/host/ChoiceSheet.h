#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace Ui {
class ChoiceSheet;
}

namespace exifcard {

/// A question inside the window, over what it is about: a title, a sentence, and what may be chosen, one
/// below the other. Escape chooses the last, unless the question may stay open.
class ChoiceSheet : public QWidget {
    Q_OBJECT

public:
    struct Choice {
        QString text;
        std::function<void()> chosen; ///< The sheet closes first.
    };

    /// @param choices  One to three; the first is the usual one.
    ChoiceSheet(const QString& title, const QString& text, std::vector<Choice> choices, QWidget* parent);
    ~ChoiceSheet() override;

    /// The question may stay open: Escape chooses nothing and calls this, when the sheet has closed.
    void setDismissed(std::function<void()> dismissed) { _dismissed = std::move(dismissed); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void choose(std::size_t index);
    void closeAndCall(std::function<void()> handler);

    std::unique_ptr<Ui::ChoiceSheet> _ui;
    std::vector<Choice> _choices;
    QPointer<QWidget> _focusedBefore; ///< Gets the keys back.
    std::function<void()> _dismissed; ///< Empty where something has to be chosen.
};

} // namespace exifcard
