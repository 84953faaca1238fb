#pragma once

#include "support/Table.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace swabby {

/// A temporary folder that stands for a part of the file system, filled file by file.
class StandIn {
public:
    std::string path(const std::string &below = {}) const
    {
        const std::string root = m_folder.path().toStdString();
        return below.empty() ? root : root + '/' + below;
    }

    void write(const std::string &file, std::string_view text) const
    {
        makeFolderOf(file);
        std::ofstream(path(file), std::ios::binary) << text;
    }

    void writeProgram(const std::string &file) const
    {
        write(file, "#!/bin/sh\n");
        std::filesystem::permissions(path(file), std::filesystem::perms::owner_all);
    }

    /// A target beginning with "/" is used as it stands.
    void link(const std::string &file, const std::string &target) const
    {
        makeFolderOf(file);
        std::filesystem::remove(path(file));
        std::filesystem::create_symlink(target, path(file));
    }

    /// Puts in what a text names, a row each: PATH | CONTENT of a file, PATH | * for a program, PATH | ->
    /// TARGET for a link, PATH | NAME | EXEC | MORE for a desktop entry. ROOT stands for the folder itself.
    void plant(QByteArray tree) const
    {
        for (const QByteArray &line : tree.replace("ROOT", path().c_str()).split('\n')) {
            const Cells row(line);
            const std::string file = row.string(0), text = row.string(1);
            if (row.size() > 2)
                write(file, "[Desktop Entry]\nType=Application\nName=" + text +
                                "\nName[de]=Anders\nExec=" + row.string(2) + '\n' + row.string(3) +
                                "\n[Desktop Action new]\nName=New Window\nExec=other --new\n");
            else if (text == "*")
                writeProgram(file);
            else if (text.starts_with("-> "))
                link(file, text.substr(3));
            else if (row.size() == 2)
                write(file, text);
        }
    }

    void remove(const std::string &file) const { std::filesystem::remove_all(path(file)); }

private:
    void makeFolderOf(const std::string &file) const
    {
        std::filesystem::create_directories(std::filesystem::path(path(file)).parent_path());
    }

    QTemporaryDir m_folder;
};

/// Makes a check fail unless the reading makes of every scene of that file of tests/fixtures what stands
/// below its line "gives". Scenes have a title each, and an empty line between them.
inline void compareScenes(const QString &name, const std::function<QString(const StandIn &files)> &reading)
{
    for (const QString &scene : QString::fromUtf8(fixture(name)).trimmed().split(QStringLiteral("\n\n"))) {
        const StandIn files;
        const QString tree = scene.section(QStringLiteral("\ngives"), 0, 0);
        files.plant(tree.toUtf8());
        QCOMPARE(tree + u'\n' + reading(files).remove(QString::fromStdString(files.path() + '/')),
                 tree + u'\n' + scene.section(QStringLiteral("\ngives"), 1).trimmed());
    }
}

/// One process of a stand-in /proc.
struct StandInProcess {
    int pid = 0;
    int parentPid = 1;
    std::string command{};
    std::string program{}; ///< where its exe link points; none when empty
    unsigned long runTicks = 0;
    unsigned long startTicks = 0;
    unsigned long residentPages = 0;
    unsigned long codeStart = 4096;
    unsigned flags = 0;

    void writeTo(const StandIn &proc) const
    {
        const std::string folder = std::to_string(pid);
        const auto number = [](unsigned long value) { return std::to_string(value) + ' '; };
        proc.write(folder + "/stat", folder + " (" + command + ") S " + std::to_string(parentPid) +
                                         " 1 1 0 -1 " + number(flags) + "9 9 9 9 " + number(runTicks) +
                                         "0 7 7 20 0 1 0 " + number(startTicks) + "123456 " +
                                         number(residentPages) + "18446744073709551615 " + number(codeStart) +
                                         "4097 4098 0 0\n");
        if (!program.empty())
            proc.link(folder + "/exe", program);
    }
};

} // namespace swabby
