// A whole run of the program without its windows, for tests that make its system calls fail or kill
// it: start, settings, a pass over the cameras, deletion of old images, conformity, import, the
// last pass, end. whole_run FOLDER: a program folder; the former place of the settings is "windows"
// in it. Exits with 1 if it could not start, and with 3 if it does not finish.
#include "capture/CaptureEngine.h"
#include "start/SettingsPreparation.h"
#include "start/SingleInstance.h"
#include "support/CaptureHouseSource.h"
#include "tools/Import.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <cstdlib>
#include <functional>

namespace velmora::test {
namespace {

constexpr qint64 kLimitMs = 30'000;
constexpr qsizetype kBodyBytes = 50'000;
constexpr int kCannotStart = 1;
constexpr int kHangs = 3;

// Each picture contains its address, so that one in the wrong place would show.
ScriptedReply picture(const QString &url, const QString &modified)
{
    return {QByteArray(url.toLatin1() + '\n').repeated(kBodyBytes / (url.size() + 1)),
            modified,
            {},
            {},
            {}};
}

class WholeRun
{
public:
    explicit WholeRun(const QString &folder)
        : source_(clock_)
        , engine_(folder, clock_, source_)
        , import_({engine_.settings(), engine_.storage(), engine_.conformity(), engine_.log(),
                   engine_.problems(), clock_, engine_.scope()})
    {
        QObject::connect(&engine_.problems(), &Problems::warned, &engine_,
                         [](const QString &text) { QTextStream(stderr) << text << Qt::endl; });
    }

    void run()
    {
        total_.start();
        load();
        pass(QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"));
        await(engine_.conformity().run());
        importAll();
        engine_.settings().write(u"Velmora", u"Torture", QStringLiteral("a value of some length"));
        answer(QStringLiteral("Tue, 07 Mar 2006 15:05:09 GMT"));
        await(engine_.scheduler().lastTick());
        await(engine_.close());
    }

private:
    void load()
    {
        engine_.debugSwitch().load();
        engine_.checkSettings();
        engine_.storage().load();
        engine_.options().load();
        engine_.storage().testSA();
        engine_.start();
        engine_.timer().stop(); // this run makes the ticks itself
    }

    void answer(const QString &modified)
    {
        for (const char *const url : {"http://cam/a.jpg", "http://cam/b.jpg"}) {
            source_.answer(QLatin1String(url), picture(QLatin1String(url), modified));
        }
    }

    void pass(const QString &modified)
    {
        answer(modified);
        await(engine_.scheduler().Timer_Timer());
        engine_.timer().stop();
    }

    void importAll()
    {
        import_.load();
        untilAtRest();
        import_.go();
        untilAtRest();
        import_.close();
    }

    // Exceptions are passed to the user like any uncaught one.
    void await(QCoro::Task<> task)
    {
        bool done = false;
        scope_.launch(following(std::move(task), &done));
        waitUntil([this, &done] { return done || scope_.running() == 0; });
    }

    // Until nothing is running but the watch over the storage folder.
    void untilAtRest()
    {
        waitUntil([this] { return engine_.scope().running() <= 1; });
    }

    static QCoro::Task<> following(QCoro::Task<> task, bool *done)
    {
        co_await task;
        *done = true;
    }

    void waitUntil(const std::function<bool()> &holds)
    {
        while (!holds()) {
            if (total_.hasExpired(kLimitMs)) {
                std::_Exit(kHangs);
            }
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        }
    }

    SystemClock clock_;
    ScriptedSource source_;
    CaptureEngine engine_;
    Import import_;
    TaskScope scope_{[](const QString &text) { QTextStream(stderr) << text << Qt::endl; }};
    QElapsedTimer total_;
};

} // namespace
} // namespace velmora::test

int main(int argc, char **argv)
{
    using namespace velmora;
    const QCoreApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    SingleInstance instance(folder);
    if (folder.isEmpty() || instance.claim(Front::None) != Claim::First) {
        return test::kCannotStart;
    }
    prepareSettings(folder, folder + QStringLiteral("/windows"));
    test::WholeRun(folder).run();
    return 0;
}
