#include "StandIn.h"
#include "platform/linux/LinuxProgramIcons.h"

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
    void whereAnIconIsFound_data()
    {
        QTest::addColumn<QStringList>("there");
        QTest::addColumn<QString>("named");
        QTest::addColumn<QString>("found");
        const auto row = [](const char *name, const QStringList &there, const QString &named,
                            const QString &found) { QTest::newRow(name) << there << named << found; };
        const QString exact = u"icons/hicolor/48/apps/mill.png"_qs;
        const QString small = u"icons/hicolor/16/apps/mill.png"_qs;
        const QString large = u"icons/hicolor/64x64/apps/mill.png"_qs;
        const QString larger = u"icons/hicolor/48@2/apps/mill.png"_qs;
        const QString drawn = u"icons/hicolor/draw/apps/mill.svg"_qs;
        const QString own = u"home/.icons/hicolor/48/apps/mill.png"_qs;
        row("the size that is wanted", {small, large, exact, drawn}, u"mill"_qs, exact);
        row("the next larger one", {small, larger, large, drawn}, u"mill"_qs, large);
        row("twice the size", {small, larger}, u"mill"_qs, larger);
        row("a drawing before a smaller one", {small, drawn}, u"mill"_qs, drawn);
        row("a smaller one at last", {small}, u"mill"_qs, small);
        row("the user's own first", {exact, own}, u"mill"_qs, own);
        row("the theme's", {exact, u"icons/pretty/48/apps/mill.png"_qs}, u"mill"_qs,
            u"icons/pretty/48/apps/mill.png"_qs);
        row("what the theme builds on", {exact, u"icons/plain/48/apps/mill.svg"_qs}, u"mill"_qs,
            u"icons/plain/48/apps/mill.svg"_qs);
        row("of no theme", {u"pixmaps/mill.png"_qs}, u"mill"_qs, u"pixmaps/mill.png"_qs);
        row("named with an ending", {exact}, u"mill.png"_qs, exact);
        row("a name with a dot", {u"pixmaps/org.mill.App.png"_qs}, u"org.mill.App"_qs,
            u"pixmaps/org.mill.App.png"_qs);
        row("a file of its own", {u"opt/mill/logo.png"_qs}, u"ROOT/opt/mill/logo.png"_qs,
            u"opt/mill/logo.png"_qs);
        row("a file that is gone", {}, u"ROOT/opt/mill/logo.png"_qs, {});
        row("none of that name", {exact}, u"windmill"_qs, {});
        row("a picture of something else", {u"icons/hicolor/48/actions/mill.png"_qs}, u"mill"_qs, {});
        row("a name that climbs", {exact, u"icons/hicolor/48/secret.png"_qs}, u"../secret"_qs, {});
        row("a folder that climbs", {u"icons/out/mill.png"_qs}, u"mill"_qs, {});
        row("a theme that climbs", {u"etc/48/apps/mill.png"_qs}, u"mill"_qs, {});
        row("no name", {exact}, {}, {});
    }
    void whereAnIconIsFound()
    {
        const IconMachine machine;
        QFETCH(const QStringList, there);
        QFETCH(QString, named);
        for (const QString &file : there)
            machine.addIcon(file.toStdString());
        named.replace(u"ROOT"_qs, QString::fromStdString(machine.files.path()));
        machine.addApplication("mill", named.toStdString());
        QFETCH(const QString, found);
        QCOMPARE(machine.picture(machine.program("mill"), 48, u"pretty"_qs), found.toUtf8());
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
        machine.addApplication("huge", "huge");
        machine.files.write("pixmaps/huge.png", "\x89PNG");
        std::filesystem::resize_file(machine.files.path("pixmaps/huge.png"), 100 * 1024 * 1024);
        QCOMPARE(machine.picture(machine.program("huge")), QByteArray());

        machine.addApplication("limit", "limit");
        machine.files.write("pixmaps/limit.png", "\x89PNG");
        std::filesystem::resize_file(machine.files.path("pixmaps/limit.png"), largestIconFile);
        QCOMPARE(machine.picture(machine.program("limit")).size(), qsizetype(largestIconFile));

        machine.addApplication("pipe", machine.files.path("pixmaps/pipe.png"));
        QCOMPARE(::mkfifo(machine.files.path("pixmaps/pipe.png").c_str(), 0600), 0);
        QCOMPARE(machine.picture(machine.program("pipe")), QByteArray());

        machine.addApplication("device", "/dev/zero");
        QCOMPARE(machine.picture(machine.program("device")), QByteArray());

        machine.addApplication("circle", "circle");
        machine.files.link("pixmaps/circle.png", machine.files.path("pixmaps/circle.png"));
        QCOMPARE(machine.picture(machine.program("circle")), QByteArray());

        // Links are how themes say that two programs share an icon.
        machine.addIcon("pixmaps/real.png");
        machine.addApplication("linked", "linked");
        machine.files.link("pixmaps/linked.png", "real.png");
        QCOMPARE(machine.picture(machine.program("linked")), QByteArray("pixmaps/real.png"));
    }
};

QTEST_GUILESS_MAIN(LinuxIconsTest)
#include "LinuxIconsTest.moc"
