// Replays recorded calls on settings files: each case is a file, a series of reads and writes, and
// their results. Byte strings are hexadecimal there, and null means no file or no value.
#include "base/ProfileFile.h"
#include "support/TempTree.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace velmora {
namespace {

using test::TempTree;

QByteArray bytesOf(const QJsonValue &hex)
{
    return QByteArray::fromHex(hex.toString().toLatin1());
}

QJsonArray readCases()
{
    QFile file(QStringLiteral(VELMORA_TEST_DATA "/data/profile_vectors.json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return QJsonDocument::fromJson(file.readAll()).object()[QStringLiteral("cases")].toArray();
}

/// One settings file and the calls on it.
class Replay
{
public:
    explicit Replay(const QJsonObject &recorded)
        : recorded_(recorded)
    {
        const QJsonValue before = recorded[QStringLiteral("before")];
        if (!before.isNull()) {
            tree_.write(u"a.ini", bytesOf(before));
            const bool readOnly = recorded[QStringLiteral("readonly")].toBool();
            ::chmod(QFile::encodeName(path()).constData(), readOnly ? 0444 : 0644);
        }
    }

    /// Number of calls that were compared.
    int run()
    {
        int compared = 0;
        const QJsonArray calls = recorded_[QStringLiteral("calls")].toArray();
        for (const QJsonValue &value : calls) {
            const QJsonObject call = value.toObject();
            if (!call[QStringLiteral("certain")].toBool()) {
                return compared; // what follows depends on an uncertain file
            }
            compare(call);
            ++compared;
        }
        return compared;
    }

private:
    [[nodiscard]] QString path() const { return tree_.path(u"a.ini"); }

    void compare(const QJsonObject &call)
    {
        const QByteArray section = bytesOf(call[QStringLiteral("section")]);
        const QByteArray key = bytesOf(call[QStringLiteral("key")]);
        if (call[QStringLiteral("fn")].toString() == QStringLiteral("get")) {
            const auto size = static_cast<qsizetype>(call[QStringLiteral("size")].toInt());
            EXPECT_EQ(readProfileValue(path(), section, key,
                                       bytesOf(call[QStringLiteral("default")]), size),
                      bytesOf(call[QStringLiteral("out")]));
        } else {
            compareWrite(section, key, call);
        }
    }

    void compareWrite(const QByteArray &section, const QByteArray &key, const QJsonObject &call)
    {
        const QJsonValue value = call[QStringLiteral("value")];
        const QByteArray bytes = bytesOf(value);
        const ProfileWrite outcome =
            writeProfileValue(path(), section, key,
                              value.isNull() ? std::nullopt : std::optional<QByteArrayView>(bytes));
        EXPECT_EQ(outcome != ProfileWrite::Failed, call[QStringLiteral("ok")].toBool());
        const QJsonValue after = call[QStringLiteral("file_after")];
        ASSERT_EQ(tree_.exists(u"a.ini"), !after.isNull());
        if (!after.isNull()) {
            EXPECT_EQ(tree_.read(u"a.ini"), bytesOf(after));
        }
    }

    QJsonObject recorded_;
    TempTree tree_;
};

TEST(ProfileVectors, GiveWhatWasRecorded)
{
    int compared = 0;
    const QJsonArray cases = readCases();
    for (const QJsonValue &value : cases) {
        const QJsonObject recorded = value.toObject();
        SCOPED_TRACE((recorded[QStringLiteral("id")].toString() + QStringLiteral(": ") +
                      recorded[QStringLiteral("about")].toString())
                         .toStdString());
        compared += Replay(recorded).run();
    }
    EXPECT_EQ(cases.size(), 159);
    EXPECT_GE(compared, 175) << "calls compared";
}

} // namespace
} // namespace velmora
