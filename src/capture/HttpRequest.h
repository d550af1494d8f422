// One picture to be fetched, and the outcome.
#pragma once

#include "capture/ReplyBody.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <memory>
#include <utility>

namespace velmora {

enum class HttpForm {
    Http10,   // HTTP/1.0, always fresh from the server, as "anonimous" when the server asks for a
              // user
    AsWritten // HTTP/1.1; later versions let a server send more at a time than the loop can take
};

struct HttpRequest
{
    QByteArray url; // with scheme; empty when the address names no host
    HttpForm form = HttpForm::AsWritten;
    std::chrono::milliseconds limit{0}; // for the whole transfer
    QString workFolder = {};            // native path; for a body too long to stay in memory
    bool isCompared = false;            // a digest of the body is wanted

    QString user = {}; // sent only when the server asks; empty for none
    QString password = {};

    bool operator==(const HttpRequest &) const = default;
};

/// The body of its answer, to be filled.
[[nodiscard]] inline ReplyBody emptyBody(const HttpRequest &request,
                                         std::shared_ptr<BodyStock> stock)
{
    ReplyBody body(request.workFolder, std::move(stock));
    if (request.isCompared) {
        body.digestAlong();
    }
    return body;
}

enum class FetchOutcome {
    Arrived, // status 200 to 299 and the whole body
    Failed,
    Stopped // given up on request; says nothing about the camera
};

struct HttpReply
{
    FetchOutcome outcome = FetchOutcome::Failed;
    ReplyBody body;
    QString lastModified; // header text, empty when the server sent none or a blank one
    QString date;         // header text: the server's clock
    QString contentType;
    std::chrono::milliseconds duration{0};
    QString failure; // why it failed, as a text for the user, without credentials
};

} // namespace velmora
