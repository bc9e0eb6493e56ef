// SPDX-License-Identifier: MIT
#include "look/painting.h"
#include "look/symbols.h"
#include "support/test_case.h"

#include <QPainter>
#include <QSet>

#include <cmath>
#include <functional>

namespace wrenfold {

namespace {

QImage painted(const std::function<void(QPainter &)> &paint)
{
    QImage image(100, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter);
    return image;
}

/// The same on a screen of this scale.
QImage paintedAt(qreal scale, const std::function<void(QPainter &)> &paint)
{
    QImage image((QSizeF(100, 50) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    paint(painter);
    return image;
}

/// How many colours there are that the eye tells apart.
qsizetype colorsOf(const QImage &image)
{
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y) & 0xfff0f0f0);
    }
    return colors.size();
}

/// The pixels of a part, without what else an image knows.
QImage pixelsOf(QImage image, const QRect &part)
{
    image.setDevicePixelRatio(1);
    return image.copy(part);
}

/// The columns or rows, first to last, that hold anything but white between columns `from` and `to`.
QRect inkBox(const QImage &image, int from, int to)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = from; x < to; ++x) {
            if (image.pixelColor(x, y) != Qt::white)
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

QImage paintedText(const QString &text, Qt::Alignment alignment = Qt::AlignLeft)
{
    return painted([&](QPainter &painter) {
        Painting::text(painter, QRectF(0, 0, 100, 40), text, Fonts::body(), Qt::black, alignment);
    });
}

} // namespace

class PaintingTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aCardFillsItsRoundedRectangleAndNoMore()
    {
        const QImage image = painted([](QPainter &painter) {
            Painting::roundedCard(painter, QRectF(10, 5, 80, 30), 10, {Qt::red, {}, {}});
        });
        QCOMPARE(inkBox(image, 0, 100), QRect(10, 5, 80, 30));
        QCOMPARE(image.pixelColor(50, 20), QColor(Qt::red));
        QCOMPARE(image.pixelColor(10, 5), QColor(Qt::white));
    }

    void aCardMayHaveALineAndAnAccentEdge()
    {
        const QImage image = painted([](QPainter &painter) {
            Painting::roundedCard(painter, QRectF(0, 0, 100, 40), 10, {Qt::red, Qt::green, Qt::blue});
        });
        QCOMPARE(image.pixelColor(1, 20), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(Metrics::cardAccentWidth, 20), QColor(Qt::red));
        QCOMPARE(image.pixelColor(50, 0), QColor(Qt::green));
        QCOMPARE(image.pixelColor(99, 20), QColor(Qt::green));
    }

    void everyScaleIsSharp_data()
    {
        QTest::addColumn<qreal>("scale");
        for (const qreal scale : {1.0, 1.25, 1.5, 1.75, 2.0})
            QTest::addRow("%g", scale) << scale;
    }

    void everyScaleIsSharp()
    {
        QFETCH(const qreal, scale);
        // Wherever a widget may lie in its window.
        for (int offset = 0; offset < 8; ++offset) {
            const QImage image = paintedAt(scale, [offset](QPainter &painter) {
                painter.translate(offset, offset);
                Painting::roundedCard(painter, QRectF(1, 1, 60, 30), 4, {Qt::red, Qt::green, {}});
            });
            const int middle = qRound((16 + offset) * scale);
            QVERIFY2(colorsOf(image.copy(0, middle, image.width(), 1)) <= 3, "the edges at the sides");
            QVERIFY2(colorsOf(image.copy(qRound((31 + offset) * scale), 0, 1, image.height())) <= 3,
                     "the edges above and below");
        }
    }

    void aSymbolIsNotResampled_data() { everyScaleIsSharp_data(); }

    void aSymbolIsNotResampled()
    {
        QFETCH(const qreal, scale);
        const QImage symbol = Symbols::pixmap(QStringLiteral("trash"), Qt::black, 16, scale).toImage();
        for (int offset = 0; offset < 8; ++offset) {
            const QImage image = paintedAt(scale, [offset](QPainter &painter) {
                painter.translate(offset, 3);
                Painting::symbol(painter, QRectF(0, 0, 25, 25), QStringLiteral("trash"), Qt::black);
            });
            const QRect box = inkBox(image, 0, image.width());
            QImage expected(symbol.size(), QImage::Format_ARGB32_Premultiplied);
            expected.fill(Qt::white);
            QPainter(&expected).drawImage(QRect(QPoint(), symbol.size()), symbol);
            const QRect expectedBox = inkBox(expected, 0, expected.width());
            QCOMPARE(box.size(), expectedBox.size());
            QCOMPARE(pixelsOf(image, box), pixelsOf(expected, expectedBox));
        }
    }

    void theFocusRingStaysInsideItsRectangle()
    {
        const QImage image =
            painted([](QPainter &painter) { Painting::focusRing(painter, QRectF(10, 5, 80, 30), 7); });
        QCOMPARE(inkBox(image, 0, 100), QRect(10, 5, 80, 30));
        QCOMPARE(image.pixelColor(50, 20), QColor(Qt::white));
    }

    void theRingRunsClockwiseFromTheTop_data()
    {
        QTest::addColumn<qreal>("fraction");
        QTest::addColumn<QString>("quarters");
        QTest::newRow("none") << 0.0 << QStringLiteral("....");
        QTest::newRow("a quarter") << 0.25 << QStringLiteral("#...");
        QTest::newRow("a half") << 0.5 << QStringLiteral("##..");
        QTest::newRow("three quarters") << 0.75 << QStringLiteral("###.");
        QTest::newRow("whole") << 1.0 << QStringLiteral("####");
    }

    void theRingRunsClockwiseFromTheTop()
    {
        QFETCH(qreal, fraction);
        const QImage image = painted([fraction](QPainter &painter) {
            Painting::ring(painter, QRectF(30, 0, 40, 40), fraction, Qt::red);
        });
        QString quarters;
        // The middle of each quarter, clockwise.
        for (const QPoint direction : {QPoint(1, -1), QPoint(1, 1), QPoint(-1, 1), QPoint(-1, -1)}) {
            const QPointF place = QPointF(50, 20) + QPointF(direction) * Metrics::ringRadius * std::sqrt(0.5);
            const QRgb colour = image.pixel(int(place.x()), int(place.y()));
            QVERIFY(colour == QColor(Qt::red).rgb() || colour == Theme::current().ringTrack.rgb());
            quarters += QLatin1Char(colour == QColor(Qt::red).rgb() ? '#' : '.');
        }
        QTEST(quarters, "quarters");
        QCOMPARE(inkBox(image, 0, 100), QRect(30, 0, 40, 40));
        QCOMPARE(image.pixelColor(50, 20), QColor(Qt::white));
    }

    void thePainterIsLeftAsItWas()
    {
        painted([](QPainter &painter) {
            const QPen pen = painter.pen();
            const QFont font = painter.font();
            const QRectF rect(0, 0, 40, 40);
            Painting::roundedCard(painter, rect, 5, {Qt::red, Qt::green, Qt::blue});
            Painting::focusRing(painter, rect, 5);
            Painting::symbol(painter, rect, QStringLiteral("pin"), Qt::red);
            Painting::check(painter, rect, Painting::Check::Now);
            Painting::check(painter, rect, Painting::Check::Done);
            Painting::ring(painter, rect, 0.5, Qt::red);
            Painting::text(painter, rect, QStringLiteral("x"), Fonts::time(), Qt::red);
            QCOMPARE(painter.pen(), pen);
            QCOMPARE(painter.font(), font);
            QCOMPARE(painter.transform(), QTransform());
            QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
        });
    }

    void aTextStandsWhereItIsAligned()
    {
        QVERIFY(inkBox(paintedText(QStringLiteral("HH")), 0, 100).right() < 40);
        QVERIFY(inkBox(paintedText(QStringLiteral("HH"), Qt::AlignRight), 0, 100).left() > 60);
        const QRect centred = inkBox(paintedText(QStringLiteral("HH"), Qt::AlignHCenter), 0, 100);
        QVERIFY(qAbs(centred.left() - (99 - centred.right())) <= 2);
        QVERIFY(qAbs(centred.top() - (39 - centred.bottom())) <= 4);
    }

    void anEmojiDoesNotMoveTheLine()
    {
        // What stands before the emoji lies as high as without it.
        const int end =
            static_cast<int>(QFontMetricsF(Fonts::body()).horizontalAdvance(QStringLiteral("HH")));
        const QRect alone = inkBox(paintedText(QStringLiteral("HH")), 0, end);
        QVERIFY(!alone.isEmpty());
        QCOMPARE(inkBox(paintedText(QStringLiteral("HH👩‍💻🎉🇯🇵❤️")), 0, end), alone);
    }

    void aRightToLeftTextStartsWhereTheOthersDo()
    {
        QVERIFY(inkBox(paintedText(QStringLiteral("שלום")), 0, 100).right() < 60);
        QVERIFY(inkBox(paintedText(QStringLiteral("\u202Eabc")), 0, 100).right() < 60);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::PaintingTest)
#include "painting_test.moc"
