// The window with the program's name, icon and version. Deletes itself when it is closed. Main thread.
#pragma once

#include <QWidget>

namespace orvane {

class AboutPanel : public QWidget {
    Q_OBJECT
public:
    AboutPanel();

private:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace orvane
