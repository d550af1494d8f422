#include "loopback/Answer.h"

namespace velmora::loopback {

Answer response(const QByteArray &status, const QByteArray &headers, const QByteArray &body)
{
    Answer answer;
    answer.bytes = "HTTP/1.1 " + status + "\r\n" + headers +
                   "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    return answer;
}

Answer silence()
{
    Answer answer;
    answer.atEnd = AtEnd::KeepOpen;
    return answer;
}

} // namespace velmora::loopback
