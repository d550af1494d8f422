// Encryption for servers of the tests: a certificate for 127.0.0.1 that vouches for itself, so that
// only who is told to trusts it.
#pragma once

#include <QSslConfiguration>

namespace velmora::test {

[[nodiscard]] QSslConfiguration selfSignedConfiguration();

/// Native path of that certificate.
[[nodiscard]] QByteArray selfSignedCertificate();

} // namespace velmora::test
