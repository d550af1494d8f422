// The program with its windows for hours on end, on a clock that runs as fast as the work allows:
// a hundred cameras with a new image each at every pass, while the browser steps, changes its view
// and plays the film, and old images are deleted after their month. One line of figures for every
// ten thousand captures; the last one is the slope of the memory.
//   soak_run HOURS     of real time, also a part of one; offscreen where no display is
#include "app/Program.h"
#include "base/DateText.h"
#include "base/KeptMemory.h"
#include "support/FakeClock.h"
#include "support/TempTree.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <array>
#include <malloc.h>
#include <memory>
#include <unistd.h>
#include <utility>
#include <vector>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kCaptures = kGroups * kRows;
constexpr int kCapturesOfALine = 10'000;
// A month of images stays small by the dates; what only waits need not be run through for all of
// it.
constexpr auto kBetweenPasses = 2h;
constexpr auto kWaited = 61s;
constexpr std::array kKeys = {Qt::Key_Right, Qt::Key_Left,     Qt::Key_Down,
                              Qt::Key_Up,    Qt::Key_PageDown, Qt::Key_End};

QString addressOf(int camera)
{
    return QStringLiteral("http://cam/%1.jpg").arg(camera);
}

/// What the program holds on its heap, whatever the C library keeps beyond that.
double heapKib()
{
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / 1024.0;
}

double residentKib()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    static_cast<void>(file.open(QIODevice::ReadOnly));
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1024.0;
}

qsizetype openHandles()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System).size();
}

QByteArray jpeg(int shade)
{
    QImage image(640, 480, QImage::Format_RGB32);
    image.fill(QColor::fromHsv(shade % 360, 200, 200));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "JPG");
    return bytes.leftJustified(4000, '\0');
}

/// A picture for every camera, new at each date, without a network; keeps no record of the
/// requests.
class FreshSource final : public PictureSource
{
public:
    explicit FreshSource(Clock &clock)
        : clock_(clock)
    {
    }

    void bring(const QByteArray &picture, const QString &modified)
    {
        picture_ = picture;
        modified_ = modified;
    }

    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override
    {
        Q_UNUSED(request);
        co_await clock_.yield();
        HttpReply reply;
        reply.outcome = stop.stop_requested() ? FetchOutcome::Stopped : FetchOutcome::Arrived;
        reply.body = ReplyBody(picture_);
        reply.lastModified = modified_;
        co_return reply;
    }

private:
    Clock &clock_;
    QByteArray picture_;
    QString modified_;
};

/// The longest time between two turns of the event loop.
class GapMeter
{
public:
    GapMeter()
    {
        QObject::connect(&timer_, &QTimer::timeout, &timer_,
                         [this] { longestMs_ = std::max(longestMs_, since_.restart()); });
        since_.start();
        timer_.start(0);
    }

    qint64 takeLongestMs() { return std::exchange(longestMs_, 0); }

private:
    QTimer timer_;
    QElapsedTimer since_;
    qint64 longestMs_ = 0;
};

class Soak
{
public:
    Soak()
        : source_(clock_)
    {
        tree_.makeFolder(u"drives/c/in");
        QByteArray settings = "[Control]\r\nStRep=C:\\in\r\nTempo=60\r\n";
        for (int group = 0; group < kGroups; ++group) {
            settings += QStringLiteral("[Liste%1]\r\nLstAct=1\r\n").arg(group).toLatin1();
            for (int row = 0; row < kRows; ++row) {
                settings += QStringLiteral("lst%1=%2\r\n")
                                .arg(row)
                                .arg(addressOf(group * kRows + row))
                                .toLatin1();
            }
            settings += QStringLiteral("[Groupe%1]\r\n").arg(group).toLatin1();
            for (int row = 0; row < kRows; ++row) {
                settings += QStringLiteral("EffM%1=1\r\n").arg(row).toLatin1();
            }
        }
        tree_.write(u"Velmora.ini", settings);
        engine_ = std::make_unique<CaptureEngine>(tree_.path(), clock_, source_);
        program_ = std::make_unique<Program>(*engine_, opener_, mail_);
        answer();
        program_->start();
        clock_.advance(100ms);
    }

    ~Soak()
    {
        engine_->scheduler().giveUp();
        program_->end();
        clock_.advance(100ms);
    }

    Q_DISABLE_COPY_MOVE(Soak)

    /// One pass over all cameras, with a user at the browser meanwhile.
    void pass(int number)
    {
        clock_.setLocal(clock_.localNow() + kBetweenPasses);
        clock_.advance(kWaited);
        answer();
        engine_->scheduler().setTickCounter(59);
        engine_->launch(engine_->scheduler().Timer_Timer());
        clock_.advance(100ms);
        QWidget *const browser = window(QStringLiteral("planche"));
        if (browser == nullptr) {
            return;
        }
        QTest::keyClick(browser, kKeys.at(static_cast<std::size_t>(number) % kKeys.size()));
        if (number % 4 == 0) {
            click(*browser, number % 8 == 0 ? QStringLiteral("cCamera") : QStringLiteral("bFilm"));
        }
        clock_.advance(100ms);
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }

private:
    static QWidget *window(const QString &name)
    {
        const QWidgetList all = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(
            all, [&](const QWidget *widget) { return widget->objectName() == name; });
        return found == all.end() ? nullptr : *found;
    }

    static void click(const QWidget &window, const QString &name)
    {
        if (auto *const control = window.findChild<QWidget *>(name)) {
            QTest::mouseClick(control, Qt::LeftButton);
        }
    }

    // The server's date moves on with the clock, so that every image is new.
    void answer()
    {
        const WallFields at = wallFields(clock_.localNow());
        static constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                               "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
        const QString modified =
            QStringLiteral("Tue, %1 %2 %3 %4:%5:%6 GMT")
                .arg(twoDigits(at.day),
                     QLatin1String(kMonths.at(static_cast<std::size_t>(at.month) - 1)))
                .arg(at.year)
                .arg(twoDigits(at.hour), twoDigits(at.minute), twoDigits(at.second));
        source_.bring(jpeg(at.hour * 15), modified);
    }

    TempTree tree_;
    FakeClock clock_;
    FreshSource source_;
    XdgOpener opener_;
    SmtpClient mail_;
    std::unique_ptr<CaptureEngine> engine_;
    std::unique_ptr<Program> program_;
};

/// Runs the passes, one per turn of the event loop, so that deferred deletions happen between them;
/// and gathers the figures.
class Run
{
public:
    Run(Soak &soak, std::chrono::duration<double> length)
        : soak_(soak)
        , lengthMs_(length / 1ms)
    {
        run_.start();
    }

    /// Runs one more pass; false once the time is up.
    bool goesOn()
    {
        soak_.pass(++passes_);
        if (passes_ * kCaptures % kCapturesOfALine == 0) {
            printLine();
        }
        return static_cast<double>(run_.elapsed()) < lengthMs_;
    }

    /// The slope of the straight line through the second half: in the first, the pictures cached
    /// for the windows still fill the memory allowed for them.
    void printSlope() const
    {
        const std::size_t first = kib_.size() / 2;
        const auto count = static_cast<double>(kib_.size() - first);
        const double meanAt = (count - 1) / 2;
        double product = 0;
        double square = 0;
        for (std::size_t i = first; i < kib_.size(); ++i) {
            const double at = static_cast<double>(i - first) - meanAt;
            product += at * kib_[i];
            square += at * at;
        }
        QTextStream(stdout) << "slope of the second half " << (square > 0 ? product / square : 0)
                            << " KiB for 10,000 captures" << Qt::endl;
    }

private:
    void printLine()
    {
        kib_.push_back(residentKib());
        QTextStream(stdout) << "captures " << passes_ * kCaptures << ", resident " << kib_.back()
                            << " KiB, heap " << heapKib() << " KiB, handles " << openHandles()
                            << ", longest gap " << gaps_.takeLongestMs() << " ms" << Qt::endl;
    }

    Soak &soak_;
    double lengthMs_;
    QElapsedTimer run_;
    GapMeter gaps_;
    int passes_ = 0;
    std::vector<double> kib_; // of each line
};

} // namespace
} // namespace velmora::test

int main(int argc, char **argv)
{
    using namespace velmora;
    using namespace velmora::test;
    keepFreedMemory();
    const QApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const double hours = QString::fromLocal8Bit(argc > 1 ? argv[1] : "").toDouble();
    if (hours <= 0) {
        QTextStream(stderr) << "soak_run HOURS\n";
        return 2;
    }
    Soak soak;
    Run run(soak, std::chrono::duration<double, std::ratio<3600>>(hours));
    QTimer turns;
    QObject::connect(&turns, &QTimer::timeout, &turns, [&run] {
        if (!run.goesOn()) {
            QCoreApplication::quit();
        }
    });
    turns.start(0);
    QApplication::exec();
    turns.stop();
    run.printSlope();
    return 0;
}
