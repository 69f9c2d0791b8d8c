// orvane-fetch: gets one document from an HTTPS server. Started by the program, with a file for the answer;
// ends with it, or when the program ends.
#include "Fetcher/Fetch.h"

#include <QCoreApplication>
#include <QFile>
#include <QSslCertificate>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <optional>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

void endWithTheProgram()
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() == 1)
        std::_Exit(EXIT_FAILURE); // it has ended already
}

std::optional<QList<QSslCertificate>> testAuthority()
{
    const QString path = qEnvironmentVariable(orvane::FetchProtocol::testAuthorityVariable);
    if (path.isEmpty())
        return std::nullopt;
    return QSslCertificate::fromPath(path);
}

} // namespace

int main(int argc, char** argv)
{
    endWithTheProgram();
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return EXIT_FAILURE;
    try {
        orvane::Fetch fetch({.url = QUrl(arguments.at(1)),
                             .mostBytes = arguments.at(2).toLongLong(),
                             .patience = std::chrono::milliseconds(arguments.at(3).toLongLong()),
                             .authorities = testAuthority()});
        QCoreApplication::exec();
    } catch (const std::exception&) {
        return EXIT_FAILURE; // the program sees that there is no answer
    }
    // The answer is complete; connections and threads needn't be ended in order.
    std::_Exit(EXIT_SUCCESS);
}
