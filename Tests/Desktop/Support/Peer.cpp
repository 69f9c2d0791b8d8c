#include "Desktop/Support/Peer.h"

#include "Support/Eventually.h"

#include <stdexcept>

namespace orvane::tests {

Peer::Peer(const QString& program, const QStringList& arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(program, arguments);
    if (!m_process.waitForStarted())
        throw std::runtime_error("can't start " + program.toStdString());
}

Peer::~Peer()
{
    m_process.kill();
    m_process.waitForFinished();
}

QString Peer::lineEdit()
{
    return QStringLiteral(ORVANE_LINE_EDIT_PEER);
}

QString Peer::gtkEntry()
{
    return QStringLiteral(ORVANE_GTK_ENTRY_PEER);
}

QString Peer::window()
{
    return QStringLiteral(ORVANE_WINDOW_PEER);
}

QString Peer::gtkHeaderBar()
{
    return QStringLiteral(ORVANE_GTK_HEADER_BAR_PEER);
}

void Peer::read()
{
    while (m_process.canReadLine())
        m_lines.append(QString::fromUtf8(m_process.readLine()).chopped(1));
}

bool Peer::tells(const QString& line, std::chrono::milliseconds deadline)
{
    return eventually(deadline, [&] {
        read();
        const qsizetype found = m_lines.indexOf(line, m_next);
        if (found < 0)
            return false;
        m_next = found + 1;
        return true;
    });
}

QString Peer::text()
{
    read();
    for (auto line = m_lines.crbegin(); line != m_lines.crend(); ++line) {
        if (line->startsWith(QLatin1String("text:")))
            return line->mid(5);
    }
    return {};
}

const QStringList& Peer::lines()
{
    read();
    return m_lines;
}

QString clipboardText()
{
    QProcess process;
    process.start(QStringLiteral("xclip"),
                  {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
    process.waitForFinished(5000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

void setClipboardText(const QString& text)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("xclip"),
                  {QStringLiteral("-i"), QStringLiteral("-selection"), QStringLiteral("clipboard")});
    process.write(text.toUtf8());
    process.closeWriteChannel();
    process.waitForFinished(5000);
}

} // namespace orvane::tests
