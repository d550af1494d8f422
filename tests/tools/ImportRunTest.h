// Runs of the import over real folders that a test creates.
#pragma once

#include "base/FileDates.h"
#include "support/FakeClock.h"
#include "support/RunTask.h"
#include "support/TempTree.h"
#include "tools/ImportName.h"
#include "tools/ImportRun.h"

#include <QFile>
#include <QTimer>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {

class ImportRunTest : public testing::Test
{
protected:
    ImportRunTest()
    {
        tree_.makeFolder(u"from");
        tree_.makeFolder(u"in/camera");
    }

    [[nodiscard]] QByteArray native(QStringView path) const
    {
        return QFile::encodeName(tree_.path(path));
    }

    [[nodiscard]] ImportOrder order(const QString &filter = QStringLiteral("*.jpg")) const
    {
        return {QStringLiteral("C:\\from\\"), QStringLiteral("C:\\in\\\\camera\\"),
                tree_.path(u"from"),          tree_.path(u"in/camera"),
                tree_.path(u"in/tmp"),        filter};
    }

    ImportResult run(const ImportOrder &what) { return run(run_, what); }

    ImportResult run(ImportRun &run, const ImportOrder &what)
    {
        turns_ = 0;
        QTimer everyTurn;
        QObject::connect(&everyTurn, &QTimer::timeout, &everyTurn, [this] {
            if (++turns_ == stopInTurn_) {
                atOnce_.request_stop();
            }
        });
        everyTurn.start(0);
        runToEnd(store(run, what), std::chrono::seconds{60});
        return result_;
    }

    ImportResult run() { return run(order()); }

    QCoro::Task<> store(ImportRun &run, ImportOrder what)
    {
        result_ = co_await run.run(what, afterFile_.get_token(), atOnce_.get_token());
    }

    void put(const QString &name, QByteArrayView bytes = "picture") const
    {
        tree_.write(QString(QStringLiteral("from/") + name), bytes);
    }

    // The name may have any bytes.
    void put(const QByteArray &name) const
    {
        const int fd = ::open((native(u"from") + '/' + name).constData(), O_CREAT | O_WRONLY, 0644);
        ASSERT_GE(fd, 0) << name.constData();
        ::close(fd);
    }

    // A name by the rule for each number below 100,000: "20061001_2345000000.jpg" for 12345.
    static QByteArray numbered(int number)
    {
        const QByteArray digits = QByteArray::number(number).rightJustified(5, '0');
        return "2006100" + digits.first(1) + '_' + digits.last(4) + "000000.jpg";
    }

    // Another name for a file, which costs less than another file.
    void linkTo(QStringView file, QStringView folder, const QByteArray &name) const
    {
        ASSERT_EQ(::link(native(file).constData(), (native(folder) + '/' + name).constData()), 0);
    }

    // With names so long that few fit in a piece.
    void fillTarget() const
    {
        constexpr int kFiles = 20'000;
        tree_.write(u"in/one", "there before");
        for (int i = 0; i < kFiles; ++i) {
            linkTo(u"in/one", u"in/camera", 'z' + QByteArray::number(i).rightJustified(229, 'z'));
        }
    }

    // A sparse file.
    void putLarge(const QString &name) const
    {
        put(name, "");
        const QString path = QStringLiteral("from/") + name;
        ASSERT_EQ(::truncate(native(path).constData(), kLarge), 0);
    }

    void take(const QString &name, QByteArrayView bytes = "there before") const
    {
        tree_.write(QString(QStringLiteral("in/camera/") + name), bytes);
    }

    [[nodiscard]] QStringList copied() const { return tree_.files(u"in/camera"); }

    [[nodiscard]] QByteArray bytesOf(const QString &name) const
    {
        return tree_.read(QString(QStringLiteral("in/camera/") + name));
    }

    // The name that a source file is given.
    [[nodiscard]] QString datedName(const QString &name, qint16 collisions) const
    {
        const QString path = QStringLiteral("from/") + name;
        const auto created = creationTime(native(path));
        return QString::fromUtf8(
            importName(QFile::encodeName(name), created.value_or(WallTime()), collisions));
    }

    inline static const QString kKept = QStringLiteral("20061005_1230450000.jpg");
    static constexpr qsizetype kLarge = 40 << 20; // more than is copied between two turns

    TempTree tree_;
    FakeClock clock_;
    Gate gate_;
    ImportRun run_{clock_, gate_};
    ImportResult result_;
    std::stop_source afterFile_;
    std::stop_source atOnce_;
    int turns_ = 0;      // of the event loop during the run
    int stopInTurn_ = 0; // stop the run at once in this turn; 0 for none
};

} // namespace velmora::test
