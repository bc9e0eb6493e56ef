// SPDX-License-Identifier: MIT
#pragma once

#include "platform/frontmost_application.h"
#include "support/files.h"
#include "support/test_case.h"

#include <QDir>

#include <memory>

namespace wrenfold {

/// A desktop with windows of two programs, and what looks at it.
class DesktopWithWindows
{
public:
    virtual ~DesktopWithWindows() = default;

    virtual FrontmostApplication &frontmost() = 0;
    /// Brings the program's window to the front, with the keyboard; opens one if there is none. The program is one of
    /// FrontmostApplicationContract's.
    virtual void bringToFront(const RunningApplication &program) = 0;
    virtual void close(const RunningApplication &program) = 0;
};

/// What holds for every FrontmostApplication. The subclass says on which desktop.
class FrontmostApplicationContract : public TestCase
{
    Q_OBJECT

public:
    /// Two programs that are installed. Their windows call themselves after the last part of the identifier.
    static RunningApplication writer()
    {
        return {QStringLiteral("org.example.Writer"), QStringLiteral("ライター")};
    }
    static RunningApplication reader()
    {
        return {QStringLiteral("org.example.Reader"), QStringLiteral("Reader")};
    }

protected:
    [[nodiscard]] virtual std::unique_ptr<DesktopWithWindows> makeDesktop() = 0;

private Q_SLOTS:
    void initTestCase()
    {
        const QString folder = dataHome() + QStringLiteral("/applications");
        QVERIFY(QDir().mkpath(folder));
        putFile(folder + QStringLiteral("/org.example.Writer.desktop"),
                "[Desktop Entry]\nType=Application\nName=Writer\nName[ja]=ライター\nExec=writer\n");
        putFile(folder + QStringLiteral("/org.example.Reader.desktop"),
                "[Desktop Entry]\nType=Application\nName=Reader\nExec=reader\n");
        qputenv("LC_ALL", "ja_JP.UTF-8");
    }

    void itIsAvailable() { QCOMPARE(makeDesktop()->frontmost().availability(), Availability()); }

    void nothingIsToldBeforeItIsStarted()
    {
        const auto desktop = makeDesktop();
        desktop->bringToFront(writer());
        QCOMPARE(desktop->frontmost().current(), std::nullopt);
    }

    void whatIsInFrontAtTheStartIsTold()
    {
        const auto desktop = makeDesktop();
        desktop->bringToFront(writer());
        desktop->frontmost().start();
        QTRY_COMPARE(desktop->frontmost().current(), writer());
    }

    void anotherThatComesToTheFrontIsTold()
    {
        const auto desktop = makeDesktop();
        desktop->frontmost().start();
        desktop->bringToFront(writer());
        QTRY_COMPARE(desktop->frontmost().current(), writer());
        desktop->bringToFront(reader());
        QTRY_COMPARE(desktop->frontmost().current(), reader());
        desktop->bringToFront(writer());
        QTRY_COMPARE(desktop->frontmost().current(), writer());
    }

    void whatIsHiddenIsNotInFrontAndComesBack()
    {
        const auto desktop = makeDesktop();
        desktop->frontmost().start();
        desktop->bringToFront(writer());
        QTRY_COMPARE(desktop->frontmost().current(), writer());
        desktop->frontmost().hide(writer());
        QTRY_VERIFY(desktop->frontmost().current() != writer());
        desktop->bringToFront(writer());
        QTRY_COMPARE(desktop->frontmost().current(), writer());
        desktop->frontmost().hide(writer());
        QTRY_VERIFY(desktop->frontmost().current() != writer());
    }

    void hidingWhatIsNotThereChangesNothing()
    {
        const auto desktop = makeDesktop();
        desktop->frontmost().hide(writer());
        desktop->frontmost().start();
        desktop->bringToFront(reader());
        QTRY_COMPARE(desktop->frontmost().current(), reader());
        desktop->frontmost().hide(writer());
        desktop->frontmost().hide({});
        desktop->bringToFront(writer());
        QTRY_COMPARE(desktop->frontmost().current(), writer());
        desktop->close(writer());
        QTRY_COMPARE(desktop->frontmost().current(), reader());
    }

    void whatIsClosedIsNotInFront()
    {
        const auto desktop = makeDesktop();
        desktop->frontmost().start();
        desktop->bringToFront(writer());
        QTRY_COMPARE(desktop->frontmost().current(), writer());
        desktop->close(writer());
        QTRY_COMPARE(desktop->frontmost().current(), std::nullopt);
    }

    void afterStopNothingIsToldUntilItIsStartedAgain()
    {
        const auto desktop = makeDesktop();
        FrontmostApplication &frontmost = desktop->frontmost();
        frontmost.stop(); // Each may be said twice.
        frontmost.start();
        frontmost.start();
        desktop->bringToFront(writer());
        QTRY_COMPARE(frontmost.current(), writer());
        frontmost.stop();
        frontmost.stop();
        QCOMPARE(frontmost.current(), std::nullopt);
        desktop->bringToFront(reader());
        QCOMPARE(frontmost.current(), std::nullopt);
        frontmost.start();
        QTRY_COMPARE(frontmost.current(), reader());
    }
};

} // namespace wrenfold
