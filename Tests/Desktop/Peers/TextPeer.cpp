// A window that shows text and is above others: TextPeer X Y LINE... Prints "shown" once it is.
#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QTextStream>
#include <QTimer>
#include <QWidget>

namespace {

constexpr int margin = 20;
constexpr int pixelSize = 20;

class Page : public QWidget {
public:
    explicit Page(QStringList lines) : m_lines(std::move(lines))
    {
        setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(pixelSize);
        setFont(font);
        int width = 0;
        for (const QString& line : m_lines)
            width = std::max(width, fontMetrics().horizontalAdvance(line));
        resize(width + 2 * margin,
               static_cast<int>(m_lines.size()) * fontMetrics().lineSpacing() + 2 * margin);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        painter.setPen(Qt::black);
        int y = margin + fontMetrics().ascent();
        for (const QString& line : m_lines) {
            painter.drawText(margin, y, line);
            y += fontMetrics().lineSpacing();
        }
        if (!m_isTold)
            QTimer::singleShot(0, this, [] { QTextStream(stdout) << "shown" << Qt::endl; });
        m_isTold = true;
    }

private:
    QStringList m_lines;
    bool m_isTold = false;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    Page page(arguments.mid(3));
    page.move(arguments.value(1).toInt(), arguments.value(2).toInt());
    page.show();
    return QApplication::exec();
}
