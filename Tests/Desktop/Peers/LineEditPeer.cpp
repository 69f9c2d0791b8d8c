// A line edit in a window of its own, which prints what happens to it, a line each: "focused" when it has the
// keyboard, "text:" and its text after each change, "marked:" and what is marked.
#include <QApplication>
#include <QLineEdit>
#include <QTextStream>

namespace {

class Edit : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        QLineEdit::focusInEvent(event);
        QTextStream(stdout) << "focused" << Qt::endl;
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Edit edit;
    QTextStream out(stdout);
    QObject::connect(&edit, &QLineEdit::textChanged, &edit,
                     [&](const QString& text) { out << "text:" << text << Qt::endl; });
    QObject::connect(&edit, &QLineEdit::selectionChanged, &edit,
                     [&] { out << "marked:" << edit.selectedText() << Qt::endl; });
    edit.setWindowTitle(QStringLiteral("Line edit"));
    edit.resize(400, 40);
    edit.show();
    return QApplication::exec();
}
