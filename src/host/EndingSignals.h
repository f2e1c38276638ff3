#pragma once

#include <QObject>

namespace exifcard {

/// The signals with which a session or a terminal asks the program to end, told on the main queue as long as
/// this lives. One at a time. Each signal is left alone that was ignored before, as by nohup.
class EndingSignals : public QObject {
    Q_OBJECT

public:
    explicit EndingSignals(QObject* parent = nullptr);
    ~EndingSignals() override;

signals:
    /// Once; whoever sends a second one ends the program at once.
    void received();
};

} // namespace exifcard
