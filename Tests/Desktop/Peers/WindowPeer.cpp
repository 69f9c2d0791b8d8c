// A window of one colour: WindowPeer TITLE X Y WIDTH HEIGHT [COLOUR]. Prints, a line each, "focused" when it
// has the keyboard and "text:" and its letters after each key.
#include <QApplication>
#include <QKeyEvent>
#include <QTextStream>
#include <QWidget>

namespace {

class Window : public QWidget {
protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        m_text += event->text();
        QTextStream(stdout) << "text:" << m_text << Qt::endl;
    }
    void focusInEvent(QFocusEvent*) override { QTextStream(stdout) << "focused" << Qt::endl; }

private:
    QString m_text;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const auto number = [&](int at) { return arguments.value(at).toInt(); };
    Window window;
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(arguments.value(6, QStringLiteral("#ffd500"))));
    window.setPalette(palette);
    window.setFocusPolicy(Qt::StrongFocus);
    window.setWindowTitle(arguments.value(1));
    window.move(number(2), number(3));
    window.resize(number(4), number(5));
    window.show();
    return QApplication::exec();
}
