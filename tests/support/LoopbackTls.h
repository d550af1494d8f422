// Encryption for the tests' servers: a self-signed certificate for 127.0.0.1, trusted only by those
// told to trust it.
#pragma once

#include <QSslConfiguration>

namespace velmora::test {

[[nodiscard]] QSslConfiguration selfSignedConfiguration();

/// Native path of that certificate.
[[nodiscard]] QByteArray selfSignedCertificate();

} // namespace velmora::test
