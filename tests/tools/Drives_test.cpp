// Which drives the import offers.
#include "tools/Drives.h"

#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

QString mounted(const QByteArray &table)
{
    return mountedDrives(table).join(u'|');
}

TEST(Drives, CIsAlwaysThere)
{
    const TempTree tree;
    EXPECT_EQ(letterDrives(tree.path()), QStringList{QStringLiteral("C:")});
}

TEST(Drives, FoldersAndLinksOfTheProgramFolderAreLetters)
{
    const TempTree tree;
    tree.makeFolder(u"drives/c");
    tree.makeFolder(u"drives/e");
    tree.makeFolder(u"elsewhere");
    tree.makeFolder(u"drives/long");
    tree.write(u"drives/f", "no folder");
    ASSERT_TRUE(QFile::link(tree.path(u"elsewhere"), tree.path(u"drives/a")));
    ASSERT_TRUE(QFile::link(tree.path(u"nowhere"), tree.path(u"drives/b")));
    EXPECT_EQ(letterDrives(tree.path()).join(u'|'), QStringLiteral("C:|A:|E:"));
}

TEST(Drives, WhatUsersMountIsOffered)
{
    EXPECT_EQ(mounted("/dev/vda / ext4 rw 0 0\n"
                      "/dev/sdb1 /media/usb vfat rw 0 0\n"
                      "/dev/sdc1 /run/media/eva/CARD exfat rw 0 0\n"
                      "server:/images /srv/images nfs4 rw 0 0\n"
                      "tmpfs /mnt/memory tmpfs rw 0 0\n"
                      "/dev/sda2 /home ext4 rw 0 0\n"),
              QStringLiteral("\\|\\home|\\media\\usb|\\mnt\\memory|\\run\\media\\eva\\CARD|"
                             "\\srv\\images"));
}

TEST(Drives, WhatTheSystemMountsForItselfIsNot)
{
    EXPECT_EQ(mounted("proc /proc proc rw 0 0\n"
                      "sysfs /sys sysfs rw 0 0\n"
                      "cgroup2 /sys/fs/cgroup cgroup2 rw 0 0\n"
                      "udev /dev devtmpfs rw 0 0\n"
                      "/dev/vdb /dev/disk ext4 rw 0 0\n"
                      "tmpfs /run tmpfs rw 0 0\n"
                      "tmpfs /run/user/1000 tmpfs rw 0 0\n"
                      "tmpfs /tmp tmpfs rw 0 0\n"
                      "/dev/sda1 /boot/efi vfat rw 0 0\n"
                      "/dev/loop1 /snap/core/1 squashfs ro 0 0\n"
                      "/dev/loop2 /opt/tool squashfs ro 0 0\n"
                      "/dev/vda /etc/hosts ext4 rw 0 0\n"
                      "overlay /var/lib/docker/x overlay rw 0 0\n"),
              QString());
}

TEST(Drives, TheRootIsOfferedWhateverItIs)
{
    EXPECT_EQ(mounted("overlay / overlay rw 0 0\n"), QStringLiteral("\\"));
}

TEST(Drives, FoldersThatOnlyBeginLikeSystemFoldersAreOffered)
{
    EXPECT_EQ(mounted("/dev/sdb /runs ext4 rw 0 0\n/dev/sdc /data/dev ext4 rw 0 0\n"),
              QStringLiteral("\\data\\dev|\\runs"));
}

TEST(Drives, BlanksInNamesAreRead)
{
    EXPECT_EQ(mounted("/dev/sdb1 /media/my\\040card vfat rw 0 0\n"),
              QStringLiteral("\\media\\my card"));
    EXPECT_EQ(mounted("/dev/sdb1 /media/d\xC3\xA9p vfat rw 0 0\n"),
              QStringLiteral("\\media\\d\u00E9p"));
}

TEST(Drives, ANameThatPathTextCannotHoldIsNotOffered)
{
    EXPECT_EQ(mounted("/dev/sdb1 /media/back\\134slash vfat rw 0 0\n"), QString());
}

TEST(Drives, APlaceMountedTwiceIsOfferedOnce)
{
    EXPECT_EQ(mounted("/dev/a /media/x ext4 rw 0 0\n/dev/b /media/x ext4 rw 0 0\n"),
              QStringLiteral("\\media\\x"));
}

TEST(Drives, ADamagedTableHoldsNothing)
{
    EXPECT_EQ(mounted("\n\nthree words only\n/dev/sdb1\n"), QString());
}

TEST(Drives, TheMachinesOwnAreThereNow)
{
    const TempTree tree;
    const QStringList drives = drivesNow(tree.path());
    EXPECT_EQ(drives.first(), QStringLiteral("C:"));
    EXPECT_TRUE(drives.contains(QStringLiteral("\\")));
}

} // namespace
} // namespace velmora::test
