// The program that the cost of Orvane's window is compared with: the least Qt Widgets program with a window
// of that size. It shows the window when something arrives on its standard input.
#include <QApplication>
#include <QLabel>
#include <QSocketNotifier>

#include <array>

#include <unistd.h>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QLabel window(QStringLiteral("Bare"));
    window.resize(940, 640);
    QSocketNotifier request(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&request, &QSocketNotifier::activated, &window, [&] {
        std::array<char, 16> buffer;
        if (read(STDIN_FILENO, buffer.data(), buffer.size()) <= 0)
            QApplication::quit();
        else
            window.show();
    });
    const std::array<char, 1> ready{'\n'};
    if (write(STDOUT_FILENO, ready.data(), ready.size()) < 0)
        return 1;
    return QApplication::exec();
}
