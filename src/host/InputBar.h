#pragma once

#include "platform/messages/ConversationStore.h"
#include "platform/messages/MSConversation.h"

#include <QWidget>

#include <vector>

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace exifcard {

class PictureButton;
class PendingPhotoView;
class PendingTextView;

/// Where a message waits to be sent: a rounded field with the pending bubble and its text above the line that
/// the user types in.
class InputBar : public QWidget {
    Q_OBJECT

public:
    /// The bar reaches so far below the panel's round upper corners.
    static constexpr int kOverlapOfPanel = 14;

    explicit InputBar(QWidget* parent);

    void showPending(const std::vector<ConversationEntry>& pending);
    /// Shows what could not be inserted until the user drops it or tries again, or a new bubble comes.
    void showFailedInsertion(const MSConversation::FailedInsertion& failure);
    const std::vector<MSConversation::FailedInsertion>& failedInsertions() const { return _failed; }
    void clearFailedInsertions();
    /// One sentence above the field; an empty one takes it away.
    void showError(const QString& error);
    void setSending(bool isSending);

    QString typedText() const;
    bool hasTypedText() const; ///< More than blanks.
    void setTypedText(const QString& text);
    void clearTypedText(const QString& sentText);
    void focusLine();
    int heightForWidth(int width) const override;
    bool hasPending() const { return !_pending.empty() || !_failed.empty(); }

signals:
    void sendRequested();
    void dropRequested();
    void retryRequested(); ///< Of `failedInsertions`.
    /// The bar needs another height.
    void heightChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int heightOfField(int fieldWidth) const;
    void updateContent();
    void updateSendButton();
    void alignLine();
    void takeAppearance();

    std::vector<ConversationEntry> _pending;
    std::vector<MSConversation::FailedInsertion> _failed;
    bool _isSending = false;
    bool _isTakingAppearance = false;
    QWidget* _field = nullptr;
    QBoxLayout* _waiting = nullptr; ///< What stands above the line.
    QLabel* _errorLabel = nullptr;
    PendingPhotoView* _failureView = nullptr;
    PendingPhotoView* _photoView = nullptr;
    QWidget* _separator = nullptr;
    PendingTextView* _textView = nullptr;
    QLineEdit* _line = nullptr;
    PictureButton* _sendButton = nullptr;
};

} // namespace exifcard
