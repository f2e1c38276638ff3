#pragma once

#include <QObject>

namespace exifcard {

struct UITraitCollection;

/// Tells that the program's traits have changed, after `currentTraitCollection` answers the new ones.
class TraitChanges : public QObject {
    Q_OBJECT

public:
    static TraitChanges& instance();

signals:
    void changed(const UITraitCollection& previous);
};

} // namespace exifcard
