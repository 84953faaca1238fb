#include "cleanup/PutBackRecord.h"
#include "health/HistoryStore.h"
#include "platform/linux/LinuxLoginService.h"
#include "platform/linux/LinuxStartupControl.h"
#include "platform/machinefolder/FolderServices.h"
#include "platform/posix/FileSettingsStore.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace swabby;

namespace {

/// No file of this process grows while it lives, as on a disk that is full.
class FullDisk {
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit none = m_before;
        none.rlim_cur = 0;
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before = {};
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

using namespace Qt::StringLiterals;

/// Writes the file FOLDER/name, and says whether that worked.
using Writer = bool (*)(const QString &folder);

constexpr double now = 1'700'000'000;

const std::pair<QString, Writer> writers[] = {
    {u"plain.txt"_s,
     [](const QString &folder) { return saveWholeFile(folder + u"/plain.txt"_s, "new").isEmpty(); }},
    {u"settings.json"_s,
     [](const QString &folder) {
         return FileSettingsStore(folder + u"/settings.json"_s).change(u"neverRemove"_s, [](auto &) {
             return 1;
         });
     }},
    {u"history.json"_s,
     [](const QString &folder) {
         return HistoryStore::save(folder, {{now, 1, 1}}, now).isEmpty();
     }},
    {u"put-back.json"_s,
     [](const QString &folder) {
         return PutBackRecord(folder).add({"/a", "/b", FileIdentity()});
     }},
    {u"com.swabby.app.desktop"_s,
     [](const QString &folder) {
         // Another program than the entry starts by now, or nothing would have to be written.
         const bool isWritten = contentOf(folder + u"/com.swabby.app.desktop"_s).contains("/bin/x");
         return LinuxLoginService(folder.toStdString(), {}, isWritten ? "/bin/y" : "/bin/x")
             .registerAtLogin()
             .isEmpty();
     }},
    {u"keychain.json"_s,
     [](const QString &folder) {
         return FolderSecretStore(folder + u"/keychain.json"_s).write(u"key"_s, u"account"_s);
     }},
};

} // namespace

class FullDiskTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsLost()
    {
        for (const auto &[name, write] : writers) {
            const QTemporaryDir folder;
            const QString path = folder.filePath(name);
            QVERIFY2(write(folder.path()), qPrintable(name));
            const QByteArray before = contentOf(path);
            QVERIFY(!before.isEmpty());
            {
                const FullDisk full;
                QVERIFY2(!write(folder.path()), qPrintable(name));
            }
            QCOMPARE(contentOf(path), before);
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList(name));
            QVERIFY(write(folder.path()));
        }
    }

    void aPipeIsNotReplaced()
    {
        const QTemporaryDir folder;
        const QString pipe = folder.filePath(u"history.json"_s);
        QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
        QVERIFY(HistoryStore::load(folder.path(), now).isEmpty());
        QVERIFY(!HistoryStore::save(folder.path(), {{now, 1, 1}}, now).isEmpty());
        QVERIFY(!QFileInfo(pipe).isFile() && QFileInfo::exists(pipe));
    }

    void aStartupItemStaysOnOrComesBack()
    {
        const QTemporaryDir home;
        const QString own = home.filePath(u"autostart"_s);
        const QString system = home.filePath(u"system"_s);
        QVERIFY(QDir().mkpath(own) && QDir().mkpath(system));
        const QString entry = own + u"/chat.desktop"_s;
        QVERIFY(saveWholeFile(entry, "[Desktop Entry]\nName=Chat\n").isEmpty());
        QVERIFY(saveWholeFile(system + u"/chat.desktop"_s, "[Desktop Entry]\n").isEmpty());
        LinuxStartupControl control({.autostart = own.toStdString(),
                                     .systemAutostart = {system.toStdString()},
                                     .units = home.filePath(u"units"_s).toStdString(),
                                     .userBus = {}},
                                    {});
        {
            const FullDisk full;
            QVERIFY(!control.setAside(entry));
        }
        QCOMPARE(contentOf(entry), QByteArray("[Desktop Entry]\nName=Chat\n"));

        // What earlier versions left on a full disk.
        QVERIFY(control.setAside(entry));
        QVERIFY(saveWholeFile(entry, {}).isEmpty());
        QVERIFY(control.putBack(entry));
        QCOMPARE(contentOf(entry), QByteArray("[Desktop Entry]\nName=Chat\n"));
    }
};

QTEST_GUILESS_MAIN(FullDiskTest)
#include "FullDiskTest.moc"
