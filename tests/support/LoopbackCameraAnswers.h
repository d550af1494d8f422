// What a loopback camera can do with a request: good answers, and all kinds of bad ones.
#pragma once

#include "loopback/Answer.h"

#include <QByteArray>

#include <chrono>

namespace velmora::test {

using loopback::AtEnd;

enum class LockKind { None, Basic, Digest };

/// The login that an answer needs; without it, there is a 401 page that names the kind.
struct CameraLock
{
    LockKind kind = LockKind::None;
    QByteArray user;
    QByteArray password;
};

struct CameraAnswer : loopback::Answer
{
    CameraLock lock;
    qsizetype company = 0; // requests that have to arrive before it is sent
};

/// Bytes that begin like a JPEG file.
[[nodiscard]] QByteArray jpeg(qsizetype size);

/// "Name: value" lines after a status line ("200 OK"), a declared length, and the body.
[[nodiscard]] CameraAnswer response(const QByteArray &status, const QByteArray &headers,
                                    const QByteArray &body);

/// A JPEG picture of that size; headers: whole lines that end with CR LF.
[[nodiscard]] CameraAnswer picture(qsizetype size, const QByteArray &headers = {});

/// A picture whose declared length is `declared`, whatever is sent.
[[nodiscard]] CameraAnswer pictureDeclared(qsizetype size, qint64 declared);

/// A picture that ends with the connection.
[[nodiscard]] CameraAnswer pictureWithoutLength(qsizetype size);

[[nodiscard]] CameraAnswer redirect(const QByteArray &location, const QByteArray &headers = {});

/// Accepts the request and says nothing.
[[nodiscard]] CameraAnswer silence();

/// Closes the connection instead of answering.
[[nodiscard]] CameraAnswer hangUp();

/// A good status line, then header after header.
[[nodiscard]] CameraAnswer endlessHeaders();

/// A header whose value never ends.
[[nodiscard]] CameraAnswer endlessHeaderLine();

/// A picture without a declared length that goes on and on.
[[nodiscard]] CameraAnswer endlessBody();

[[nodiscard]] CameraAnswer delayed(CameraAnswer answer, std::chrono::milliseconds delay);

/// Sends once the event loop, which the camera shares with its client, has had that many turns.
[[nodiscard]] CameraAnswer afterTurns(CameraAnswer answer, int turns);

/// Sends once that many requests have arrived at the camera.
[[nodiscard]] CameraAnswer inCompany(CameraAnswer answer, qsizetype requests);

/// Sends one byte at a time.
[[nodiscard]] CameraAnswer dripping(CameraAnswer answer, std::chrono::milliseconds drip);

[[nodiscard]] CameraAnswer locked(CameraAnswer answer, const CameraLock &lock);

/// The page for those who may not see an answer.
[[nodiscard]] CameraAnswer askForUser(LockKind kind);

/// True when the value of the header "Authorization" opens the lock for a GET of that path.
[[nodiscard]] bool opens(const CameraLock &lock, const QByteArray &authorization,
                         const QByteArray &path);

} // namespace velmora::test
