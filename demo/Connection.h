// One client of the demonstration cameras: reads its request, sends the answer at the required pace
// and closes. Deletes itself when the client is gone.
#pragma once

#include "demo/HttpResponder.h"

#include <QByteArray>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>

#include <chrono>

namespace velmora::demo {

class Connection : public QObject
{
public:
    /// socket: connected; the connection takes ownership.
    Connection(QTcpSocket *socket, QObject *parent);

private:
    enum class State { Reading, Answering, Closing };
    using Step = void (Connection::*)();

    void readBytes();
    void refuseLateRequest();
    void answer(const Answer &answer);
    void sendAll();
    void sendHeadAndDrip();
    void sendPiece();
    void closeSoon();
    void endWhenWritten();
    void abort();
    void after(std::chrono::milliseconds delay, Step step);

    QTcpSocket *socket_;
    QTimer timer_;
    Step next_ = nullptr;
    State state_ = State::Reading;
    QByteArray received_;
    Answer answer_;
    qsizetype sentBytes_ = 0; // of the body, when it is dripped
};

} // namespace velmora::demo
