// Shows a fuzz target each file of its corpus once, without the fuzzer: in every test run, so that
// the targets keep compiling and what they once found stays mended.
//   fuzz_NAME_replay FOLDER
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTextStream>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int *argc, char ***argv); // if it has one

int main(int argc, char **argv)
{
    if (LLVMFuzzerInitialize != nullptr) {
        LLVMFuzzerInitialize(&argc, &argv);
    }
    const QDir corpus(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString());
    int shown = 0;
    for (const QString &name : corpus.entryList(QDir::Files)) {
        QFile file(corpus.filePath(name));
        if (file.open(QIODevice::ReadOnly)) {
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                   static_cast<std::size_t>(bytes.size()));
            ++shown;
        }
    }
    QTextStream(stdout) << shown << " files" << Qt::endl;
    return shown > 0 ? 0 : 1;
}
