#include "platform/linux/LinuxWords.h"
#include "StandIn.h"
#include "platform/linux/SoftwareManager.h"
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

    void whoRemovesPackages()
    {
        // The running desktop, then the menu entries that there are: a name, and what its entry says more.
        compareTable(fixture(u"linux/who_removes_packages.txt"_qs), [](const Cells &row) {
            const StandIn files;
            files.plant("bin/manage | *");
            for (const QByteArray &entry : row[2].split(' '))
                files.plant("entries/" + entry.split('+')[0] + ".desktop | " + entry.split('+')[0] +
                            " | manage --all %U | " + entry.mid(entry.indexOf('+') + 1));
            const auto found = findSoftwareManager({files.path("none"), files.path("entries")}, row.string(1),
                                                   {files.path("bin")});
            return !found ? u"nobody"_qs
                          : QString::fromStdString(found->name) +
                                (found->program == files.path("bin/manage") &&
                                         found->arguments == std::vector<std::string>{"--all"}
                                     ? u""_qs
                                     : u"?"_qs);
        });
    }
};

QTEST_GUILESS_MAIN(LinuxWordsTest)
#include "LinuxWordsTest.moc"
