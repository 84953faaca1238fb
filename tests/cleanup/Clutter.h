#pragma once

#include "cleanup/ExcludeList.h"
#include "platform/ScanControl.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QFile>

#include <fcntl.h>
#include <filesystem>
#include <set>
#include <sys/stat.h>

namespace swabby {

/// Keeps what it was asked, in place of the disk: "trash PATH in FOLDER". Refuses the paths it is told to.
class RecordingDisposal final : public Disposal {
public:
    std::optional<TrashedItem> moveToTrash(const RemovalTarget &target, const BeforeMove &) override
    {
        if (!record("trash", target))
            return std::nullopt;
        afterEach();
        return TrashedItem{target.path, "/trash" / target.path.filename(), target.identity};
    }
    bool putBack(const TrashedItem &) override { return false; }
    bool deleteOutright(const RemovalTarget &target) override { return record("delete", target); }
    bool emptyFolder(const RemovalTarget &folder, const MustStay &mustStay) override
    {
        return record("empty", folder) && keepWhatMustStay(folder, mustStay);
    }
    TrashListing listTrash(const std::filesystem::path &, const MustStay &) override { return {}; }
    bool emptyTrash(const RemovalTarget &trash, const TrashListing &, const MustStay &mustStay) override
    {
        return record("empty trash", trash) && keepWhatMustStay(trash, mustStay);
    }

    QStringList asked;
    std::function<void()> afterEach = [] {};
    std::set<std::filesystem::path> refused;

private:
    bool record(const char *verb, const RemovalTarget &target)
    {
        const auto identity = FileIdentity::of(target.path);
        const bool isSame = identity && identity->isSameThing(target.identity);
        asked.append(QString(u"%1%2 %3 in %4"_qs)
                         .arg(isSame ? u""_qs : u"NOT WHAT WAS FOUND: "_qs, QString::fromLatin1(verb),
                              QString::fromStdString(target.path),
                              QString::fromStdString(target.allowedFolder)));
        return !refused.contains(target.path);
    }
    bool keepWhatMustStay(const RemovalTarget &folder, const MustStay &mustStay)
    {
        for (const auto &child : std::filesystem::directory_iterator(folder.path))
            if (mustStay && mustStay(child.path()))
                asked.append(u"keep "_qs + QString::fromStdString(child.path()));
        return true;
    }
};

/// A described Mac full of clutter, on a fixed day. Its du reads the size of a folder from the file .kib in
/// it and of a file from its text; its find is the computer's own.
class Clutter : public TemporaryMachine {
public:
    static constexpr std::int64_t now = 1'781'602'200;
    static constexpr std::int64_t day = 86'400;

    explicit Clutter(QJsonObject facts = {})
        : TemporaryMachine((facts.insert(u"now"_qs, double(now)), facts)), machine(open())
    {
        addTool(
            u"/usr/bin/du"_qs,
            R"([ -d "$2" ] && file=$2/.kib || file=$2; read -r kib <"$file"; printf '%s\t%s\n' "$kib" "$2")");
        addTool(u"/usr/bin/find"_qs, R"(exec find "$@")");
        machine->disposal = std::make_unique<RecordingDisposal>();
    }

    std::filesystem::path homePath(const std::string &below = {}) const
    {
        const std::filesystem::path path = home().toStdString();
        return below.empty() ? path : path / below;
    }
    /// A folder in the home folder that du finds so large.
    void addFolder(const QString &below, std::int64_t kib, double daysOld = 0) const
    {
        writeFile(u"home/"_qs + below + u"/.kib"_qs, QByteArray::number(qlonglong(kib)) + '\n');
        age(below, std::int64_t(daysOld * day));
    }
    /// A project of that age whose dependency folder is so large.
    void addProject(const QString &below, std::int64_t kib, double daysOld) const
    {
        addFolder(below + u"/node_modules"_qs, kib);
        age(below, std::int64_t(daysOld * day));
    }
    /// A file in the home folder of that length, with no content.
    void addFile(const QString &below, std::int64_t bytes, double daysOld = 0) const
    {
        writeFile(u"home/"_qs + below, {});
        QFile(home() + u'/' + below).resize(bytes);
        age(below, std::int64_t(daysOld * day));
    }
    void age(const QString &below, std::int64_t seconds) const
    {
        const timespec then = {time_t(now - seconds), 0};
        const timespec times[] = {then, then};
        if (::utimensat(AT_FDCWD, homePath(below.toStdString()).c_str(), times, 0) != 0)
            qFatal("cannot age %s", qPrintable(below));
    }

    RecordingDisposal &disposal() const { return static_cast<RecordingDisposal &>(*machine->disposal); }
    /// What the disposal was asked, with "~" for the home folder.
    QString asked() const { return shortened(disposal().asked.join(u'\n')); }
    QString shortened(QString text) const { return text.replace(home(), u"~"_qs); }
    ExcludeList excluding(std::initializer_list<std::string> below) const
    {
        std::vector<std::filesystem::path> paths;
        for (const std::string &path : below)
            paths.push_back(homePath(path));
        return ExcludeList(paths);
    }
    QString runs() const { return shortened(TemporaryMachine::runs()); }

    const std::shared_ptr<Machine> machine;
};

/// The Mac that a file of tests/fixtures describes up to its "=>", and what is expected of it: the text that
/// follows. Each row names what to put there, the place, what it is made of, and its age in days.
class ClutterScene : public Clutter {
public:
    explicit ClutterScene(const QString &name, const QJsonObject &facts = {}) : Clutter(facts)
    {
        const QByteArray text = fixture(name);
        const qsizetype end = text.indexOf("=>");
        for (const QByteArray &line : text.first(end).trimmed().split('\n'))
            put(Cells(line));
        expected = QString::fromUtf8(text.mid(end + 2)).trimmed();
    }

    ExcludeList excludes() const { return ExcludeList(m_kept); }

    QString expected;

private:
    void put(const Cells &row)
    {
        const QString place = row.text(1);
        if (row[0] == "folder") {
            addFolder(place, row[2].toLongLong(), row.number(3));
        } else if (row[0] == "project") {
            addProject(place, row[2].toLongLong(), row.number(3));
        } else if (row[0] == "file") {
            addFile(place, row[2].toLongLong(), row.number(3));
        } else if (row[0] == "text") {
            writeFile(place, row[2]);
        } else if (row[0] == "tool") {
            addTool(place, row[2]);
        } else if (row[0] == "bundle") {
            writeFile(place + u"/.kib"_qs, row[2]);
            writeFile(place + u"/Contents/Info.plist"_qs,
                      "<plist version=\"1.0\"><dict>" + row[3] + "</dict></plist>");
        } else if (row[0] == "keep") {
            m_kept.push_back(homePath(row.string(1)));
        } else {
            qFatal("cannot put a %s", row[0].constData());
        }
    }

    std::vector<std::filesystem::path> m_kept;
};

} // namespace swabby
