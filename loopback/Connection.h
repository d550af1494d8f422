// One client of a camera server: reads its request, sends the answer in the way that is wanted, and
// closes.
#pragma once

#include "loopback/Answer.h"
#include "loopback/Request.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

#include <functional>

namespace velmora::loopback {

/// Says what is sent in answer to a request.
using Answerer = std::function<Answer(const Request &)>;

/// Serves one request; whatever else the client sends is ignored. Goes away, with its socket, when
/// the client has closed, or takes nothing more of an answer that has an end.
class Connection : public QObject
{
public:
    /// socket: connected; it owns this. answerer: asked once, as soon as the request is there; must
    /// outlive this.
    Connection(QTcpSocket *socket, const Answerer &answerer);

private:
    enum class State { Reading, Answering, Repeating, Closing };
    using Step = void (Connection::*)();

    void read();
    void refuseLateRequest();
    void answer(const Answer &answer);
    void begin();
    void sendPiece();
    void finish();
    void goOn();
    void close();
    void endSending();
    void abort();
    void after(std::chrono::milliseconds delay, Step step);

    QTcpSocket &socket_;
    const Answerer &answerer_;
    QTimer timer_;
    Step next_ = nullptr;
    State state_ = State::Reading;
    QByteArray received_;
    Answer answer_;
    qsizetype sentBytes_ = 0;
};

} // namespace velmora::loopback
