// SPDX-License-Identifier: MIT
#include "look/symbols.h"
#include "support/test_case.h"

#include <QDir>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

namespace wrenfold {

namespace {

/// The box around everything painted; empty when nothing is.
QRect paintedBox(const QImage &image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

} // namespace

class SymbolsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyFileIsBlackOnTheGrid_data() { addFiles(); }

    void everyFileIsBlackOnTheGrid()
    {
        QFETCH(const QString, name);
        QFile file(QStringLiteral(":/symbols/%1.svg").arg(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString source = QString::fromUtf8(file.readAll());
        QVERIFY(source.contains(QStringLiteral(" viewBox=\"0 0 16 16\"")));
        QVERIFY2(!source.contains(QStringLiteral("style=")),
                 "colours are attributes, so that this test sees them");
        const QRegularExpression paint(QStringLiteral("(?:fill|stroke|color|stop-color)=\"([^\"]*)\""));
        for (auto matches = paint.globalMatch(source); matches.hasNext();) {
            const QString value = matches.next().captured(1);
            QVERIFY2(value == QStringLiteral("none") || value == QStringLiteral("#000"), qPrintable(value));
        }
    }

    void everyFileDrawsInsideTheGrid_data() { addFiles(); }

    void everyFileDrawsInsideTheGrid()
    {
        QFETCH(const QString, name);
        QSvgRenderer renderer(QStringLiteral(":/symbols/%1.svg").arg(name));
        QVERIFY(renderer.isValid());
        // The grid is the middle half of a picture that would also show what lies outside of it.
        renderer.setViewBox(QRectF(-8, -8, 32, 32));
        QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        const QRect box = paintedBox(image);
        QVERIFY2(QRect(64, 64, 128, 128).contains(box), qPrintable(QDebug::toString(box)));
        QVERIFY2(qMax(box.width(), box.height()) >= 64, "a symbol takes at least half of the grid");
    }

    void aSymbolTakesTheColourAndTheSizeAskedFor()
    {
        const QColor accent(0x4a, 0x5b, 0xd4);
        const QPixmap pixmap = Symbols::pixmap(QStringLiteral("play.fill"), accent, 16, 1.0);
        QCOMPARE(pixmap.size(), QSize(16, 16));
        QCOMPARE(pixmap.toImage().pixelColor(8, 8), accent);
        QCOMPARE(pixmap.toImage().pixelColor(0, 0).alpha(), 0);
    }

    void aSymbolIsSharpOnADenseScreen()
    {
        const QPixmap pixmap = Symbols::pixmap(QStringLiteral("circle"), Qt::red, 16, 2.0);
        QCOMPARE(pixmap.size(), QSize(32, 32));
        QCOMPARE(pixmap.deviceIndependentSize(), QSizeF(16, 16));
        const QPixmap fractional = Symbols::pixmap(QStringLiteral("circle"), Qt::red, 16, 1.25);
        QCOMPARE(fractional.size(), QSize(20, 20));
    }

    void aSymbolIsDrawnOnce()
    {
        const QPixmap first = Symbols::pixmap(QStringLiteral("trash"), Qt::red, 16, 1.0);
        QCOMPARE(Symbols::pixmap(QStringLiteral("trash"), Qt::red, 16, 1.0).cacheKey(), first.cacheKey());
        QVERIFY(Symbols::pixmap(QStringLiteral("trash"), Qt::blue, 16, 1.0).cacheKey() != first.cacheKey());
        QVERIFY(Symbols::pixmap(QStringLiteral("pin"), Qt::red, 16, 1.0).cacheKey() != first.cacheKey());
    }

private:
    static void addFiles()
    {
        QTest::addColumn<QString>("name");
        const QFileInfoList files = QDir(QStringLiteral(":/symbols")).entryInfoList();
        QVERIFY(!files.isEmpty());
        for (const QFileInfo &file : files)
            QTest::newRow(qPrintable(file.completeBaseName())) << file.completeBaseName();
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::SymbolsTest)
#include "symbols_test.moc"
