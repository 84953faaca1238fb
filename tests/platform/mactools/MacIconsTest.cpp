#include "platform/mactools/IconFile.h"
#include "support/IconFiles.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QDir>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <filesystem>

using namespace swabby;
namespace fs = std::filesystem;

namespace {

constexpr auto facts = "Contents/Info.plist";

QString bundle(const char *path)
{
    return QLatin1String(path) + u".app/Contents/"_qs;
}

} // namespace

class MacIconsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void picturesOfAnIconFile_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("found");
        const QByteArray small = pngHead(32);
        const QByteArray fitting = pngHead(64);
        const QByteArray large = pngHead(512);
        const QByteArray whole = iconFile({large, fitting, small});
        QTest::newRow("the smallest that is large enough") << whole << fitting;
        QTest::newRow("the largest of small ones") << iconFile({pngHead(16), small}) << small;
        QTest::newRow("one far too large") << iconFile({small, large}) << large;
        QTest::newRow("other formats between") << iconFile({"ARGBpixels", fitting, "jp2"}) << fitting;
        QTest::newRow("no PNG at all") << iconFile({"ARGBpixels"}) << QByteArray();
        QTest::newRow("a PNG without a width") << iconFile({pngHead(64).left(17)}) << QByteArray();
        QTest::newRow("a PNG of no width") << iconFile({pngHead(0)}) << QByteArray();
        QTest::newRow("cut off in its second picture") << whole.left(large.size() + 30) << large;
        QTest::newRow("cut off in its head") << whole.left(7) << QByteArray();
        QTest::newRow("an entry without a length")
            << iconEntry("icns", QByteArray("ic07\0\0\0\0", 8) + iconEntry("ic08", fitting)) << QByteArray();
        QTest::newRow("an entry longer than all")
            << iconEntry("icns", QByteArray("ic07\xff\xff\xff\xff", 8) + fitting) << QByteArray();
        QTest::newRow("longer than it says") << iconFile({small}) + iconEntry("ic08", fitting) << small;
        QTest::newRow("something else") << QByteArray("\x89PNG\r\n\x1a\n and so on") << QByteArray();
        QTest::newRow("nothing") << QByteArray() << QByteArray();
    }
    void picturesOfAnIconFile()
    {
        QFETCH(const QByteArray, file);
        QTEST(pngOfIconFile(file, 48), "found");
    }

    void iconsOfPrograms_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("application");
        QTest::addColumn<QByteArray>("found");
        const auto row = [](const char *name, const QString &program, const QByteArray &found,
                            const QString &application = {}) {
            QTest::newRow(name) << program << application << found;
        };
        const QString inside = u".app/Contents/MacOS/Program"_qs;
        const QByteArray own = pngHead(64, "own");
        row("a running program", u"/Applications/Plain"_qs + inside, own);
        row("a bundle", u"/Applications/Plain.app"_qs, own);
        row("by its real path", u"DIR/root/Applications/Plain"_qs + inside, own);
        row("in the user's own folder", u"DIR/home/Applications/Mine"_qs + inside, pngHead(64, "mine"));
        row("named with its ending", u"/Applications/Ending.app"_qs, own);
        row("a helper without one", u"/Applications/Plain.app/Contents/Frameworks/Helper"_qs + inside, own);
        row("a helper with its own", u"/Applications/Plain.app/Contents/Frameworks/Other"_qs + inside,
            pngHead(64, "other"));
        row("by name alone", {}, own, u"Plain"_qs);
        row("a name that leads elsewhere", {}, {}, u"../../outside/Plain"_qs);
        row("no bundle", u"/usr/libexec/daemon"_qs, {});
        row("a relative path", u"Applications/Plain.app"_qs, {});
        row("none named", u"/Applications/None.app"_qs, {});
        row("none there", u"/Applications/Gone.app"_qs, {});
        row("a broken one", u"/Applications/Broken.app"_qs, {});
        row("a broken list", u"/Applications/Unlisted.app"_qs, {});
        row("named outside its bundle", u"/Applications/Climbing.app"_qs, {});
        row("linked out of its bundle", u"/Applications/Linked.app"_qs, {});
        row("a circle of links", u"/Applications/Circle.app"_qs, {});
        row("a pipe", u"/Applications/Pipe.app"_qs, {});
        row("a hundred megabytes", u"/Applications/Huge.app"_qs, {});
        row("a path out of the machine", u"/../../outside/Plain.app"_qs, {});
        row("a bundle linked out of the machine", u"/Applications/Outside.app"_qs, {});
    }
    void iconsOfPrograms()
    {
        const TemporaryMachine folder;
        const QByteArray own = iconFile({pngHead(64, "own")});
        const QString resources = u"Resources/icon.icns"_qs;
        const auto add = [&](const char *path, const QByteArray &name, const QByteArray &file) {
            folder.writeFile(bundle(path) + u"Info.plist"_qs, bundleFacts(name));
            if (!file.isEmpty())
                folder.writeFile(bundle(path) + resources, file);
        };
        add("root/Applications/Plain", "icon", own);
        add("root/Applications/Ending", "icon.icns", own);
        add("home/Applications/Mine", "icon", iconFile({pngHead(64, "mine")}));
        add("root/Applications/Plain.app/Contents/Frameworks/Helper", "", {});
        add("root/Applications/Plain.app/Contents/Frameworks/Other", "icon",
            iconFile({pngHead(64, "other")}));
        add("root/Applications/None", "", own);
        add("root/Applications/Gone", "icon", {});
        add("root/Applications/Broken", "icon", own.left(12));
        add("root/Applications/Unlisted", "icon", own);
        folder.writeFile(u"root/Applications/Unlisted.app/"_qs + QLatin1String(facts), "<plist><dict><key>");
        add("root/Applications/Climbing", "../../../Plain.app/Contents/Resources/icon.icns", own);
        for (const char *name : {"Linked", "Circle", "Pipe", "Huge"})
            add((QByteArray("root/Applications/") + name).constData(), "icon", {});
        const fs::path applications = (folder.folder() + u"/root/Applications"_qs).toStdString();
        const auto iconOf = [&](const char *name) {
            const fs::path file = applications / name / "Contents/Resources/icon.icns";
            fs::create_directories(file.parent_path());
            return file;
        };
        fs::create_symlink(applications / "Plain.app/Contents/Resources/icon.icns", iconOf("Linked.app"));
        fs::create_symlink("icon.icns", iconOf("Circle.app"));
        QCOMPARE(::mkfifo(iconOf("Pipe.app").c_str(), 0600), 0);
        folder.writeFile(bundle("root/Applications/Huge") + resources, own);
        fs::resize_file(iconOf("Huge.app"), 100 * 1024 * 1024);

        const QTemporaryDir outside;
        const fs::path elsewhere = outside.path().toStdString();
        fs::copy(applications / "Plain.app", elsewhere / "Plain.app", fs::copy_options::recursive);
        fs::create_symlink(elsewhere / "Plain.app", applications / "Outside.app");

        QFETCH(QString, program);
        QFETCH(const QString, application);
        program.replace(u"DIR"_qs, folder.folder());
        program.replace(u"/../../outside"_qs, u"/../../"_qs + QDir(outside.path()).dirName());
        QTEST(folder.open()->icons->picture({program.toStdString(), application}, {48, {}}), "found");
    }
};

QTEST_GUILESS_MAIN(MacIconsTest)
#include "MacIconsTest.moc"
