#include "Support/Https/Certificates.h"

#include <QFile>
#include <QProcess>

#include <stdexcept>

namespace orvane::tests {

namespace {

void openssl(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("openssl"), arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error("openssl failed: " + process.readAll().toStdString());
}

QByteArray content(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QString& text)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(text.toUtf8()) < 0)
        throw std::runtime_error("a file can't be written");
}

const QStringList newKey{QStringLiteral("-newkey"), QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                         QStringLiteral("ec_paramgen_curve:P-256"), QStringLiteral("-nodes")};

} // namespace

Certificates::Certificates(const QStringList& hosts)
{
    write(path(QStringLiteral("request.conf")),
          QStringLiteral("[req]\nprompt=no\ndistinguished_name=name\nx509_extensions=authority\n"
                         "[name]\nCN=Orvane Test\n[authority]\nbasicConstraints=critical,CA:TRUE\n"
                         "keyUsage=critical,keyCertSign\nsubjectKeyIdentifier=hash\n"));
    makeAuthority();
    makeServer(hosts);
}

void Certificates::makeAuthority()
{
    openssl(QStringList{QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-days"),
                        QStringLiteral("2"), QStringLiteral("-config"), path(QStringLiteral("request.conf")),
                        QStringLiteral("-keyout"), path(QStringLiteral("authority.key")),
                        QStringLiteral("-out"), authorityFile()} +
            newKey);
}

void Certificates::makeServer(const QStringList& hosts)
{
    const QString request = path(QStringLiteral("server.req"));
    openssl(QStringList{QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-config"),
                        path(QStringLiteral("request.conf")), QStringLiteral("-subj"),
                        QStringLiteral("/CN=Orvane Test Server"), QStringLiteral("-keyout"),
                        path(QStringLiteral("server.key")), QStringLiteral("-out"), request} +
            newKey);
    QString names = QStringLiteral("IP:127.0.0.1");
    for (const QString& host : hosts)
        names += QStringLiteral(",DNS:") + host;
    const QString extensions = path(QStringLiteral("server.conf"));
    write(extensions, QStringLiteral("basicConstraints=critical,CA:FALSE\nextendedKeyUsage=serverAuth\n"
                                     "authorityKeyIdentifier=keyid\nsubjectAltName=%1\n")
                          .arg(names));
    openssl({QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-days"), QStringLiteral("2"),
             QStringLiteral("-in"), request, QStringLiteral("-CA"), authorityFile(), QStringLiteral("-CAkey"),
             path(QStringLiteral("authority.key")), QStringLiteral("-CAcreateserial"),
             QStringLiteral("-extfile"), extensions, QStringLiteral("-out"),
             path(QStringLiteral("server.pem"))});
}

QSslCertificate Certificates::certificate() const
{
    return QSslCertificate(content(path(QStringLiteral("server.pem"))));
}

QSslKey Certificates::key() const
{
    return QSslKey(content(path(QStringLiteral("server.key"))), QSsl::Ec);
}

} // namespace orvane::tests
