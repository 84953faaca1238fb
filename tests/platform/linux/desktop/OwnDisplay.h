#pragma once

#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

namespace swabby {

/// Runs a test on an X11 display of its own, which has to be there before the application.
template <typename Test>
int runOnOwnDisplay(int argc, char *argv[])
{
    constexpr int skipped = 77;
    QProcess server;
    server.start(u"Xvfb"_qs, {u"-displayfd"_qs, u"1"_qs, u"-screen"_qs, u"0"_qs, u"640x480x24"_qs,
                              u"-nolisten"_qs, u"tcp"_qs});
    if (!server.waitForReadyRead())
        return skipped;
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    int status = 0;
    {
        QGuiApplication application(argc, argv);
        Test test;
        status = QTest::qExec(&test, argc, argv);
    }
    server.kill();
    server.waitForFinished();
    return status;
}

} // namespace swabby
