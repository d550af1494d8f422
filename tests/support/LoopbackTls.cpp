#include "support/LoopbackTls.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslKey>

#include <stdexcept>

namespace velmora::test {
namespace {

QByteArray contents(const QByteArray &path)
{
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return file.readAll();
}

} // namespace

QByteArray selfSignedCertificate()
{
    return VELMORA_SUPPORT_DATA "/loopback_certificate.pem";
}

QSslConfiguration selfSignedConfiguration()
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(contents(selfSignedCertificate())));
    configuration.setPrivateKey(
        QSslKey(contents(VELMORA_SUPPORT_DATA "/loopback_key.pem"), QSsl::Ec));
    return configuration;
}

} // namespace velmora::test
