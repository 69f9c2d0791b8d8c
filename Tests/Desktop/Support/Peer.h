// A program for the keys to go to, which reports on its standard output line by line.
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

    /// The executables of the Qt line edit and of the GTK entry.
    static QString lineEdit();
    static QString gtkEntry();
    /// The executables of windows without content: TITLE X Y WIDTH HEIGHT. The GTK one decorates itself.
    static QString window();
    static QString gtkHeaderBar();

    /// True once the program has printed this line after the one that the last successful call found.
    [[nodiscard]] bool tells(const QString& line,
                             std::chrono::milliseconds deadline = std::chrono::seconds(15));
    /// Returns the last text that it printed.
    [[nodiscard]] QString text();
    [[nodiscard]] qint64 pid() const { return m_process.processId(); }
    [[nodiscard]] const QStringList& lines();

private:
    void read();

    QProcess m_process;
    QStringList m_lines;
    qsizetype m_next = 0;
};

/// Returns the clipboard's content, asked for as any program would.
[[nodiscard]] QString clipboardText();
/// Puts text on the clipboard; a separate program holds it until another one takes the clipboard.
void setClipboardText(const QString& text);

} // namespace orvane::tests
