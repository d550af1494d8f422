// The list of a folder's images: order, search, and names of all kinds.
#include "browser/ImageNames.h"

#include "browser/NameOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace velmora {
namespace {

ImageNames listOf(const QByteArrayList &names)
{
    ImageNamesBuilder builder;
    for (const QByteArray &name : names) {
        builder.add(name);
    }
    while (builder.sortSome()) {
    }
    return builder.take();
}

QByteArrayList all(const ImageNames &names)
{
    QByteArrayList list;
    for (qsizetype i = 0; i < names.count(); ++i) {
        list.append(names.name(i));
    }
    return list;
}

TEST(ImageNames, SortsByName)
{
    EXPECT_EQ(all(listOf({"20061005_1230450002.jpg", "20061005_1230450001.jpg"})),
              QByteArrayList({"20061005_1230450001.jpg", "20061005_1230450002.jpg"}));
}

} // namespace
} // namespace velmora
