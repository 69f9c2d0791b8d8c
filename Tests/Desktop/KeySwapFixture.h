// The built program with Ctrl Shortcuts on, a person's keyboard, and the checks that several tests use.
#pragma once

#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Support/Eventually.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

#include <gmock/gmock.h>

namespace orvane::tests {

/// The programs in which keys are left as they are: those that a new user finds there, or none.
enum class Exceptions { standard, none };

inline QByteArray keySwapDefaults(const char* mode, Exceptions exceptions = Exceptions::standard)
{
    QVariantMap all{
        {QStringLiteral("hasOnboarded"), true},
        {QStringLiteral("Orvane.enabledCapabilities"),
         QVariantMap{{QStringLiteral("net.lindenrow.orvane.keyswap"), true}}},
        {QStringLiteral("net.lindenrow.orvane.keyswap.mode"), QLatin1String(mode)},
    };
    if (exceptions == Exceptions::none)
        all.insert(QStringLiteral("net.lindenrow.orvane.keyswap.excludedApps"), QStringList());
    return QJsonDocument(QJsonObject::fromVariantMap(all)).toJson();
}

inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class KeySwapFixture : public testing::Test {
protected:
    void start(const char* mode, Exceptions exceptions = Exceptions::standard)
    {
        // As at login: on a desktop without a status area a person's start opens a window, which takes the
        // keys.
        m_program = std::make_unique<Program>(Program::Start{.defaults = keySwapDefaults(mode, exceptions),
                                                             .arguments = {QStringLiteral("--at-login")}});
        ASSERT_TRUE(m_program->waitUntilReady());
        ASSERT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Keyboard remapping active"))));
    }
    void TearDown() override
    {
        m_program.reset();
        EXPECT_TRUE(eventually(10s, [] { return OtherClient().keysDown().isEmpty(); }))
            << "keys are left pressed";
    }

    void chord(const char* modifier, const char* key)
    {
        m_hardware.press(modifier);
        m_hardware.tap(key);
        m_hardware.release(modifier);
    }
    void type(const char* letters)
    {
        for (const char* letter = letters; *letter; ++letter) {
            const char name[2]{*letter, 0};
            m_hardware.tap(name);
        }
    }
    /// Returns a terminal whose program writes "ready" into a file, and "interrupted" when it is interrupted.
    static std::unique_ptr<Peer> interruptibleTerminal(const QString& mark)
    {
        const QString script =
            QStringLiteral(
                "trap 'echo interrupted >> %1; exit' INT; echo ready >> %1; while :; do read x; done")
                .arg(mark);
        return std::make_unique<Peer>(QStringLiteral("xterm"),
                                      QStringList{QStringLiteral("-fa"), QStringLiteral("DejaVu Sans Mono"),
                                                  QStringLiteral("-e"), QStringLiteral("sh"),
                                                  QStringLiteral("-c"), script});
    }

    /// Types, selects all, copies and pastes twice, each with one modifier.
    void copyAndPaste(const QString& editor, const char* modifier)
    {
        setClipboardText(QStringLiteral("nothing of ours"));
        Peer peer(editor);
        ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
        type("copied");
        ASSERT_TRUE(peer.tells(QStringLiteral("text:copied"))) << peer.text().toStdString();
        chord(modifier, "a");
        ASSERT_TRUE(peer.tells(QStringLiteral("marked:copied")));
        chord(modifier, "c");
        EXPECT_TRUE(eventually(10s, [] { return clipboardText() == QStringLiteral("copied"); }))
            << clipboardText().toStdString();
        m_hardware.tap("End");
        chord(modifier, "v");
        EXPECT_TRUE(peer.tells(QStringLiteral("text:copiedcopied"))) << peer.text().toStdString();
    }

    Screen m_screen;
    Hardware m_hardware;
    std::unique_ptr<Program> m_program;
};

} // namespace orvane::tests
