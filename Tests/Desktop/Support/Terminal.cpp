#include "Desktop/Support/Terminal.h"

#include "Support/Eventually.h"

#include <QFile>

namespace orvane::tests {

Terminal::Terminal() : m_peer(QStringLiteral("xterm"), arguments(m_output)) {}

QStringList Terminal::arguments(const QString& output)
{
    const QString translations =
        QStringLiteral("XTerm*VT100.translations: #override Ctrl Shift <Key>V: insert-selection(CLIPBOARD)");
    const QString script = QStringLiteral("stty -icanon -echo; exec cat > '%1'").arg(output);
    return {QStringLiteral("-xrm"), translations,
            QStringLiteral("-fa"),  QStringLiteral("DejaVu Sans Mono"),
            QStringLiteral("-e"),   QStringLiteral("sh"),
            QStringLiteral("-c"),   script};
}

bool Terminal::getsKeys(Hardware& hardware) const
{
    // Once the file exists, nothing is echoed any more.
    if (!eventually(15s, [&] { return QFile::exists(m_output); }))
        return false;
    return eventually(15s, [&] {
        hardware.tap("g");
        return eventually(500ms, [&] { return typed().endsWith('g'); });
    });
}

QByteArray Terminal::typed() const
{
    QFile file(m_output);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace orvane::tests
