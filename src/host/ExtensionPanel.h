#pragma once

#include "platform/messages/MSMessagesAppPresentationStyle.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QVariantAnimation;

namespace exifcard {

class MSConversation;
class MSMessagesAppViewController;
class PanelHandle;

/// The panel that shows the extension at the window's foot, compact or expanded over the conversation. It is
/// the extension's host. Its parent says with `setRoom` how much room there is.
class ExtensionPanel : public QWidget {
    Q_OBJECT

public:
    using Style = MSMessagesAppPresentationStyle;

    ExtensionPanel(std::shared_ptr<MSMessagesAppViewController> extension, QWidget* parent);
    ~ExtensionPanel() override;

    /// The room within the parent: the whole width, and the top edge of the expanded panel.
    void setRoom(QSize window, int expandedTop);
    /// 0.365 of the window's height, between 240 and 310.
    static int compactHeight(int windowHeight);

    /// Shows the extension with that conversation; it stands in the style that it had.
    void activate(const std::shared_ptr<MSConversation>& conversation);
    void deactivate();
    bool isActive() const;

    /// The one that the panel has or goes to.
    Style style() const { return _style; }
    /// A running movement is finished first.
    void setStyle(Style style, bool isAnimated);
    void toggle();
    bool isMoving() const;
    MSMessagesAppViewController& extension() { return *_extension; }
    void focusContent();
    /// Gives the key to the extension although the focus is elsewhere; true where the extension took it.
    bool passKey(const QKeyEvent& event);

signals:
    void styleChanged();
    /// The panel hides all that lies under the expanded one, or shows some of it again.
    void coveringChanged(bool isCovering);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    class Host;

    int heightOf(Style style) const;
    QWidget* contentForKeys() const;
    void setPanelHeight(double height);
    void layOutContent();
    void resizeExtension(QSize size);
    void moveTo(int height);
    void fadeTo(int height);
    void finishMovement();
    void dragBegan();
    void dragged(double distance);
    void dragEnded(double distance, double velocity);

    std::shared_ptr<MSMessagesAppViewController> _extension;
    std::shared_ptr<Host> _host;
    PanelHandle* _handle = nullptr;
    QWidget* _content = nullptr; ///< Clips the extension's view.
    QVariantAnimation* _movement = nullptr;
    bool _isInTransition = false; ///< The extension was told the beginning and not yet the end.
    Style _style = Style::Compact;
    QSize _window;
    int _expandedTop = 0;
    QSize _toldSize; ///< Of the extension's view.
    bool _isDragged = false;
    bool _isCovering = false;
    bool _isPassingKey = false;
    double _height = 0;
    double _heightBeforeDrag = 0;
};

} // namespace exifcard
