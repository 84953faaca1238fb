#include "StandIn.h"
#include "platform/linux/LinuxProgramIcons.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <sys/stat.h>

using namespace swabby;

namespace {

/// A machine whose icons say in their content where they lay.
class IconMachine {
public:
    IconMachine() { files.plant(fixture(u"linux/icon_themes.txt"_qs)); }

    void addIcon(const std::string &file) const { files.write(file, file); }
    void addApplication(const std::string &name, const std::string &icon) const
    {
        files.writeProgram("usr/bin/" + name);
        files.plant(QByteArray::fromStdString("entries/" + name + ".desktop | The " + name + " | " + name +
                                              " | Icon=" + icon));
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
        compareTable(fixture(u"linux/where_an_icon_is_found.txt"_qs), [](const Cells &row) {
            const IconMachine machine;
            for (const QByteArray &file : row[1].split(' '))
                if (!file.isEmpty())
                    machine.files.write("icons/" + file.toStdString(), file.toStdString());
            machine.addApplication("mill",
                                   row[2].replace("ROOT", machine.files.path().c_str()).toStdString());
            return QString::fromUtf8(machine.picture(machine.program("mill"), 48, u"pretty"_qs));
        });
    }

    void whoseIconItIs()
    {
        const IconMachine machine;
        machine.addIcon("pixmaps/mill.png");
        machine.addApplication("mill", "mill");
        // A program in a language of its own, or in a sandbox, is known by its application's name.
        compareTable(fixture(u"linux/whose_icon_it_is.txt"_qs), [&](const Cells &row) {
            const QByteArray program = row[1].replace("ROOT", machine.files.path().c_str());
            return QString::fromUtf8(machine.picture({program.toStdString(), row.text(2), row.text(3)}));
        });
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
