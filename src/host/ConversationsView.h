#pragma once

#include <QString>
#include <QWidget>

#include <string>
#include <vector>

class QLineEdit;
class QListWidget;

namespace exifcard {

/// The list of conversations, over the window below its header, with a line for a new one.
class ConversationsView : public QWidget {
    Q_OBJECT

public:
    explicit ConversationsView(QWidget* parent);

    void setNames(const std::vector<std::string>& names, const std::string& current);
    void open();

signals:
    void chosen(const std::string& name);
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void choose(const QString& name);

    QLineEdit* _newName = nullptr;
    QListWidget* _list = nullptr;
};

} // namespace exifcard
