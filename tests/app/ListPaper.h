// A list of cameras as some program or hand may write it: in any form, encoding and order.
#pragma once

#include "CommandRules.h"

#include <QStringEncoder>

#include <algorithm>
#include <functional>

namespace velmora::test {

/// A written list, and the cameras that it means.
struct WrittenList
{
    QByteArray bytes;
    QList<ListLine> lines;
};

/// below: gives a random number from 0 up to below a bound.
class ListPaper
{
public:
    explicit ListPaper(std::function<int(int)> below)
        : below_(std::move(below))
    {
    }

    WrittenList write()
    {
        const int kind = below_(4);
        return kind == 0 ? addresses() : kind == 1 ? addressFirst() : table(kind == 2);
    }

private:
    QString any(const QStringList &texts)
    {
        return texts.at(below_(static_cast<int>(texts.size())));
    }

    QString anyAddress()
    {
        static const QStringList addresses{
            QStringLiteral("http://a/1.jpg"),
            QStringLiteral("http://b/2.png"),
            QStringLiteral("http://c/3.jpg"),
            QStringLiteral("http://me:geheim7@a/1.jpg"),
            QStringLiteral("http://b/1.jpg?pass=geheim7"),
            QString::fromUtf8("http://a/Löffel,1.jpg"),
            QStringLiteral("rtsp://a/\"x\";y,z"),
        };
        return any(addresses);
    }

    QString lineEnd() { return lineEnd_; }

    void choosePaper()
    {
        lineEnd_ = any({QStringLiteral("\n"), QStringLiteral("\r\n"), QStringLiteral("\r")});
        separator_ = any({QStringLiteral(","), QStringLiteral(";"), QStringLiteral("\t")});
    }

    // Lines of no camera.
    QString between()
    {
        return below_(4) != 0 ? QString()
                              : any({QString(), QStringLiteral("# http://no/camera.jpg"),
                                     QStringLiteral("  # \"x\",y;z"), QStringLiteral("   ")}) +
                                    lineEnd();
    }

    QString field(const QString &text)
    {
        const bool isPlain = !text.contains(separator_) && !text.contains(u'"') &&
                             !text.startsWith(u'#') && !text.contains(u'\n') &&
                             text.trimmed() == text && below_(3) != 0;
        return isPlain ? text : u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"';
    }

    WrittenList addresses()
    {
        choosePaper();
        WrittenList list;
        QString text;
        for (int left = below_(5); left > 0; --left) {
            ListLine line{{}, anyAddress(), {}, {}};
            if (line.address.startsWith(u"rtsp")) {
                line.address = QStringLiteral("a.example");
            }
            if (below_(9) == 0) {
                line.address = any(
                    {QStringLiteral("nothing"), QString(300, u'.'), QStringLiteral("two words.")});
                line.isWrong = true;
            }
            text += between() + any({QString(), QStringLiteral("  ")}) +
                    quotedAtTimes(line.address) + lineEnd();
            list.lines.append(line);
        }
        list.bytes = encoded(text);
        return list;
    }

    QString quotedAtTimes(const QString &address)
    {
        return below_(4) == 0 ? u'"' + address + u'"' : address;
    }

    WrittenList addressFirst()
    {
        choosePaper();
        WrittenList list;
        QString text;
        for (int left = 1 + below_(4); left > 0; --left) {
            list.lines.append(
                {any({QStringLiteral("Gate"), QStringLiteral("Yard 2 b")}), anyAddress(), {}, {}});
            text += between() + field(list.lines.last().address) + separator_ +
                    field(list.lines.last().name) + lineEnd();
        }
        list.bytes = encoded(text);
        return list;
    }

    ListLine anyLine()
    {
        ListLine line{any({QString(), QStringLiteral("Gate"), QString::fromUtf8("Löffel \"2\", b;"),
                           QStringLiteral("#1"), QString(60, u'n')}),
                      anyAddress(),
                      {},
                      {}};
        if (below_(3) == 0) {
            line.group = QString::number(below_(4));
            line.row = below_(3) == 0 ? QString() : QString::number(below_(kRows));
        }
        return below_(9) == 0 ? spoilt(line) : line;
    }

    ListLine spoilt(ListLine line)
    {
        line.isWrong = true;
        switch (below_(6)) {
        case 0:
            line.address.clear();
            line.name = QStringLiteral("only a name");
            break;
        case 1:
            line.name = QString(61, u'n');
            break;
        case 2:
            line.group = any({QStringLiteral("10"), QStringLiteral("x"), QStringLiteral("-1"),
                              QStringLiteral("1.0"), QStringLiteral("+1")});
            break;
        case 3:
            line.address = QString(255, u'a');
            break;
        case 4:
            line.address = QStringLiteral("http://a/\nb");
            break;
        default:
            line.name = QStringLiteral("a\nb");
            break;
        }
        return line;
    }

    // With the names of its columns, in any order, or in the usual one without them.
    WrittenList table(bool hasNames)
    {
        choosePaper();
        QList<int> columns{0, 1, 2, 3};
        for (int i = 3; hasNames && i > 0; --i) {
            columns.swapItemsAt(i, below_(i + 1));
        }
        QString text;
        if (hasNames) {
            text = joined({QStringLiteral("name"),
                           any({QStringLiteral("address"), QStringLiteral("URL")}),
                           QStringLiteral("Group"), QStringLiteral("row")},
                          columns);
        }
        WrittenList list;
        for (int left = 1 + below_(6); left > 0; --left) {
            ListLine line = anyLine();
            if (!hasNames && list.lines.isEmpty()) { // by whose address the table is known
                line = {line.isWrong ? QString() : line.name, anyAddress(),
                        line.isWrong ? QString() : line.group, line.isWrong ? QString() : line.row};
            }
            list.lines.append(line);
            text += between() + joined({line.name, line.address, line.group, line.row}, columns);
        }
        list.bytes = encoded(text);
        return list;
    }

    QString joined(const QStringList &fields, const QList<int> &columns)
    {
        QStringList ordered;
        for (const int column : columns) {
            ordered.append(field(fields.at(column)));
        }
        return ordered.join(separator_) + lineEnd();
    }

    QByteArray encoded(const QString &text)
    {
        const int kind = below_(6);
        if (kind == 0) {
            return text.toLatin1();
        }
        if (kind == 1) {
            return "\xEF\xBB\xBF" + text.toUtf8();
        }
        if (kind == 2 || kind == 3) {
            QStringEncoder encoder(kind == 2 ? QStringConverter::Utf16LE
                                             : QStringConverter::Utf16BE,
                                   QStringConverter::Flag::WriteBom);
            return encoder.encode(text);
        }
        return text.toUtf8();
    }

    std::function<int(int)> below_;
    QString lineEnd_;
    QString separator_;
};

} // namespace velmora::test
