// Names sorted a part at a time.
#include "base/NameList.h"

#include <QByteArray>
#include <QList>

#include <gtest/gtest.h>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kMany = 5000; // several rounds of merging

QByteArray nameOf(int number)
{
    return QByteArray::number(number * 7919 % kMany) + (number % 3 == 0 ? ".JPG" : ".jpg");
}

QList<QByteArray> sorted(int count)
{
    NameList names;
    for (int number = 0; number < count; ++number) {
        names.add(nameOf(number));
    }
    while (names.sortSome()) {
    }
    QList<QByteArray> list;
    for (const ListedName &name : names.list()) {
        list.append(name.view().toByteArray());
    }
    return list;
}

TEST(NameList, ListsNamesInTheirOrder)
{
    QList<QByteArray> expected;
    for (int number = 0; number < kMany; ++number) {
        expected.append(nameOf(number));
    }
    std::ranges::sort(
        expected, [](const QByteArray &a, const QByteArray &b) { return compareNames(a, b) < 0; });
    EXPECT_EQ(sorted(kMany), expected);
}

TEST(NameList, IsSortedAtOnceWithoutNames)
{
    EXPECT_TRUE(sorted(0).isEmpty());
}

TEST(NameList, KeepsANameAfterItsBytesAreGone)
{
    NameList names;
    {
        QByteArray name("notes.txt");
        names.add(name);
        name.fill('x');
    }
    EXPECT_EQ(names.list().front().view(), QByteArrayView("notes.txt"));
}

} // namespace
} // namespace velmora
