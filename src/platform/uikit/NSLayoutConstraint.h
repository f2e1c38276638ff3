#pragma once

#include <QPointer>
#include <QWidget>

namespace exifcard {

/// A fixed width or height of a view that can be changed and switched off.
class NSLayoutConstraint {
public:
    enum class Attribute { Width, Height };

    NSLayoutConstraint() = default; ///< Of no view: does nothing.
    NSLayoutConstraint(QWidget& view, Attribute attribute) : _view(&view), _attribute(attribute) {}

    double constant() const { return _constant; }
    void setConstant(double constant);
    bool isActive() const { return _isActive; }
    void setActive(bool isActive);

private:
    void apply();

    QPointer<QWidget> _view;
    Attribute _attribute = Attribute::Width;
    double _constant = 0;
    bool _isActive = true;
};

/// Keeps the four edges of `view` on those of `superview`, its parent, from now on.
void pinToEdges(QWidget& view, QWidget& superview);

} // namespace exifcard
