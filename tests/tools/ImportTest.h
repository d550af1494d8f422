// The import without its window over a whole capture, with folders and settings created by a test.
#pragma once

#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"
#include "tools/Import.h"

#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora::test {

/// Drive C: is drives/c in the tree; the folder C:\card exists.
class ImportTest : public testing::Test
{
protected:
    ImportTest()
    {
        house_.tree.makeFolder(u"drives/c/card");
        QObject::connect(&import_, &Import::messageWanted, &import_,
                         [this](const QString &text) { messages_.append(text); });
        store(u"Dir", QStringLiteral("C:\\card"));
    }

    ~ImportTest() override
    {
        house_.scope.requestStop();
        clock_.advance(std::chrono::seconds{1});
        EXPECT_EQ(house_.scope.running(), 0) << "something outlives the import";
    }

    void store(QStringView key, const QString &value) const
    {
        house_.settings.write(u"Control", key, value);
    }

    [[nodiscard]] QString stored(QStringView key) const
    {
        return house_.settings.read(u"Control", key);
    }

    void put(const QString &name, QByteArrayView bytes = "picture") const
    {
        house_.tree.write(QString(QStringLiteral("drives/c/card/") + name), bytes);
    }

    /// Gives a camera an address and a folder.
    void addCamera(CameraAddress camera) const
    {
        house_.addCamera(camera, cameraUrl(camera));
        house_.tree.makeFolder(house_.folder(camera));
    }

    void finish() { house_.finish(); }

    void load()
    {
        import_.load();
        finish();
    }

    void go()
    {
        import_.go();
        finish();
    }

    [[nodiscard]] const ImportFace &face() const { return import_.face(); }

    [[nodiscard]] QStringList listed() const
    {
        QStringList names;
        for (int row = 0; row < files_.count(); ++row) {
            names.append(files_.index(row, 0).data().toString());
        }
        return names;
    }

    [[nodiscard]] QStringList folders() const
    {
        QStringList names;
        for (int row = 0; row < folders_.rowCount(); ++row) {
            names.append(folders_.index(row, 0).data().toString());
        }
        return names;
    }

    inline static const CameraAddress kCamera{0, 0};
    inline static const QString kKept = QStringLiteral("20061005_1230450000.jpg");

    FakeClock clock_;
    ScriptedSource source_{clock_};
    CaptureHouse house_{source_, clock_};
    Import import_{{house_.settings, house_.storage, house_.engine.conformity(), house_.log,
                    house_.problems, clock_, house_.scope}};
    SourceList &files_ = import_.files();
    FolderList &folders_ = import_.folders();
    QStringList messages_;
};

} // namespace velmora::test
