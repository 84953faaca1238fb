#include "StandIn.h"
#include "platform/linux/LinuxProgramIcons.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <sys/stat.h>

using namespace swabby;

namespace {

constexpr auto commonIndex = "[Icon Theme]\nName=Common\nDirectories=16/apps,64x64/apps,48/apps,draw/apps,"
                             "48@2/apps,48/actions,../out,nowhere\n"
                             "[16/apps]\nSize=16\nContext=Applications\n"
                             "[64x64/apps]\nSize=64\nContext=Applications\nType=Fixed\n"
                             "[48/apps]\nSize=48\nContext=Applications\nType=Threshold\n"
                             "[48@2/apps]\nSize=48\nScale=2\nContext=Applications\n"
                             "[draw/apps]\nSize=48\nMinSize=8\nMaxSize=512\nType=Scalable\n"
                             "[48/actions]\nSize=48\nContext=Actions\n[../out]\nSize=48\n";
// Both build on each other.
constexpr auto prettyIndex = "[Icon Theme]\nInherits=plain, ../etc ,hicolor\nDirectories=48/apps\n"
                             "[48/apps]\nSize=48\n";
constexpr auto plainIndex =
    "# plain\n[Icon Theme]\nInherits=pretty\nDirectories=48/apps\n[48/apps]\nSize=48\n";

/// A machine whose icons say in their content where they lay.
class IconMachine {
public:
    IconMachine()
    {
        files.write("icons/hicolor/index.theme", commonIndex);
        files.write("icons/pretty/index.theme", prettyIndex);
        files.write("icons/plain/index.theme", plainIndex);
        files.write("etc/index.theme", plainIndex);
    }

    void addIcon(const std::string &file) const { files.write(file, file); }
    void addApplication(const std::string &name, const std::string &icon) const
    {
        files.writeProgram("usr/bin/" + name);
        files.write("entries/" + name + ".desktop", "[Desktop Entry]\nType=Application\nName=The " + name +
                                                        "\nExec=" + name + "\nIcon=" + icon + '\n');
    }
    QByteArray picture(const IconOwner &owner, int pixels = 48, const QString &theme = {}) const
    {
        LinuxProgramIcons icons(
            DesktopApplications({files.path("entries")},
                                {files.path(), files.path("home"), {files.path("usr/bin")}}),
            {{files.path("home/.icons"), files.path("icons")}, {files.path("pixmaps")}});
        return icons.picture(owner, {pixels, theme});
    }
    IconOwner program(const std::string &name) const { return {files.path("usr/bin/" + name), {}}; }

    StandIn files;
};

} // namespace

class LinuxIconsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whereAnIconIsFound()
    {
        // The files that are there, each "THEME/FOLDER/NAME" among the icons, what is named, what is found.
        compareTable(R"(
            the size that is wanted | hicolor/16/apps/mill.png hicolor/64x64/apps/mill.png hicolor/48/apps/mill.png hicolor/draw/apps/mill.svg | mill | hicolor/48/apps/mill.png
            the next larger one | hicolor/16/apps/mill.png hicolor/48@2/apps/mill.png hicolor/64x64/apps/mill.png hicolor/draw/apps/mill.svg | mill | hicolor/64x64/apps/mill.png
            twice the size | hicolor/16/apps/mill.png hicolor/48@2/apps/mill.png | mill | hicolor/48@2/apps/mill.png
            a drawing before a smaller one | hicolor/16/apps/mill.png hicolor/draw/apps/mill.svg | mill | hicolor/draw/apps/mill.svg
            a smaller one at last | hicolor/16/apps/mill.png | mill | hicolor/16/apps/mill.png
            the user's own first | hicolor/48/apps/mill.png ../home/.icons/hicolor/48/apps/mill.png | mill | ../home/.icons/hicolor/48/apps/mill.png
            the theme's | hicolor/48/apps/mill.png pretty/48/apps/mill.png | mill | pretty/48/apps/mill.png
            what the theme builds on | hicolor/48/apps/mill.png plain/48/apps/mill.svg | mill | plain/48/apps/mill.svg
            of no theme | ../pixmaps/mill.png | mill | ../pixmaps/mill.png
            named with an ending | hicolor/48/apps/mill.png | mill.png | hicolor/48/apps/mill.png
            a name with a dot | ../pixmaps/org.mill.App.png | org.mill.App | ../pixmaps/org.mill.App.png
            a file of its own | ../opt/mill/logo.png | ROOT/opt/mill/logo.png | ../opt/mill/logo.png
            a file that is gone | | ROOT/opt/mill/logo.png |
            none of that name | hicolor/48/apps/mill.png | windmill |
            a picture of something else | hicolor/48/actions/mill.png | mill |
            a name that climbs | hicolor/48/apps/mill.png hicolor/48/secret.png | ../secret |
            a folder that climbs | out/mill.png | mill |
            a theme that climbs | ../etc/48/apps/mill.png | mill |
            no name | hicolor/48/apps/mill.png | |)",
                     [](const Cells &row) {
                         const IconMachine machine;
                         for (const QByteArray &file : row[1].split(' '))
                             if (!file.isEmpty())
                                 machine.files.write("icons/" + file.toStdString(), file.toStdString());
                         machine.addApplication(
                             "mill", row[2].replace("ROOT", machine.files.path().c_str()).toStdString());
                         return QString::fromUtf8(machine.picture(machine.program("mill"), 48, u"pretty"_qs));
                     });
    }

    void whoseIconItIs()
    {
        const IconMachine machine;
        machine.addIcon("pixmaps/mill.png");
        machine.addApplication("mill", "mill");
        const QByteArray own = "pixmaps/mill.png";
        QCOMPARE(machine.picture(machine.program("mill")), own);
        QCOMPARE(machine.picture(machine.program("wind")), QByteArray());
        // A program in a language of its own, or in a sandbox, is known by its application's name.
        QCOMPARE(machine.picture({"/usr/bin/python3", u"The mill"_qs}), own);
        QCOMPARE(machine.picture({{}, u"The mill"_qs}), own);
        QCOMPARE(machine.picture({{}, u"The wind"_qs}), QByteArray());
        QCOMPARE(machine.picture({}), QByteArray());
    }

    void whatIsNoPictureFileIsNotRead()
    {
        const IconMachine machine;
        const auto pictureAt = [&](const std::string &name, const std::string &icon) {
            machine.addApplication(name, icon);
            return machine.picture(machine.program(name));
        };
        for (const auto &[name, size] : {std::pair("limit", largestIconFile), {"huge", 100 * 1024 * 1024}}) {
            const std::string file = std::string("pixmaps/") + name + ".png";
            machine.files.write(file, "\x89PNG");
            std::filesystem::resize_file(machine.files.path(file), std::uintmax_t(size));
            QCOMPARE(pictureAt(name, name).size(), size == largestIconFile ? qsizetype(size) : 0);
        }
        QCOMPARE(::mkfifo(machine.files.path("pixmaps/pipe.png").c_str(), 0600), 0);
        machine.files.link("pixmaps/circle.png", machine.files.path("pixmaps/circle.png"));
        QCOMPARE(pictureAt("pipe", machine.files.path("pixmaps/pipe.png")), QByteArray());
        QCOMPARE(pictureAt("device", "/dev/zero"), QByteArray());
        QCOMPARE(pictureAt("circle", "circle"), QByteArray());
        // Links are how themes say that two programs share an icon.
        machine.addIcon("pixmaps/real.png");
        machine.files.link("pixmaps/linked.png", "real.png");
        QCOMPARE(pictureAt("linked", "linked"), QByteArray("pixmaps/real.png"));
    }
};

QTEST_GUILESS_MAIN(LinuxIconsTest)
#include "LinuxIconsTest.moc"
