// A storage folder of which everything that it says is kept.
#pragma once

#include "cameras/CamerasFixture.h"

#include <QDir>

namespace velmora::test {

class StorageFolderTest : public CamerasFixture
{
protected:
    StorageFolderTest()
    {
        QObject::connect(&storage, &StorageFolder::checked, &storage,
                         [this](const StorageState &state) { checks.append(state); });
        QObject::connect(&storage, &StorageFolder::textChanged, &storage,
                         [this](const QString &text) { texts.append(text); });
        QObject::connect(&storage, &StorageFolder::told, &storage,
                         [this](const QString &text) { told.append(text); });
        QObject::connect(&storage, &StorageFolder::editBegan, &storage, [this] { ++editsBegun; });
    }

    void makeStorage() const { tree.makeFolder(u"drives/c/in"); }

    void removeStorage() const { ASSERT_TRUE(QDir().rmdir(tree.path(u"drives/c/in"))); }

    QList<StorageState> checks;
    QStringList texts;
    QStringList told;
    int editsBegun = 0;
};

} // namespace velmora::test
