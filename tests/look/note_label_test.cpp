// SPDX-License-Identifier: MIT
#include "look/selectable_note.h"
#include "look/symbol_icon.h"
#include "look/theme.h"
#include "support/offscreen_silence.h"
#include "support/painted_text.h"
#include "support/test_case.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QShortcut>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace wrenfold {

class NoteLabelTest : public TestCase
{
    Q_OBJECT

    static QString awkward() { return QStringLiteral("A & B_c <b>x</b>"); }

    static QMenu *openMenu(QWidget &widget)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(2, 2), widget.mapToGlobal(QPoint(2, 2)));
        const OffscreenSilence silence;
        QCoreApplication::sendEvent(&widget, &event);
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }

private Q_SLOTS:
    void cleanup() { QApplication::setPalette(QPalette()); }

    void aTextIsShownExactlyAndWraps()
    {
        NoteLabel note(awkward());
        note.resize(400, 40);
        QCOMPARE(paintedText(note), awkward());
        QVERIFY(note.heightForWidth(60) > note.heightForWidth(400));
    }

    void anEmptyStateTakesNoRoom()
    {
        const OffscreenSilence silence;
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        auto *note = new NoteLabel({});
        layout->addWidget(note);
        note->setState({});
        window.show();
        QVERIFY(!note->isVisible());
        note->setState(awkward() + QStringLiteral("\nend"));
        QVERIFY(note->isVisible());
        QCOMPARE(note->text(), awkward() + QStringLiteral(" end"));
    }

    void theInkFollowsTheThemeAndTheSizeTheApplicationsFont()
    {
        NoteLabel note(awkward());
        note.show();
        for (const QColor &surface : {QColor(Qt::black), QColor(Qt::white)}) {
            QApplication::setPalette(QPalette(surface));
            QTRY_COMPARE(note.palette().color(QPalette::WindowText),
                         Theme::inScheme(surface == QColor(Qt::black)).secondaryInk);
        }
        const QFont usual = QApplication::font();
        QVERIFY(note.fontInfo().pointSizeF() < QFontInfo(usual).pointSizeF());
        QFont larger = usual;
        larger.setPointSizeF(usual.pointSizeF() * 2);
        const int before = note.fontMetrics().height();
        QApplication::setFont(larger);
        QTRY_VERIFY(note.fontMetrics().height() > before * 3 / 2);
        QApplication::setFont(usual);
        QTRY_COMPARE(note.fontMetrics().height(), before);
    }

    void aSelectableTextsMenuSpeaksJapaneseAndCopies()
    {
        SelectableNote label(awkward());
        label.show();
        QMenu *menu = openMenu(label);
        QVERIFY(menu);
        QCOMPARE(menu->actions().value(0)->text(), QStringLiteral("コピー"));
        QCOMPARE(menu->actions().value(1)->text(), QStringLiteral("すべて選択"));
        QCOMPARE(menu->actions().size(), 2);
        menu->actions().at(0)->trigger(); // Without a selection, all of it.
        QCOMPARE(QApplication::clipboard()->text(), awkward());
        QApplication::clipboard()->clear();
        menu->actions().at(1)->trigger();
        menu->close();
        QCOMPARE(label.selectedText(), awkward());
        menu = openMenu(label);
        menu->actions().at(0)->trigger();
        menu->close();
        QCOMPARE(QApplication::clipboard()->text(), awkward());
    }

    void aSelectableTextLeavesUndoAndEscapeToTheWindow()
    {
        struct Window : QWidget
        {
            int escapes = 0;
            void keyPressEvent(QKeyEvent *event) override { escapes += event->key() == Qt::Key_Escape; }
        } window;
        SelectableNote label(awkward(), &window);
        QShortcut undo(QKeySequence(Qt::CTRL | Qt::Key_Z), &window);
        QSignalSpy undone(&undo, &QShortcut::activated);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        label.setFocus();
        QTest::keyClick(&label, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&label, Qt::Key_Escape);
        QCOMPARE(undone.size(), 1);
        QCOMPARE(window.escapes, 1);
    }

    void aSymbolIconFollowsTheThemeAndTheScale()
    {
        const QIcon icon = symbolIcon(QStringLiteral("play.fill"));
        const auto colorOf = [&icon](qreal scale) {
            const QImage image = icon.pixmap(QSize(16, 16), scale).toImage();
            return image.width() == 16 * scale ? image.pixelColor(image.rect().center()) : QColor();
            for (int x = 0; x < image.width(); ++x) {
                if (const QColor color = image.pixelColor(x, image.height() / 2); color.alpha() == 255)
                    return color;
            }
            return QColor();
        };
        for (const qreal scale : {1.0, 2.0}) {
            QApplication::setPalette(QPalette(QColor(Qt::white)));
            QCOMPARE(colorOf(scale), Theme::light().secondaryInk);
            QApplication::setPalette(QPalette(QColor(Qt::black)));
            QCOMPARE(colorOf(scale), Theme::dark().secondaryInk);
        }
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::NoteLabelTest)
#include "note_label_test.moc"
