// Readable values in the messages of failed assertions.
#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

// GoogleTest finds these by the type's own namespace, which is the global one.

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << '"' << bytes.toPercentEncoding(" \r\n\t[]=;/\\:").toStdString() << '"';
}
