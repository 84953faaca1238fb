#include "platform/linux/LinuxWords.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

class LinuxWordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatTheComputerIs()
    {
        // os-release, the desktops, and how it is described.
        compareTable(fixture(u"linux/what_the_computer_is.txt"_qs), [](const Cells &row) {
            return linuxWords(row[0].toStdString(), row[1].toStdString()).described;
        });
    }
};

QTEST_GUILESS_MAIN(LinuxWordsTest)
#include "LinuxWordsTest.moc"
