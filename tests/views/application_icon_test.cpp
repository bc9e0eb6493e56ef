// SPDX-License-Identifier: MIT
#include "support/files.h"
#include "support/test_case.h"
#include "views/application_icon.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>

#include <sys/stat.h>

namespace wrenfold {

namespace {

QByteArray encoded(const QSize &size, const char *format = "png")
{
    QImage image(size, QImage::Format_Mono);
    image.setColorTable({qRgb(255, 0, 0), qRgb(255, 0, 0)});
    image.fill(0);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

QByteArray drawing(const QByteArray &content)
{
    return "<?xml version=\"1.0\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16 8\">" +
           content + "</svg>";
}

const QByteArray redBox = "<rect width=\"16\" height=\"8\" fill=\"#f00\"/>";

QColor middleOf(const QIcon &icon)
{
    const QImage image = icon.pixmap(24, 24).toImage();
    return image.isNull() ? QColor() : image.pixelColor(image.rect().center());
}

} // namespace

class ApplicationIconTest : public TestCase
{
    Q_OBJECT

    [[nodiscard]] QString place(const QString &name) const { return dataHome() + QLatin1Char('/') + name; }

    /// The icon of an application that names it so.
    [[nodiscard]] QIcon iconNamed(const QString &icon) const
    {
        const QString path = place(QStringLiteral("chat.desktop"));
        putFile(path, "[Desktop Entry]\nType=Application\nName=Chat\nIcon=" + icon.toUtf8() + "\n");
        return applicationIcon(path);
    }

    [[nodiscard]] QIcon iconHolding(const QByteArray &bytes) const
    {
        putFile(place(QStringLiteral("icon")), bytes);
        return iconNamed(place(QStringLiteral("icon")));
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QString theme = place(QStringLiteral("icons/hicolor"));
        QDir().mkpath(theme + QStringLiteral("/48x48/apps"));
        putFile(theme + QStringLiteral("/index.theme"),
                "[Icon Theme]\nName=Hicolor\nDirectories=48x48/apps\n[48x48/apps]\nSize=48\n");
        putFile(theme + QStringLiteral("/48x48/apps/chat.png"), encoded({48, 48}));
        QDir().mkpath(place(QStringLiteral("pixmaps")));
        putFile(place(QStringLiteral("pixmaps/old.xpm")), encoded({32, 32}, "xpm"));
        putFile(place(QStringLiteral("icons/outside.png")), encoded({48, 48}));
        QIcon::setThemeSearchPaths({place(QStringLiteral("icons"))});
        QIcon::setFallbackSearchPaths({place(QStringLiteral("pixmaps"))});
        QIcon::setThemeName(QStringLiteral("a theme that is not installed"));
    }

    void aNameIsLookedUpInTheThemes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("in the theme that every other falls back on") << QStringLiteral("chat");
        QTest::newRow("as a file, against the rules") << QStringLiteral("chat.png");
        QTest::newRow("in the folder from before there were themes") << QStringLiteral("old");
        QTest::newRow("there, as a file") << QStringLiteral("old.xpm");
    }
    void aNameIsLookedUpInTheThemes()
    {
        QFETCH(QString, name);
        QCOMPARE(middleOf(iconNamed(name)), QColor(Qt::red));
    }

    void aNameThatIsInNoThemeIsNoIcon_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("nothing") << QString();
        QTest::newRow("unknown") << QStringLiteral("nowhere");
        QTest::newRow("only an ending") << QStringLiteral(".png");
        QTest::newRow("out of the theme") << QStringLiteral("../../../outside");
        QTest::newRow("a relative path") << QStringLiteral("pixmaps/old.xpm");
        QTest::newRow("long") << QString(100'000, u'x');
    }
    void aNameThatIsInNoThemeIsNoIcon()
    {
        QFETCH(QString, name);
        QVERIFY(iconNamed(name).isNull());
    }

    void aFileIsRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("PNG") << encoded({48, 48});
        QTest::newRow("large PNG") << encoded({1024, 1024});
        QTest::newRow("narrow PNG") << encoded({256, 1024});
        QTest::newRow("XPM") << encoded({32, 32}, "xpm");
        QTest::newRow("SVG") << drawing(redBox);
        QTest::newRow("SVG with references") << drawing("<g id=\"a\">" + redBox + "</g><use href=\"#a\"/>");
    }
    void aFileIsRead()
    {
        QFETCH(QByteArray, bytes);
        const QIcon icon = iconHolding(bytes);
        QCOMPARE(middleOf(icon), QColor(Qt::red));
        const QSize size = icon.availableSizes().constFirst();
        QVERIFY(size.width() <= 64 && size.height() <= 64);
    }

    void aDrawingKeepsItsProportions()
    {
        const QImage image = iconHolding(drawing(redBox)).pixmap(64, 64).toImage();
        QCOMPARE(image.pixelColor(32, 8).alpha(), 0);
        QCOMPARE(image.pixelColor(1, 32), QColor(Qt::red));
    }

    void aLinkToAFileIsFollowed()
    {
        putFile(place(QStringLiteral("target.png")), encoded({48, 48}));
        QVERIFY(QFile::link(place(QStringLiteral("target.png")), place(QStringLiteral("link.png"))));
        QCOMPARE(middleOf(iconNamed(place(QStringLiteral("link.png")))), QColor(Qt::red));
    }

    void whatIsNoRegularFileIsNoIcon()
    {
        const QString pipe = place(QStringLiteral("pipe.png"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        for (const QString &path : {pipe, place(QStringLiteral("icons")), QStringLiteral("/dev/zero"),
                                    place(QStringLiteral("gone.png"))})
            QVERIFY2(iconNamed(path).isNull(), qPrintable(path));
    }

    void whatTakesTooMuchRoomIsNoIcon_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("large file") << drawing(redBox + "<!--" + QByteArray(1 << 20, ' ') + "-->");
        QTest::newRow("wide PNG") << encoded({1025, 8});
        QTest::newRow("PNG bomb") << encoded({8000, 8000});
        QTest::newRow("XPM bomb") << QByteArray(
            "/* XPM */\nstatic char *x[] = {\n\"60000 60000 1 1\",\n\"a c #ff0000\",\n\"a\"};\n");
        QTest::newRow("packed SVG") << QByteArray("\x1f\x8b\x08\x00\x00\x00\x00\x00", 8);
        QTest::newRow("multiplied SVG")
            << drawing("<g id=\"a\">" + redBox + "</g>" + QByteArray("<use href=\"#a\"/>").repeated(17));
        QByteArray entities = "<!DOCTYPE svg [<!ENTITY a0 \"x\">";
        for (int i = 1; i < 9; ++i) {
            const QByteArray before = "&a" + QByteArray::number(i - 1) + ';';
            entities += "<!ENTITY a" + QByteArray::number(i) + " \"" + before.repeated(10) + "\">";
        }
        QTest::newRow("SVG with entities") << entities + "]>" + drawing("<text>&a8;</text>");
    }
    void whatTakesTooMuchRoomIsNoIcon()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(iconHolding(bytes).isNull());
    }

    void aDrawingThatShowsAnotherFileIsNoIcon()
    {
        const QString pipe = place(QStringLiteral("shown.png"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(
            iconHolding(drawing(redBox + "<image width=\"9\" height=\"9\" href=\"" + pipe.toUtf8() + "\"/>"))
                .isNull());
        QVERIFY(iconHolding("<s:svg xmlns:s=\"http://www.w3.org/2000/svg\"><s:image href=\"" + pipe.toUtf8() +
                            "\"/></s:svg>")
                    .isNull());
    }

    void whatIsBrokenIsNoIcon_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("noise") << QByteArray(1000, '\xa5');
        QTest::newRow("half an SVG") << drawing(redBox).first(80);
        QTest::newRow("another XML") << QByteArray("<html/>");
        QTest::newRow("deep SVG") << drawing(QByteArray("<g>").repeated(50'000) +
                                             QByteArray("</g>").repeated(50'000));
        QTest::newRow("another format") << encoded({48, 48}, "bmp");
    }
    void whatIsBrokenIsNoIcon()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(iconHolding(bytes).isNull());
    }

    void halfAPngIsNoIcon()
    {
        QImage noise(64, 64, QImage::Format_RGB32);
        for (int i = 0; i < 64 * 64; ++i)
            noise.setPixel(i % 64, i / 64, uint(i) * 2654435761U);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        noise.save(&buffer, "png");
        QVERIFY(iconHolding(bytes.first(bytes.size() / 2)).isNull());
        QVERIFY(iconHolding(bytes.first(20)).isNull());
    }

    void whatIsNoApplicationsEntryHasNoIcon()
    {
        putFile(place(QStringLiteral("chat.png")), encoded({48, 48}));
        putFile(place(QStringLiteral("link.desktop")), "[Desktop Entry]\nType=Link\nName=a\nIcon=chat\n");
        putFile(place(QStringLiteral("entry.txt")), "[Desktop Entry]\nType=Application\nName=a\nIcon=chat\n");
        const QString pipe = place(QStringLiteral("pipe.desktop"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        for (const QString &path : {place(QStringLiteral("chat.png")), place(QStringLiteral("link.desktop")),
                                    place(QStringLiteral("entry.txt")), pipe,
                                    place(QStringLiteral("gone.desktop")), dataHome(), QString()})
            QVERIFY2(applicationIcon(path).isNull(), qPrintable(path));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ApplicationIconTest)
#include "application_icon_test.moc"
