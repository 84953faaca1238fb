#include "platform/mactools/IconFile.h"
#include "platform/mactools/MacApplicationSource.h"
#include "platform/mactools/MacProgramIcons.h"
#include "support/IconFiles.h"
#include "support/Table.h"
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
    void picturesOfAnIconFile()
    {
        const QByteArray small = pngHead(32);
        const QByteArray fitting = pngHead(64);
        const QByteArray large = pngHead(512);
        const QByteArray whole = iconFile({large, fitting, small});
        struct File {
            const char *name;
            QByteArray file, found;
        };
        for (const File &file :
             {File{"the smallest that is large enough", whole, fitting},
              File{"the largest of small ones", iconFile({pngHead(16), small}), small},
              File{"one far too large", iconFile({small, large}), large},
              File{"other formats between", iconFile({"ARGBpixels", fitting, "jp2"}), fitting},
              File{"no PNG at all", iconFile({"ARGBpixels"}), {}},
              File{"a PNG without a width", iconFile({pngHead(64).left(17)}), {}},
              File{"a PNG of no width", iconFile({pngHead(0)}), {}},
              File{"cut off in its second picture", whole.left(large.size() + 30), large},
              File{"cut off in its head", whole.left(7), {}},
              File{"an entry without a length",
                   iconEntry("icns", QByteArray("ic07\0\0\0\0", 8) + iconEntry("ic08", fitting)),
                   {}},
              File{"an entry longer than all",
                   iconEntry("icns", QByteArray("ic07\xff\xff\xff\xff", 8) + fitting),
                   {}},
              File{"longer than it says", iconFile({small}) + iconEntry("ic08", fitting), small},
              File{"something else", "\x89PNG\r\n\x1a\n and so on", {}}, File{"nothing", {}, {}}})
            QVERIFY2(pngOfIconFile(file.file, 48) == file.found, file.name);
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

        // The program, the application's name, and the icon's mark.
        const auto machine = folder.open();
        compareTable(fixture(u"mactools/icons_of_programs.txt"_qs), [&](const Cells &row) {
            const QByteArray program = row[1]
                                           .replace("DIR", folder.folder().toUtf8())
                                           .replace("OUTSIDE", outside.path().section(u'/', -1).toUtf8());
            return QString::fromUtf8(
                machine->icons->picture({program.toStdString(), row.text(2)}, {48, {}}).mid(24));
        });

        // This machine's folders are not those of wherever the program was started.
        const QString startedIn = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.folder() + u"/root"_qs));
        MacProgramIcons icons({}, elsewhere);
        MacApplicationSource source({}, elsewhere, {});
        const bool isFound = !icons.picture({{}, u"Plain"_qs}, {48, {}}).isEmpty();
        const auto found = source.applications();
        QDir::setCurrent(startedIn);
        QVERIFY(!isFound && found.empty());
    }
};

QTEST_GUILESS_MAIN(MacIconsTest)
#include "MacIconsTest.moc"
