// An authority made for one test, and a server's certificate signed by it. Made with the openssl program.
#pragma once

#include <QSslCertificate>
#include <QSslKey>
#include <QStringList>
#include <QTemporaryDir>

namespace orvane::tests {

class Certificates {
public:
    /// The certificate is for these names and for 127.0.0.1. Throws std::runtime_error when openssl fails.
    explicit Certificates(const QStringList& hosts);

    /// The file for the variable that has a fetcher trust the authority.
    [[nodiscard]] QString authorityFile() const { return path(QStringLiteral("authority.pem")); }
    [[nodiscard]] QSslCertificate certificate() const;
    [[nodiscard]] QSslKey key() const;

private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    void makeAuthority();
    void makeServer(const QStringList& hosts);

    QTemporaryDir m_folder;
};

} // namespace orvane::tests
