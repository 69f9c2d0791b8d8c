// A program for the keys to go to, which tells of itself line by line on its standard output.
#pragma once

#include <QProcess>
#include <QStringList>

#include <chrono>

namespace orvane::tests {

class Peer {
public:
    Peer(const QString& program, const QStringList& arguments = {});
    ~Peer();
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// The Qt line edit, the GTK entry.
    static QString lineEdit();
    static QString gtkEntry();
    /// Windows without content: TITLE X Y WIDTH HEIGHT. The GTK one decorates itself.
    static QString window();
    static QString gtkHeaderBar();

    /// True once it has told this line, after what the last successful call found.
    [[nodiscard]] bool tells(const QString& line,
                             std::chrono::milliseconds deadline = std::chrono::seconds(15));
    /// The last text that it told of.
    [[nodiscard]] QString text();
    [[nodiscard]] qint64 pid() const { return m_process.processId(); }
    [[nodiscard]] const QStringList& lines();

private:
    void read();

    QProcess m_process;
    QStringList m_lines;
    qsizetype m_next = 0;
};

/// What the clipboard holds, asked for as any program would.
[[nodiscard]] QString clipboardText();
/// Puts text on the clipboard, held by a program of its own until another one takes it.
void setClipboardText(const QString& text);

} // namespace orvane::tests
