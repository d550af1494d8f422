// Links opened through the desktop, and the messages when one cannot be.
#include "RecordingOpener.h"
#include "support/RunTask.h"
#include "support/TempTree.h"
#include "ui/BoutonLien.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

struct Row
{
    int result;
    const char16_t *text;
};

TEST(LinkMessage, IsThatOfTheResult)
{
    const std::array rows = {
        Row{2, u"Fichier non trouvé"},
        Row{3, u"Chemin non trouvé"},
        Row{5, u"Accès refusé"},
        Row{8, u"Pas assez de mémoire"},
        Row{11, u"Fichier EXE invalide"},
        Row{26, u"Une violation de partage est apparue"},
        Row{27, u"Association incomplète ou invalide"},
        Row{28, u"DDE Délai dépassé"},
        Row{29, u"DDE transaction abortée"},
        Row{30, u"DDE occupé"},
        Row{31, u"Pas d'association enregistrée pour ce type de fichier"},
        Row{32, u"DLL non trouvée"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(mOuvreLien::message(row.result), QString::fromUtf16(row.text)) << row.result;
    }
}

TEST(LinkMessage, IsUnknownForAnyOtherFailure)
{
    for (const int result :
         {0, 1, 4, 6, 7, 9, 10, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, -1}) {
        EXPECT_EQ(mOuvreLien::message(result), QStringLiteral("Erreur inconnue")) << result;
    }
}

TEST(LinkMessage, IsNoneForASuccess)
{
    EXPECT_FALSE(mOuvreLien::message(33).has_value());
    EXPECT_FALSE(mOuvreLien::message(42).has_value());
}

class OuvreLienTest : public testing::Test
{
protected:
    OuvreLienTest() { tree_.write(u"drives/c/doc.txt", "text"); }

    ~OuvreLienTest() override
    {
        for (QMessageBox *const box : boxes()) {
            delete box;
        }
    }

    static QList<QMessageBox *> boxes()
    {
        QList<QMessageBox *> found;
        for (QWidget *const widget : QApplication::topLevelWidgets()) {
            auto *const box = qobject_cast<QMessageBox *>(widget);
            if (box != nullptr && box->isVisible()) {
                found.append(box);
            }
        }
        return found;
    }

    /// Opens a link and returns the text of the message, if any.
    QString textAfter(const QString &link)
    {
        links_.OuvreLien(link);
        runToEnd(scope_.join());
        return boxes().isEmpty() ? QString() : boxes().constFirst()->text();
    }

    TempTree tree_;
    NativePaths paths_{tree_.path()};
    RecordingOpener opener_;
    TaskScope scope_{[](const QString &text) { FAIL() << text.toStdString(); }};
    mOuvreLien links_{opener_, paths_, scope_};
};

TEST_F(OuvreLienTest, HandsAFileToTheDesktopByItsNativePath)
{
    EXPECT_EQ(textAfter(QStringLiteral("C:\\doc.txt")), QString());
    EXPECT_EQ(opener_.opened, QStringList({tree_.path(u"drives/c/doc.txt")}));
}

TEST_F(OuvreLienTest, HandsAnAddressToTheDesktopAsItStands)
{
    EXPECT_EQ(textAfter(QStringLiteral("http://127.0.0.1/")), QString());
    EXPECT_EQ(opener_.opened, QStringList({QStringLiteral("http://127.0.0.1/")}));
}

TEST_F(OuvreLienTest, SaysThatAFileOrFolderIsMissingWithoutAskingTheDesktop)
{
    EXPECT_EQ(textAfter(QStringLiteral("C:\\none.txt")), QStringLiteral("Fichier non trouvé"));
    EXPECT_EQ(textAfter(QStringLiteral("C:\\none\\")), QStringLiteral("Chemin non trouvé"));
    EXPECT_EQ(textAfter(QString()), QStringLiteral("Fichier non trouvé"));
    EXPECT_EQ(opener_.opened, QStringList());
}

TEST_F(OuvreLienTest, SaysWhatTheDesktopAnswers)
{
    opener_.followed = FollowOutcome::NotFound;
    EXPECT_EQ(textAfter(QStringLiteral("C:\\doc.txt")), QStringLiteral("Fichier non trouvé"));
    opener_.followed = FollowOutcome::NoHandler;
    EXPECT_EQ(textAfter(QStringLiteral("C:\\doc.txt")),
              QStringLiteral("Pas d'association enregistrée pour ce type de fichier"));
    opener_.followed = FollowOutcome::Failed;
    EXPECT_EQ(textAfter(QStringLiteral("C:\\doc.txt")), QStringLiteral("Erreur inconnue"));
    EXPECT_EQ(boxes().size(), 1);
}

TEST_F(OuvreLienTest, SaysNothingOnceNoOneWaits)
{
    opener_.followed = FollowOutcome::Stopped;
    EXPECT_EQ(textAfter(QStringLiteral("C:\\doc.txt")), QString());
}

TEST_F(OuvreLienTest, WarnsInABoxOfItsOwnTitle)
{
    textAfter(QStringLiteral("C:\\none.txt"));
    ASSERT_EQ(boxes().size(), 1);
    const QMessageBox &box = *boxes().constFirst();
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Erreur"));
    EXPECT_EQ(box.icon(), QMessageBox::Warning);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
    EXPECT_FALSE(box.isModal());
}

class BoutonLienTest : public OuvreLienTest
{
protected:
    BoutonLienTest()
    {
        button_.follow(links_);
        button_.show();
    }

    QPushButton &caption() { return *button_.findChild<QPushButton *>(QStringLiteral("BL")); }

    BoutonLien button_;
};

TEST_F(BoutonLienTest, HasItsCaption)
{
    EXPECT_EQ(caption().text(), QStringLiteral("Site"));
}

TEST_F(BoutonLienTest, OpensTheLinkThatIsSetWhenItIsClicked)
{
    links_.setLink(QStringLiteral("http://127.0.0.1/first"));
    links_.setLink(QStringLiteral("http://127.0.0.1/second"));
    QTest::mouseClick(&caption(), Qt::LeftButton);
    EXPECT_EQ(opener_.opened, QStringList({QStringLiteral("http://127.0.0.1/second")}));
}

TEST_F(BoutonLienTest, IsReachedByTheKeyboard)
{
    links_.setLink(QStringLiteral("http://127.0.0.1/"));
    button_.setFocus();
    QTest::keyClick(&caption(), Qt::Key_Space);
    EXPECT_EQ(opener_.opened.size(), 1);
}

TEST_F(BoutonLienTest, WarnsWithoutALink)
{
    QTest::mouseClick(&caption(), Qt::LeftButton);
    runToEnd(scope_.join());
    ASSERT_EQ(boxes().size(), 1);
    EXPECT_EQ(boxes().constFirst()->text(), QStringLiteral("Fichier non trouvé"));
}

} // namespace
} // namespace velmora::test
