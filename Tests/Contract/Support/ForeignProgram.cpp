#include "Contract/Support/ForeignProgram.h"

#include <gtest/gtest.h>

namespace orvane::tests {

ForeignProgram::ForeignProgram(const QString& program, const QStringList& arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.start(program, arguments);
    EXPECT_TRUE(m_process.waitForStarted()) << qPrintable(program);
}

ForeignProgram::~ForeignProgram()
{
    m_process.terminate();
    if (!m_process.waitForFinished(3000)) {
        m_process.kill();
        m_process.waitForFinished(3000);
    }
}

} // namespace orvane::tests
