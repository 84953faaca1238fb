#include "platform/Utf8.h"
#include "platform/linux/RemovalScene.h"
#include "platform/posix/PosixShell.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

/// Names that others print as they are.
bool isPrintable(const std::string &name)
{
    return isUtf8(name) && name.find('\n') == std::string::npos;
}

/// As the desktop's reader prints a name. Its restore also calls the file so.
std::string printed(const std::string &name)
{
    std::string text;
    for (const char byte : name) {
        const bool isPlain = byte >= ' ' && byte <= '~';
        text += isPlain ? std::string(1, byte) : "\\x" + QByteArray(1, byte).toHex().toStdString();
    }
    return text;
}

/// The Trash as others read it: programs of two makers that know nothing of this one.
struct ReadTrash : Scene {
    ReadTrash() : Scene(Kind::thisComputer)
    {
        ::setenv("HOME", home().c_str(), 1);
        ::setenv("XDG_DATA_HOME", (home() / "data").c_str(), 1);
    }

    /// What a tool prints, whatever bytes that is.
    std::string run(const std::string &script) const
    {
        const fs::path output = ground / "output";
        PosixShell shell{StopToken()};
        shell.run("/bin/sh", {"-c", "exec >\"$0\" 2>&1; cd \"$HOME\"; " + script, output});
        return bytesOf(output);
    }
};

const std::vector<std::string> names = {"plain.txt",  "with space",         "100%_done",    "caf\xC3\xA9",
                                        "-rf",        "two\nlines",         "caf\xE9 here", "a;b&c",
                                        "\"quoted\"", std::string(255, 'n')};

} // namespace

class LinuxTrashReadersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void trashCliListsAndRestores()
    {
        for (const std::string &name : names) {
            // It can neither take nor give back what is no UTF-8, its own included.
            if (!isUtf8(name))
                continue;
            // One at a time: its restore asks for the number of a line, and a name may have several lines.
            ReadTrash scene;
            const fs::path file = scene.home() / name;
            writeBytes(file, name);
            QVERIFY(scene.disposal->moveToTrash(targetAt(file, scene.home())));
            const std::string listed = scene.run("trash-list");
            if (isPrintable(name))
                QVERIFY2(listed.find(' ' + file.native()) != std::string::npos, listed.c_str());
            const std::string answer = scene.run("echo 0 | trash-restore");
            QVERIFY2(bytesOf(file) == name, answer.c_str());
            QVERIFY(fs::is_empty(scene.home() / "data/Trash/files"));
            QVERIFY(fs::is_empty(scene.home() / "data/Trash/info"));
        }
    }

    void theDesktopListsAndRestores()
    {
        ReadTrash scene;
        writeBytes(scene.home() / "folder/inner/file", "deep");
        QVERIFY(scene.disposal->moveToTrash(targetAt(scene.home() / "folder", scene.home())));
        for (const std::string &name : names) {
            writeBytes(scene.home() / name, name);
            QVERIFY(scene.disposal->moveToTrash(targetAt(scene.home() / name, scene.home())));
        }
        const std::string listed = scene.run("export XDG_RUNTIME_DIR=\"$HOME\"; dbus-run-session -- sh -c '"
                                             "gio trash --list | tee list; "
                                             "grep -ao ^trash:///[^[:space:]]* list | while read -r address; "
                                             "do gio trash --restore \"$address\"; done'");
        for (const std::string &name : names) {
            const fs::path shown = scene.home() / printed(name);
            QVERIFY2(listed.find('\t' + shown.native() + '\n') != std::string::npos, name.c_str());
            QVERIFY2(bytesOf(shown) == name, name.c_str());
        }
        QCOMPARE(bytesOf(scene.home() / "folder/inner/file"), std::string("deep"));
        QVERIFY(fs::is_empty(scene.home() / "data/Trash/files"));
    }
};

QTEST_GUILESS_MAIN(LinuxTrashReadersTest)
#include "LinuxTrashReadersTest.moc"
