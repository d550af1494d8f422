// Tool tips that show a text from outside literally.
#include "ui/ToolTips.h"

#include <QTextDocument>
#include <QWidget>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(PlainToolTip, IsTheTextItself)
{
    QWidget widget;
    for (const char *const text : {"http://cam/a.jpg?x=1&y=<2", "a < b", "", "C:\\in\\"}) {
        setPlainToolTip(widget, QString::fromLatin1(text));
        EXPECT_EQ(widget.toolTip(), QString::fromLatin1(text));
    }
}

TEST(PlainToolTip, ShowsMarkupAsText)
{
    QWidget widget;
    const QString text = QStringLiteral("http://cam/<img src=\"file:///etc/passwd\"> <b>x</b>");
    setPlainToolTip(widget, text);
    QTextDocument shown;
    shown.setHtml(widget.toolTip());
    EXPECT_EQ(shown.toPlainText(), text);
}

} // namespace
} // namespace velmora::test
