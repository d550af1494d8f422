// Which texts the settings file gives back as they were stored.
#include "settings/StoredText.h"

#include "settings/SettingsFile.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(StoredText, IsWhatTheFileGivesBack)
{
    const test::TempTree tree;
    const SettingsFile settings(tree.path());
    for (const QString &text :
         {QString(), QStringLiteral("€ é [x]=;#"), QString(254, u'a'), QString(255, u'a'),
          QStringLiteral("日本"), QStringLiteral("a\nb"), QStringLiteral("a\rb")}) {
        settings.write(u"A", u"b", text);
        EXPECT_EQ(isStorable(text), settings.read(u"A", u"b") == text) << text.toStdString();
    }
}

} // namespace
} // namespace velmora
