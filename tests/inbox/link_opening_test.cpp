// SPDX-License-Identifier: MIT
#include "inbox/link_opening.h"
#include "support/test_case.h"

namespace wrenfold {

class LinkOpeningTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void pagesAndMailOpenAtOnceFilesNeverAndTheRestAsks_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<int>("opening");
        const auto row = [](const char *link, LinkOpening opening) {
            QTest::newRow(link) << QString::fromLatin1(link) << int(opening);
        };
        row("http://example.org", LinkOpening::AtOnce);
        row("HTTPS://example.org/?q=file:///etc/passwd", LinkOpening::AtOnce);
        row("mailto:a@example.org", LinkOpening::AtOnce);
        row("line://msg/1", LinkOpening::AskFirst);
        row("obsidian://open?vault=a", LinkOpening::AskFirst);
        row("javascript:alert(1)", LinkOpening::AskFirst);
        row("view-source:file:///etc/passwd", LinkOpening::AskFirst);
        row("httpsx://example.org", LinkOpening::AskFirst);
        row("file:///etc/passwd", LinkOpening::Never);
        row("FILE:/usr/share/applications/xterm.desktop", LinkOpening::Never);
        row("/usr/bin/xterm", LinkOpening::Never);
        row("notes.txt", LinkOpening::Never);
        row("//example.org/share/a", LinkOpening::Never);
    }
    void pagesAndMailOpenAtOnceFilesNeverAndTheRestAsks()
    {
        QFETCH(QString, link);
        QFETCH(int, opening);
        QCOMPARE(int(linkOpening(QUrl(link))), opening);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::LinkOpeningTest)
#include "link_opening_test.moc"
