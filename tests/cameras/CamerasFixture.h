// A program folder with its own drive C and the objects of the cameras layer on it.
#pragma once

#include "base/NativePaths.h"
#include "cameras/CameraTable.h"
#include "cameras/StorageFolder.h"
#include "settings/EventLog.h"
#include "settings/Problems.h"
#include "settings/SettingsFile.h"
#include "support/FakeClock.h"
#include "support/TempTree.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace velmora::test {

/// Drive C is the folder drives/c of the tree.
class CamerasFixture : public testing::Test
{
protected:
    CamerasFixture()
    {
        tree.makeFolder(u"drives/c");
        QObject::connect(&problems, &Problems::warned, &problems,
                         [this](const QString &text) { shown.append(text); });
    }

    void store(const QByteArray &settingsText) const { tree.write(u"Velmora.ini", settingsText); }

    [[nodiscard]] QByteArray stored() const { return tree.read(u"Velmora.ini"); }

    [[nodiscard]] QString setting(QStringView section, QStringView key) const
    {
        return settings.read(section, key);
    }

    /// Makes C:\in and checks it: the storage lamp is green afterwards.
    void useStorage()
    {
        tree.makeFolder(u"drives/c/in");
        storage.edit(QStringLiteral("C:\\in"));
        storage.putInForce();
    }

    TempTree tree;
    FakeClock clock;
    EventLog log{tree.path(), clock};
    Problems problems{log};
    SettingsFile settings{tree.path()};
    CameraTable table{settings, problems};
    NativePaths paths{tree.path()};
    StorageFolder storage{table, paths, log, problems};
    QStringList shown; // what the user was shown
};

} // namespace velmora::test
