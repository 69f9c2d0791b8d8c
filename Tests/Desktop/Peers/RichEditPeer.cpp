// A rich text edit with a bold word between two others, which prints what happens to it, a line each:
// "focused", "marked:" and what is marked, and after each change "text:" and its text, with a slash before
// and after what is bold.
#include <QApplication>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextStream>

namespace {

class Edit : public QTextEdit {
public:
    using QTextEdit::QTextEdit;

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        QTextEdit::focusInEvent(event);
        QTextStream(stdout) << "focused" << Qt::endl;
    }
};

QString textWithMarks(const QTextDocument& document)
{
    QString text;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const bool isBold = it.fragment().charFormat().fontWeight() > QFont::Normal;
            const QString mark = isBold ? QStringLiteral("/") : QString();
            text += mark + it.fragment().text() + mark;
        }
    }
    return text;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Edit edit;
    QTextStream out(stdout);
    edit.setHtml(QStringLiteral("one <b>bold</b> two"));
    QObject::connect(&edit, &QTextEdit::textChanged, &edit,
                     [&] { out << "text:" << textWithMarks(*edit.document()) << Qt::endl; });
    QObject::connect(&edit, &QTextEdit::selectionChanged, &edit,
                     [&] { out << "marked:" << edit.textCursor().selectedText() << Qt::endl; });
    edit.setWindowTitle(QStringLiteral("Rich edit"));
    edit.resize(400, 120);
    edit.show();
    return QApplication::exec();
}
