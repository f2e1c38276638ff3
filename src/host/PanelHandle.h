#pragma once

#include <QAbstractButton>
#include <QPointF>

#include <deque>

namespace exifcard {

/// The strip at the panel's top: dragged with the pointer, or clicked.
class PanelHandle : public QAbstractButton {
    Q_OBJECT

public:
    static constexpr int kHeight = 20;

    explicit PanelHandle(QWidget* parent);

    /// For screen readers.
    void setExpanded(bool isExpanded);
    bool isExpanded() const { return _isExpanded; }

signals:
    void dragBegan();
    /// @param distance  In points since the drag began; upwards is positive.
    void dragged(double distance);
    /// @param velocity  In points a second; upwards is positive.
    void dragEnded(double distance, double velocity);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Moment {
        double y = 0;
        double seconds = 0;
    };

    void record(const QMouseEvent& event);
    double velocity() const;

    bool _isExpanded = false;
    bool _isPressed = false;
    bool _isDragging = false;
    double _pressedAt = 0;
    std::deque<Moment> _moments; ///< Of the last tenth of a second.
};

} // namespace exifcard
