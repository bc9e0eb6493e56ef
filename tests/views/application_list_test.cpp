// SPDX-License-Identifier: MIT
#include "support/files.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"
#include "views/application_list.h"
#include "views/view_probes.h"

#include <QDir>
#include <QListView>
#include <QSignalSpy>

#include <sys/stat.h>

namespace wrenfold {

namespace {

DesktopEntry named(const QString &name, const QString &id = QStringLiteral("id"))
{
    DesktopEntry entry;
    entry.name = name;
    entry.id = id;
    return entry;
}

/// A list in sight, as the chooser shows it.
struct ListInWindow
{
    ApplicationList list;
    QListView view;

    explicit ListInWindow(const QList<DesktopEntry> &entries)
    {
        list.setEntries(entries);
        view.setItemDelegate(new ApplicationDelegate(&view));
        view.setUniformItemSizes(true);
        view.setModel(&list);
        view.resize(300, 400);
        view.show();
    }

    [[nodiscard]] QColor middleOfIcon(int row)
    {
        const QRect rect = view.visualRect(list.index(row));
        const QImage image = view.viewport()->grab(QRect(rect.topLeft(), QSize(32, rect.height()))).toImage();
        return image.pixelColor(16, 16);
    }
};

} // namespace

class ApplicationListTest : public TestCase
{
    Q_OBJECT

    [[nodiscard]] QString place(const QString &name) const { return dataHome() + QLatin1Char('/') + name; }

    [[nodiscard]] DesktopEntry withIcon(const QString &id, const QString &icon) const
    {
        DesktopEntry entry = named(id, id);
        entry.path = place(id + QStringLiteral(".desktop"));
        putFile(entry.path, "[Desktop Entry]\nType=Application\nName=a\nIcon=" + icon.toUtf8() + "\n");
        return entry;
    }

    [[nodiscard]] QString redIcon() const
    {
        QImage image(24, 24, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.save(place(QStringLiteral("red.png")));
        return place(QStringLiteral("red.png"));
    }

private Q_SLOTS:
    void namesStandInOrderWhateverTheirCase()
    {
        ApplicationList list;
        list.setEntries({named(QStringLiteral("cherry")), named(QStringLiteral("Apple")),
                         named(QStringLiteral("banana"))});
        QStringList names;
        for (int row = 0; row < list.rowCount(); ++row)
            names.append(list.index(row).data().toString());
        QCOMPARE(names.join(u' '), QStringLiteral("Apple banana cherry"));
    }

    void whatMenusLeaveOutIsLeftOut()
    {
        DesktopEntry hidden = named(QStringLiteral("hidden"));
        hidden.isDisplayed = false;
        ApplicationList list;
        list.setEntries({hidden, named(QStringLiteral("shown"))});
        QCOMPARE(list.rowCount(), 1);
        QCOMPARE(list.index(0).data().toString(), QStringLiteral("shown"));
    }

    void onlyTwoOfOneNameAreToldApartByTheirIds()
    {
        ListInWindow shown({named(QStringLiteral("Chat"), QStringLiteral("org.b.Chat")),
                            named(QStringLiteral("Mail"), QStringLiteral("org.a.Mail")),
                            named(QStringLiteral("Chat"), QStringLiteral("org.a.Chat"))});
        QCOMPARE(paintedText(*shown.view.viewport()),
                 QStringLiteral("Chat — org.a.ChatChat — org.b.ChatMail"));
        QAccessibleInterface *row = QAccessible::queryAccessibleInterface(&shown.view)->child(1);
        QCOMPARE(row->text(QAccessible::Name), QStringLiteral("Chat"));
        QCOMPARE(row->text(QAccessible::Description), QStringLiteral("org.b.Chat"));
    }

    void aSearchComparesTheNameAndTheIdWhateverTheirCaseAndWidth()
    {
        ApplicationList list;
        list.setEntries({named(QStringLiteral("カフェ Ｃａｆé"), QStringLiteral("org.Example.Cafe"))});
        const QString key = list.index(0).data(ApplicationList::SearchKeyRole).toString();
        for (const QString &text : {QStringLiteral("ｶﾌｪ"), QStringLiteral("CAFÉ"),
                                    QStringLiteral("cafe\u0301"), QStringLiteral("ＥＸＡＭＰＬＥ．")})
            QVERIFY2(key.contains(searchKey(text)), qPrintable(text));
        QVERIFY(!key.contains(searchKey(QStringLiteral("mail"))));
    }

    void namesFromOutsideAreShownAndReadAsTheyAre_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("painted");
        QTest::newRow("markup") << awkward() << awkward();
        QTest::newRow("lines") << QStringLiteral("a\nb\r\nc\td\u2028e") << QStringLiteral("a b c d e");
        QTest::newRow("direction") << QStringLiteral("a\u2069\u2069b") << QStringLiteral("ab");
    }
    void namesFromOutsideAreShownAndReadAsTheyAre()
    {
        QFETCH(QString, name);
        QFETCH(QString, painted);
        ListInWindow shown({named(name)});
        QCOMPARE(paintedText(*shown.view.viewport()), painted);
        QCOMPARE(shownToolTip(*shown.view.viewport()), plainToolTip(name + QStringLiteral("\nid")));
        QAccessibleInterface *row = QAccessible::queryAccessibleInterface(&shown.view)->child(0);
        QCOMPARE(row->text(QAccessible::Name), name);
    }

    void aLongNameIsElidedInItsRow()
    {
        const QString name = QString(10'000, u'x');
        ListInWindow shown({named(name), named(QStringLiteral("y"))});
        QVERIFY(paintedText(*shown.view.viewport()).contains(QStringLiteral("xxx…y")));
        QCOMPARE(shown.view.visualRect(shown.list.index(0)).width(), shown.view.viewport()->width());
        QCOMPARE(shown.view.visualRect(shown.list.index(0)).height(),
                 shown.view.visualRect(shown.list.index(1)).height());
        QCOMPARE(shownToolTip(*shown.view.viewport()), plainToolTip(name + QStringLiteral("\nid")));
    }

    void onlyTheIconsOfRowsInSightAreRead()
    {
        QList<DesktopEntry> entries;
        const QString icon = redIcon();
        for (int i = 0; i < 1000; ++i)
            entries.append(withIcon(QStringLiteral("app%1").arg(i, 3, 10, QLatin1Char('0')), icon));
        ListInWindow shown(entries);
        QSignalSpy read(&shown.list, &QAbstractItemModel::dataChanged);
        QTRY_COMPARE(shown.middleOfIcon(0), QColor(Qt::red));
        QTRY_COMPARE(shown.middleOfIcon(11), QColor(Qt::red));
        QVERIFY2(read.size() <= 14, qPrintable(QString::number(read.size())));

        shown.view.scrollToBottom();
        QTRY_COMPARE(shown.middleOfIcon(999), QColor(Qt::red));
        QVERIFY2(read.size() <= 28, qPrintable(QString::number(read.size())));
    }

    void anApplicationWithoutAnIconHasASymbol()
    {
        const QString pipe = place(QStringLiteral("pipe.png"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        putFile(place(QStringLiteral("broken.svg")), "<svg");
        ListInWindow shown({withIcon(QStringLiteral("a"), pipe),
                            withIcon(QStringLiteral("b"), place(QStringLiteral("broken.svg"))),
                            withIcon(QStringLiteral("c"), QStringLiteral("in-no-theme")),
                            withIcon(QStringLiteral("d"), redIcon())});
        const auto isRead = [&](int row) { return shown.list.index(row).data(Qt::DecorationRole).isValid(); };
        for (int row = 0; row < 4; ++row)
            QTRY_VERIFY(isRead(row));
        QStyleOptionViewItem option;
        option.widget = &shown.view;
        struct Delegate : ApplicationDelegate
        {
            using ApplicationDelegate::initStyleOption;
        } delegate;
        for (int row = 0; row < 4; ++row) {
            delegate.initStyleOption(&option, shown.list.index(row));
            QVERIFY(!option.icon.isNull());
            QCOMPARE(option.decorationSize, QSize(24, 24));
        }
        QCOMPARE(shown.middleOfIcon(3), QColor(Qt::red));
    }

    void newEntriesTakeThePlaceOfTheOld()
    {
        ListInWindow shown({withIcon(QStringLiteral("a"), redIcon())});
        QTRY_COMPARE(shown.middleOfIcon(0), QColor(Qt::red));
        shown.list.setEntries({withIcon(QStringLiteral("b"), QStringLiteral("in-no-theme"))});
        QTRY_VERIFY(shown.list.index(0).data(Qt::DecorationRole).isValid());
        QVERIFY(shown.list.index(0).data(Qt::DecorationRole).value<QIcon>().isNull());
        shown.list.setEntries({});
        QCOMPARE(shown.list.rowCount(), 0);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ApplicationListTest)
#include "application_list_test.moc"
