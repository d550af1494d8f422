#include "health/BusMessage.h"

#include <QtEndian>

#include <unistd.h>

namespace velmora {
namespace {

constexpr int kWord = 4;
constexpr int kStruct = 8;
constexpr int kBodyLengthAt = 4;
constexpr int kFieldsLengthAt = 12;
constexpr int kFieldsAt = 16;
constexpr qint32 kUsualTime = -1; // for how long it is shown: the desktop's default

enum Field : char { Path = 1, Interface = 2, Member = 3, Destination = 6, Signature = 8 };

/// Values one after another, each aligned to its own size.
class Packer
{
public:
    [[nodiscard]] const QByteArray &bytes() const { return bytes_; }

    void align(int size)
    {
        while (bytes_.size() % size != 0) {
            bytes_.append('\0');
        }
    }

    void number(quint32 value)
    {
        align(kWord);
        bytes_.append(packed(value));
    }

    void text(const QByteArray &value)
    {
        number(static_cast<quint32>(value.size()));
        bytes_.append(value).append('\0');
    }

    void signature(const QByteArray &value)
    {
        bytes_.append(static_cast<char>(value.size())).append(value).append('\0');
    }

    void byte(char value) { bytes_.append(value); }

    void setNumber(int at, qsizetype value)
    {
        bytes_.replace(at, kWord, packed(static_cast<quint32>(value)));
    }

    void field(Field field, const QByteArray &type, const QByteArray &value)
    {
        align(kStruct);
        byte(field);
        signature(type);
        if (type == "g") {
            signature(value);
        } else {
            text(value);
        }
    }

private:
    static QByteArray packed(quint32 value)
    {
        const quint32 little = qToLittleEndian(value);
        return {reinterpret_cast<const char *>(&little), kWord};
    }

    QByteArray bytes_;
};

struct Call
{
    QByteArray service;
    QByteArray path;
    QByteArray member; // of the interface, which has the same name as the service
    QByteArray signature;
};

QByteArray message(quint32 serial, const Call &call, const QByteArray &body)
{
    Packer packer;
    for (const char c : {'l', '\1', '\0', '\1'}) { // little endian, a call, no flags, version 1
        packer.byte(c);
    }
    packer.number(static_cast<quint32>(body.size()));
    packer.number(serial);
    packer.number(0);
    packer.field(Path, "o", call.path);
    packer.field(Interface, "s", call.service);
    packer.field(Member, "s", call.member);
    packer.field(Destination, "s", call.service);
    if (!call.signature.isEmpty()) {
        packer.field(Signature, "g", call.signature);
    }
    packer.setNumber(kFieldsLengthAt, packer.bytes().size() - kFieldsAt);
    packer.setNumber(kBodyLengthAt, body.size());
    packer.align(kStruct);
    return packer.bytes() + body;
}

} // namespace

QByteArray busLogin()
{
    return QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(::getuid()).toHex() + "\r\n";
}

QByteArray busHello()
{
    return "BEGIN\r\n" +
           message(1, {"org.freedesktop.DBus", "/org/freedesktop/DBus", "Hello", {}}, {});
}

QByteArray busNotice(quint32 serial, const QString &text)
{
    Packer body;
    body.text("Velmora");
    body.number(0); // replaces no other notice
    body.text("velmora");
    body.text("Velmora");
    body.text(text.toUtf8());
    body.number(0); // no actions
    body.number(0); // no hints
    body.align(kStruct);
    body.number(static_cast<quint32>(kUsualTime));
    const Call notify{"org.freedesktop.Notifications", "/org/freedesktop/Notifications", "Notify",
                      "susssasa{sv}i"};
    return message(serial, notify, body.bytes());
}

} // namespace velmora
