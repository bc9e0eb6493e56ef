// SPDX-License-Identifier: MIT
#include "support/files.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "views/application_chooser.h"
#include "views/blocked_app_row.h"
#include "views/settings_in_window.h"

#include <QElapsedTimer>

namespace wrenfold {

namespace {

BlockedApp app(const QString &id, const QString &name)
{
    return {id, name, id, std::nullopt};
}

/// A document that blocks these applications.
QByteArray blocking(const QList<BlockedApp> &apps)
{
    SavedState state;
    state.blockedApps = apps;
    return encodeSavedState(state);
}

QByteArray blockingNames(const QStringList &names)
{
    QList<BlockedApp> apps;
    for (const QString &name : names)
        apps.append(app(name, name));
    return blocking(apps);
}

} // namespace

class FocusGuardSettingsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theRowsStandInStoredOrderAndRemoveTheirApplication()
    {
        SettingsInWindow settings(
            blockingNames({QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        QCOMPARE(names(settings), QStringLiteral("c a b"));
        IconButton *remove = rows(settings).at(1)->removeButton();
        QCOMPARE(remove->symbol(), QStringLiteral("minus.circle"));
        QCOMPARE(remove->help(), QStringLiteral("削除"));
        QCOMPARE(remove->accessibleDescription(), QStringLiteral("a"));
        QTest::mouseClick(remove, Qt::LeftButton);
        QCOMPARE(names(settings), QStringLiteral("c b"));
        QCOMPARE(settings.fakes.saved().blockedApps.size(), 2);
        QCOMPARE(settings.fakes.saved().blockedApps.at(1).id, QStringLiteral("b"));
    }

    void aNameIsShownExactlyAndInOneLine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("painted");
        QTest::newRow("markup and mnemonics") << awkward() << awkward();
        QTest::newRow("line breaks") << QStringLiteral("a\nb\u2028c") << QStringLiteral("a b c");
        QTest::newRow("bidi controls") << QStringLiteral("a\u2069b") << QStringLiteral("ab");
    }

    void aNameIsShownExactlyAndInOneLine()
    {
        QFETCH(QString, name);
        QFETCH(QString, painted);
        SettingsInWindow settings(blocking({app(QStringLiteral("id"), name)}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        QCOMPARE(paintedText(*rows(settings).at(0)), painted);
    }

    void withoutAnIconTheSymbolIsReadOutAsTheName()
    {
        SettingsInWindow settings(blocking({app(QStringLiteral("id"), awkward())}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        auto *icon = settings.control<QLabel>(awkward());
        QTRY_VERIFY(icon || (icon = settings.control<QLabel>(awkward())));
        QCOMPARE(roleOf(*icon), QAccessible::Graphic);
        QCOMPARE(icon->size(), QSize(24, 24));
        const QImage drawn = icon->grab().toImage();
        QVERIFY(drawn.pixelColor(12, 2) != drawn.pixelColor(12, 12));
    }

    void theIconIsThatOfTheFile()
    {
        QTemporaryDir folder;
        QImage red(24, 24, QImage::Format_ARGB32);
        red.fill(Qt::red);
        const QString picture = folder.filePath(QStringLiteral("icon.png"));
        QVERIFY(red.save(picture));
        const QString entry = folder.filePath(QStringLiteral("red.desktop"));
        putFile(entry, QStringLiteral("[Desktop Entry]\nType=Application\nName=Red\nExec=red\nIcon=%1\n")
                           .arg(picture)
                           .toUtf8());
        SettingsInWindow settings(blocking({}));
        settings.store.addBlockedApp(QUrl::fromLocalFile(entry));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        QCOMPARE(names(settings), QStringLiteral("Red"));
        QLabel *icon = rows(settings).at(0)->findChild<QLabel *>();
        QTRY_COMPARE(icon->grab().toImage().pixelColor(12, 12), QColor(Qt::red));
        QVERIFY(!settings.control<QLabel>(QStringLiteral("Red")));
    }

    void choosingThreeApplicationsAtOnceAddsThreeRows()
    {
        SettingsInWindow settings(blockingNames({QStringLiteral("LINE")}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        settings.click(settings.button(QStringLiteral("アプリを追加")));
        auto *chooser = settings.view->findChild<ApplicationChooser *>();
        QVERIFY(chooser);
        QCOMPARE(chooser->windowTitle(), QStringLiteral("ブロックするアプリを選択"));
        QVERIFY(chooser->isVisible());
        Q_EMIT chooser->chosen({QUrl::fromLocalFile(QStringLiteral("/x/Three.app")),
                                QUrl::fromLocalFile(QStringLiteral("/x/One.app")),
                                QUrl::fromLocalFile(QStringLiteral("/x/Two.app"))});
        QCOMPARE(names(settings), QStringLiteral("LINE Three One Two"));
        QCOMPARE(settings.fakes.saved().blockedApps.size(), 4);
        chooser->reject();
        QTRY_VERIFY(!settings.view->findChild<ApplicationChooser *>());
    }

    void cancellingTheChooserDoesNothing()
    {
        SettingsInWindow settings(blockingNames({QStringLiteral("LINE")}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        settings.view->chooseBlockedApp();
        QTest::keyClick(settings.view->findChild<ApplicationChooser *>(), Qt::Key_Escape);
        QTRY_VERIFY(!settings.view->findChild<ApplicationChooser *>());
        QCOMPARE(names(settings), QStringLiteral("LINE"));
        QVERIFY(settings.window.isVisible());
    }

    void afterARemovalByKeyboardTheNextRowHasTheFocusAndThenTheAddButton()
    {
        SettingsInWindow settings(
            blockingNames({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        const auto focusedApp = [] { return QApplication::focusWidget()->accessibleDescription(); };
        rows(settings).at(1)->removeButton()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(names(settings), QStringLiteral("a c"));
        QCOMPARE(focusedApp(), QStringLiteral("c"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(names(settings), QStringLiteral("a"));
        QCOMPARE(SettingsInWindow::focused(), QStringLiteral("アプリを追加"));
        settings.store.removeBlockedApp(settings.store.blockedApps.value().at(0));
        QCOMPARE(names(settings), QString());
        QCOMPARE(SettingsInWindow::focused(), QStringLiteral("アプリを追加"));
    }

    void theTabKeyGoesThroughAddedRowsInOrder()
    {
        SettingsInWindow settings(blockingNames({QStringLiteral("a")}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        settings.store.addBlockedApp(QUrl::fromLocalFile(QStringLiteral("/x/b.app")));
        settings.store.addBlockedApp(QUrl::fromLocalFile(QStringLiteral("/x/c.app")));
        QCOMPARE(names(settings), QStringLiteral("a b c"));
        settings.box(QStringLiteral("Focus Guardを有効化"))->setFocus();
        QStringList visited;
        for (int step = 0; step < 4; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            visited.append(QApplication::focusWidget()->accessibleDescription());
        }
        QCOMPARE(visited,
                 QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QString()}));
        QCOMPARE(SettingsInWindow::focused(), QStringLiteral("アプリを追加"));
    }

    void aRowThatStaysKeepsItsWidget()
    {
        SettingsInWindow settings(blockingNames({QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        const BlockedAppRow *b = rows(settings).at(1);
        settings.store.removeBlockedApp(settings.store.blockedApps.value().at(0));
        QCOMPARE(rows(settings), QList<BlockedAppRow *>({const_cast<BlockedAppRow *>(b)}));
    }

    void anApplicationThatADocumentHoldsTwiceHasTwoRows()
    {
        SettingsInWindow settings(
            blockingNames({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a")}));
        QVERIFY(settings.show(SettingsInWindow::Guard));
        QCOMPARE(names(settings), QStringLiteral("a b a"));
        QTest::mouseClick(rows(settings).at(2)->removeButton(), Qt::LeftButton);
        QCOMPARE(names(settings), QStringLiteral("b"));
    }

    void aThousandRowsDoNotTakeSeconds()
    {
        QStringList names;
        for (int index = 0; index < 1000; ++index)
            names.append(QStringLiteral("app%1").arg(index));
        const QByteArray document = blockingNames(names);
        QElapsedTimer timer;
        timer.start();
        SettingsInWindow settings(document);
        QVERIFY(settings.show(SettingsInWindow::Guard));
        QCOMPARE(rows(settings).size(), 1000);
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        timer.restart();
        settings.store.removeBlockedApp(settings.store.blockedApps.value().at(500));
        QCOMPARE(rows(settings).size(), 999);
        QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    }

private:
    /// The rows in sight from top to bottom, once the page has taken up what has changed.
    static QList<BlockedAppRow *> rows(const SettingsInWindow &settings)
    {
        QCoreApplication::processEvents();
        QList<BlockedAppRow *> rows = shown<BlockedAppRow>(*settings.page());
        std::sort(rows.begin(), rows.end(),
                  [](const QWidget *a, const QWidget *b) { return a->y() < b->y(); });
        return rows;
    }
    static QString names(const SettingsInWindow &settings)
    {
        QStringList names;
        for (const BlockedAppRow *row : rows(settings))
            names.append(row->app().name);
        return names.join(QLatin1Char(' '));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusGuardSettingsTest)
#include "focus_guard_settings_test.moc"
