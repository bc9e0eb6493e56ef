// SPDX-License-Identifier: MIT
#include "support/files.h"
#include "support/test_case.h"
#include "views/open_chooser.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QPointer>

namespace wrenfold {

namespace {

const QString addText = QStringLiteral("追加");
const QString cancelText = QStringLiteral("キャンセル");
const QString browseText = QStringLiteral("ファイルを選ぶ...");

} // namespace

class ApplicationChooserTest : public TestCase
{
    Q_OBJECT

    [[nodiscard]] QString applications() const { return dataHome() + QStringLiteral("/applications"); }
    [[nodiscard]] QString systemApplications() const
    {
        return dataHome() + QStringLiteral("/system/applications");
    }

    void put(const QString &id, const QByteArray &lines) const
    {
        putFile(applications() + u'/' + id + QStringLiteral(".desktop"),
                "[Desktop Entry]\nType=Application\n" + lines + "\n");
    }

    /// Puts one there that is seen to be new: no sooner than the file system's clock has gone on.
    void putNew(const QString &id, const QByteArray &lines) const
    {
        const QDateTime changed = QFileInfo(applications()).lastModified();
        QTRY_VERIFY(QDateTime::currentDateTime() > changed.addMSecs(20));
        put(id, lines);
    }

    void putFour() const
    {
        put(QStringLiteral("net.browser"), "Name=Firefly");
        put(QStringLiteral("org.chat"), "Name=Chat");
        put(QStringLiteral("org.mail"), "Name=Mail");
        put(QStringLiteral("org.notes"), "Name=Notes");
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_DATA_DIRS", QFile::encodeName(dataHome() + QStringLiteral("/none:") + dataHome() +
                                                   QStringLiteral("/system")));
        cleanup();
    }

    void cleanup()
    {
        qputenv("LC_ALL", "C.UTF-8");
        for (const QString &folder : {applications(), systemApplications()}) {
            QDir(folder).removeRecursively();
            QDir().mkpath(folder);
        }
    }

    void threeAtOnceAreGivenInTheListsOrder()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        QCOMPARE(open.names(), QStringLiteral("Chat Firefly Mail Notes"));
        open.clickRow(3);
        open.clickRow(0, Qt::ControlModifier);
        open.clickRow(1, Qt::ControlModifier);
        open.clickButton(addText);
        QCOMPARE(open.chosenFiles(), QStringLiteral("org.chat net.browser org.notes"));
        QCOMPARE(open.chosen.constFirst().constFirst().value<QList<QUrl>>().constFirst(),
                 QUrl::fromLocalFile(applications() + QStringLiteral("/org.chat.desktop")));
        QVERIFY(!open.chooser.isVisible());
    }

    void cancelEscapeAndClosingChooseNothing()
    {
        putFour();
        OpenChooser open;
        for (const int way : {0, 1, 2}) {
            QVERIFY(open.open());
            open.clickRow(1);
            if (way == 0)
                open.clickButton(cancelText);
            else if (way == 1)
                open.press(Qt::Key_Escape);
            else
                open.chooser.close();
            QVERIFY(!open.chooser.isVisible());
        }
        QCOMPARE(open.chosen.size(), 0);
    }

    void typingSearchesAtOnce()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.typeText(QStringLiteral("FIRE"));
        QCOMPARE(open.names(), QStringLiteral("Firefly"));
        open.search->clear();
        open.typeText(QStringLiteral("org.m"));
        QCOMPARE(open.names(), QStringLiteral("Mail"));
        open.search->clear();
        type(open.search, QStringLiteral("ｃｈａ"));
        QCOMPARE(open.names(), QStringLiteral("Chat"));
        open.typeText(QStringLiteral("(.*"));
        QCOMPARE(open.names(), QString());
        QVERIFY(open.says(QStringLiteral("見つかりません")));
        open.search->clear();
        QCOMPARE(open.names(), QStringLiteral("Chat Firefly Mail Notes"));
        QVERIFY(!open.says(QStringLiteral("見つかりません")));
    }

    void whatIsChosenStaysSoWhileASearchHidesIt()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.clickRow(3);
        open.search->setFocus();
        open.typeText(QStringLiteral("a"));
        QCOMPARE(open.names(), QStringLiteral("Chat Mail"));
        QVERIFY(open.says(QStringLiteral("1個を選択中")));
        open.clickRow(1);
        QVERIFY(open.says(QStringLiteral("2個を選択中")));
        open.search->clear();
        QCOMPARE(open.selected(), QStringLiteral("Mail Notes"));
        open.clickRow(3, Qt::ControlModifier);
        QVERIFY(open.says(QStringLiteral("1個を選択中")));
        open.clickButton(addText);
        QCOMPARE(open.chosenFiles(), QStringLiteral("org.mail"));
    }

    void theArrowsMoveInTheListFromTheSearch()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.press(Qt::Key_Down);
        QCOMPARE(open.selected(), QStringLiteral("Chat"));
        open.press(Qt::Key_Down);
        open.press(Qt::Key_Down);
        open.press(Qt::Key_Up);
        QCOMPARE(open.selected(), QStringLiteral("Firefly"));
        open.press(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(open.selected(), QStringLiteral("Firefly Mail"));
        QVERIFY(open.search->hasFocus());
        open.press(Qt::Key_Return);
        QCOMPARE(open.chosenFiles(), QStringLiteral("net.browser org.mail"));
    }

    void returnAddsTheOnlyOneThatASearchHasFound()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.typeText(QStringLiteral("ma"));
        QCOMPARE(open.names(), QStringLiteral("Mail"));
        open.press(Qt::Key_Return);
        QCOMPARE(open.chosenFiles(), QStringLiteral("org.mail"));
    }

    void returnAddsWhatIsChosenAndNotWhatASearchHasFoundBesides()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.press(Qt::Key_Down);
        QCOMPARE(open.selected(), QStringLiteral("Chat"));
        open.typeText(QStringLiteral("ma"));
        open.press(Qt::Key_Return);
        QCOMPARE(open.chosenFiles(), QStringLiteral("org.chat"));
    }

    void afterASearchTheArrowsBeginAtTheTop()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.press(Qt::Key_Down);
        open.press(Qt::Key_Down);
        open.typeText(QStringLiteral("org"));
        QCOMPARE(open.names(), QStringLiteral("Chat Mail Notes"));
        open.press(Qt::Key_Down);
        QCOMPARE(open.selected(), QStringLiteral("Chat"));
    }

    void everythingIsDoneByKey()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.press(Qt::Key_Tab);
        QVERIFY(open.view->hasFocus());
        open.press(Qt::Key_Space);
        open.press(Qt::Key_End, Qt::ControlModifier);
        open.press(Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(open.selected(), QStringLiteral("Chat Notes"));
        open.press(Qt::Key_Return);
        QCOMPARE(open.chosenFiles(), QStringLiteral("org.chat org.notes"));
    }

    void aDoubleClickAdds()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.clickRow(2);
        QCOMPARE(open.chosen.size(), 0);
        QTest::mouseDClick(open.view->viewport(), Qt::LeftButton, {}, open.middleOf(2));
        QCOMPARE(open.chosenFiles(), QStringLiteral("org.mail"));
    }

    void withNothingChosenThereIsNothingToAdd()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        QVERIFY(!open.button(addText)->isEnabled());
        QVERIFY(open.button(addText)->isDefault());
        open.press(Qt::Key_Return);
        QVERIFY(open.chooser.isVisible());
        open.clickRow(0);
        QVERIFY(open.button(addText)->isEnabled());
        open.clickRow(0, Qt::ControlModifier);
        QVERIFY(!open.button(addText)->isEnabled());
        QCOMPARE(open.chosen.size(), 0);
    }

    void untilTheApplicationsAreReadTheListSaysSo()
    {
        putFour();
        OpenChooser open;
        open.chooser.open();
        QVERIFY(open.says(QStringLiteral("読み込み中...")));
        QVERIFY(!open.button(addText)->isEnabled());
        open.search->setText(QStringLiteral("mail"));
        QTRY_COMPARE(open.names(), QStringLiteral("Mail"));
        QVERIFY(!open.says(QStringLiteral("読み込み中...")));
    }

    void applicationsThatComeAndGoAreFollowed()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.clickRow(2);
        open.clickRow(3, Qt::ControlModifier);
        putNew(QStringLiteral("org.books"), "Name=Books");
        QFile::remove(applications() + QStringLiteral("/org.mail.desktop"));
        QTRY_COMPARE((open.installed.refresh(), open.names()), QStringLiteral("Books Chat Firefly Notes"));
        QCOMPARE(open.selected(), QStringLiteral("Notes"));
        open.clickButton(addText);
        QCOMPARE(open.chosenFiles(), QStringLiteral("org.notes"));
    }

    void namesAreInTheUsersLanguage()
    {
        qputenv("LC_ALL", "ja_JP.UTF-8");
        put(QStringLiteral("org.chat"), "Name=Chat\nName[ja]=雑談");
        OpenChooser open;
        QVERIFY(open.open());
        QCOMPARE(open.names(), QStringLiteral("雑談"));
        type(open.search, QStringLiteral("談"));
        QCOMPARE(open.names(), QStringLiteral("雑談"));
    }

    void openedAgainItBeginsAnew()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.clickRow(0);
        open.typeText(QStringLiteral("mail"));
        open.press(Qt::Key_Escape);
        putNew(QStringLiteral("org.books"), "Name=Books");
        open.chooser.open();
        QTRY_COMPARE(open.names(), QStringLiteral("Books Chat Firefly Mail Notes"));
        QCOMPARE(open.selected(), QString());
        QCOMPARE(open.search->text(), QString());
        QVERIFY(!open.button(addText)->isEnabled());
    }

    void itIsReadOutAsWhatItIs()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        QCOMPARE(open.chooser.windowTitle(), QStringLiteral("ブロックするアプリを選択"));
        QCOMPARE(open.chooser.windowModality(), Qt::WindowModal);
        QCOMPARE(open.search->placeholderText(), QStringLiteral("アプリを検索"));
        QCOMPARE(accessibleName(*open.search), QStringLiteral("アプリを検索"));
        QCOMPARE(accessibleName(*open.view), QStringLiteral("アプリ"));
    }

    void filesFromElsewhereAreChosenInTheirOrder()
    {
        putFour();
        for (const char *name : {"a.desktop", "b.desktop", "c.desktop", "d.txt"})
            putFile(systemApplications() + u'/' + QLatin1String(name), "");
        OpenChooser open;
        QVERIFY(open.open());
        open.clickButton(browseText);
        auto *files = open.chooser.findChild<QFileDialog *>();
        QVERIFY(files);
        QCOMPARE(files->windowTitle(), QStringLiteral("ブロックするアプリを選択"));
        QCOMPARE(files->directory().absolutePath(), systemApplications());
        QVERIFY(QTest::qWaitForWindowActive(files));
        type(files->focusWidget(), QStringLiteral("\"c.desktop\" \"d.txt\" \"a.desktop\""));
        QTest::keyClick(files->windowHandle(), Qt::Key_Return);
        QCOMPARE(open.chosenFiles(), QStringLiteral("c a"));
        QVERIFY(!open.chooser.isVisible());
    }

    void withoutAFileFromElsewhereTheChooserIsThereAgain()
    {
        putFour();
        OpenChooser open;
        QVERIFY(open.open());
        open.clickRow(1);
        open.clickButton(browseText);
        QPointer<QFileDialog> files = open.chooser.findChild<QFileDialog *>();
        QVERIFY(QTest::qWaitForWindowActive(files));
        QTest::keyClick(files->windowHandle(), Qt::Key_Escape);
        QTRY_VERIFY(!files);
        QVERIFY(open.chooser.isVisible());
        QCOMPARE(open.selected(), QStringLiteral("Firefly"));
        QCOMPARE(open.chosen.size(), 0);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ApplicationChooserTest)
#include "application_chooser_test.moc"
