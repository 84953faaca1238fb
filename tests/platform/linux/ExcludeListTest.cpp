#include "cleanup/ExcludeList.h"
#include "support/Table.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <filesystem>
#include <sched.h>
#include <sys/mount.h>

using namespace swabby;

class ExcludeListTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void otherWaysToAPlace()
    {
        const QTemporaryDir folder;
        const std::filesystem::path top = std::filesystem::canonical(folder.path().toStdString());
        for (const char *made : {"keep/inner", "other", "big/view", "part", "ÉTÉ", "été"})
            std::filesystem::create_directories(top / made);
        QVERIFY(QFile(folder.filePath(u"keep/single"_qs)).open(QIODevice::WriteOnly));
        std::filesystem::create_hard_link(top / "keep/single", top / "twin");
        std::filesystem::create_symlink("keep", top / "link");
        if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            QSKIP("nothing may be mounted here");
        QCOMPARE(::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
        const auto show = [&](const char *what, const char *where) {
            return ::mount((top / what).c_str(), (top / where).c_str(), nullptr, MS_BIND, nullptr);
        };
        QCOMPARE(show("keep", "big/view"), 0);
        QCOMPARE(show("keep/inner", "part"), 0);
        compareTable(fixture(u"cleanup/other_ways.txt"_qs), [&](const Cells &row) {
            const ExcludeList excludes({top / row.string(0)});
            return excludes.covers(top / row.string(1)) ? u"stays"_qs : u"goes"_qs;
        });
        for (const char *shown : {"big/view", "part"})
            QCOMPARE(::umount2((top / shown).c_str(), MNT_DETACH), 0);
    }
};

QTEST_GUILESS_MAIN(ExcludeListTest)
#include "ExcludeListTest.moc"
