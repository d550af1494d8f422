#include "ProgramHouse.h"

namespace velmora::test {

using namespace std::chrono_literals;

ProgramHouse::ProgramHouse()
{
    tree_.makeFolder(u"drives/c/in");
    writeSettings("StRep=C:\\in\\\r\nDebug=1\r\n");
    source_.answer(
        QStringLiteral("http://cam/a.png"),
        {QByteArray(2000, 'x'), QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"), {}, {}, {}});
}

ProgramHouse::~ProgramHouse()
{
    if (program_ && !ended_) {
        engine_->scheduler().giveUp();
        program_->end();
        settle();
    }
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMessageBox *>(widget) != nullptr) {
            delete widget;
        }
    }
}

void ProgramHouse::writeSettings(const QByteArray &control)
{
    tree_.write(u"Velmora.ini",
                "[Control]\r\n" + control + "[Liste0]\r\nLstAct=1\r\nlst0=http://cam/a.png\r\n");
}

void ProgramHouse::start()
{
    engine_ = std::make_unique<CaptureEngine>(tree_.path(), clock_, source_);
    program_ = std::make_unique<Program>(*engine_, opener_, mail_);
    program_->start();
    settle();
}

void ProgramHouse::end()
{
    program_->end();
    settle();
    ended_ = true;
}

bool ProgramHouse::isVisible(const QString &window)
{
    return topLevel(window) != nullptr && topLevel(window)->isVisible();
}

QString ProgramHouse::text(const QString &window, const QString &label)
{
    return topLevel(window)->findChild<QLabel *>(label)->text();
}

QWidget *ProgramHouse::control(const QString &window, const QString &name)
{
    return topLevel(window)->findChild<QWidget *>(name);
}

void ProgramHouse::click(const QString &window, const QString &name)
{
    QTest::mouseClick(control(window, name), Qt::LeftButton);
    settle();
}

QStringList ProgramHouse::logLines()
{
    QStringList lines;
    const QList<QByteArray> raw = tree_.read(u"Velmora.log").split('\n');
    for (const QByteArray &line : raw) {
        lines.append(QString::fromUtf8(line.mid(9)).trimmed());
    }
    return lines;
}

} // namespace velmora::test
