// Reading one value from a 30 KB settings file, compared with opening, reading and scanning it once
// in plain C; and changing one in files that have grown far beyond that.
#include "settings/SettingsFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace velmora;

// Sections and keys as the program writes them, padded to 30 KB with long addresses; the value to
// read is the last in the file.
QByteArray settingsText()
{
    QByteArray text = "[Control]\r\nStRep=C:\\in\\\r\nTempo=1\r\n";
    for (int group = 0; group < 10; ++group) {
        text += "[Liste" + QByteArray::number(group) + "]\r\nLstAct=1\r\n";
        for (int row = 0; row < 10; ++row) {
            text += "lst" + QByteArray::number(row) + "=http://192.168.0.1/" +
                    QByteArray(110, 'p') + ".jpg\r\n";
        }
        text += "[Groupe" + QByteArray::number(group) + "]\r\n";
        for (int row = 0; row < 10; ++row) {
            const QByteArray digit = QByteArray::number(row);
            text += "TimeLoad" + digit + "=0\r\nLastModified" + digit +
                    "=07/03/2006 14:05:09\r\nSB" + digit + "=65280\r\nBestTime" + digit +
                    "=00:01:00\r\nLocalTime" + digit + "=07/03/2006 15:05:09\r\nlNew" + digit +
                    "=12\r\n";
        }
    }
    return text;
}

class SettingsBench : public benchmark::Fixture
{
public:
    void SetUp(benchmark::State &state) override
    {
        path_ = folder_.filePath(QStringLiteral("Velmora.ini"));
        QFile file(path_);
        static_cast<void>(file.open(QIODevice::WriteOnly));
        file.write(settingsText());
        state.counters["bytes"] = static_cast<double>(file.size());
    }

protected:
    QTemporaryDir folder_;
    QString path_;
};

// What any reader must do: open, read, and check each line for the section and then the key.
std::size_t scanInC(const char *path)
{
    static char buffer[64 * 1024];
    const int file = ::open(path, O_RDONLY | O_CLOEXEC);
    struct stat info = {};
    ::fstat(file, &info);
    const ssize_t size = ::read(file, buffer, sizeof buffer);
    ::close(file);
    const char *at = buffer;
    const char *const end = buffer + size;
    bool inSection = false;
    while (at < end) {
        const auto *const line =
            static_cast<const char *>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        const char *const next = line != nullptr ? line + 1 : end;
        if (*at == '[') {
            inSection = std::strncmp(at, "[Groupe9]", 9) == 0;
        } else if (inSection && std::strncmp(at, "lNew9=", 6) == 0) {
            return static_cast<std::size_t>(next - at);
        }
        at = next;
    }
    return 0;
}

} // namespace

BENCHMARK_DEFINE_F(SettingsBench, ReadINI)(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadINI(u"Groupe9", u"lNew9", path_));
    }
}

BENCHMARK_REGISTER_F(SettingsBench, ReadINI);

BENCHMARK_DEFINE_F(SettingsBench, PlainC)(benchmark::State &state)
{
    const QByteArray path = QFile::encodeName(path_);
    for (auto _ : state) {
        benchmark::DoNotOptimize(scanInC(path.constData()));
    }
}

BENCHMARK_REGISTER_F(SettingsBench, PlainC);

BENCHMARK_DEFINE_F(SettingsBench, WriteSameLength)(benchmark::State &state)
{
    int count = 10;
    for (auto _ : state) {
        WriteINI(u"Groupe9", u"lNew9", QString::number(count = 10 + (count + 1) % 90), path_);
    }
}

BENCHMARK_REGISTER_F(SettingsBench, WriteSameLength);

namespace {

// Text that does not belong in settings: a section of its own, or lines in one of the program's.
QByteArray fillerText(qsizetype bytes)
{
    const QByteArray line = "Remark=" + QByteArray(90, 'r') + "\r\n";
    return line.repeated(bytes / line.size() + 1);
}

class LargeSettingsBench : public SettingsBench
{
public:
    void SetUp(benchmark::State &state) override
    {
        SettingsBench::SetUp(state);
        QFile file(path_);
        static_cast<void>(file.open(QIODevice::Append));
        file.write((state.range(1) != 0 ? "[Notes]\r\n" : QByteArray()) +
                   fillerText(state.range(0) * 1'000'000));
        state.counters["bytes"] = static_cast<double>(file.size());
    }
};

} // namespace

BENCHMARK_DEFINE_F(LargeSettingsBench, WriteSameLength)(benchmark::State &state)
{
    int count = 10;
    for (auto _ : state) {
        WriteINI(u"Groupe9", u"lNew9", QString::number(count = 10 + (count + 1) % 90), path_);
    }
}

BENCHMARK_DEFINE_F(LargeSettingsBench, WriteOtherLength)(benchmark::State &state)
{
    int count = 0;
    for (auto _ : state) {
        WriteINI(u"Groupe9", u"lNew9", ++count % 2 == 0 ? u"9" : u"10", path_);
    }
}

BENCHMARK_DEFINE_F(LargeSettingsBench, WriteNewKey)(benchmark::State &state)
{
    int count = 0;
    for (auto _ : state) {
        WriteINI(u"Groupe9", QStringLiteral("key%1").arg(++count), u"1", path_);
    }
}

// Megabytes; whether they are in a section of their own.
BENCHMARK_REGISTER_F(LargeSettingsBench, WriteSameLength)
    ->ArgsProduct({{1, 4, 15}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(LargeSettingsBench, WriteOtherLength)
    ->ArgsProduct({{1, 4, 15}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(LargeSettingsBench, WriteNewKey)
    ->ArgsProduct({{1, 4, 15}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
