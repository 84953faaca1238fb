#pragma once

#include "cleanup/ExcludeList.h"
#include "platform/ScanControl.h"
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
    std::optional<TrashedItem> moveToTrash(const RemovalTarget &target) override
    {
        if (!record("trash", target))
            return std::nullopt;
        return TrashedItem{target.path, "/trash" / target.path.filename(), target.identity};
    }
    bool putBack(const TrashedItem &) override { return false; }
    bool deleteOutright(const RemovalTarget &target) override { return record("delete", target); }
    bool emptyFolder(const RemovalTarget &folder, const MustStay &mustStay) override
    {
        return record("empty", folder) && keepWhatMustStay(folder, mustStay);
    }
    bool emptyTrash(const RemovalTarget &trash, const MustStay &mustStay) override
    {
        return record("empty trash", trash) && keepWhatMustStay(trash, mustStay);
    }

    QStringList asked;
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
            if (mustStay(child.path()))
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
    void addFolder(const QString &below, std::int64_t kib, std::int64_t daysOld = 0) const
    {
        writeFile(u"home/"_qs + below + u"/.kib"_qs, QByteArray::number(qlonglong(kib)) + '\n');
        age(below, daysOld * day);
    }
    /// A file in the home folder of that length, with no content.
    void addFile(const QString &below, std::int64_t bytes, std::int64_t daysOld = 0) const
    {
        writeFile(u"home/"_qs + below, {});
        QFile(home() + u'/' + below).resize(bytes);
        age(below, daysOld * day);
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

} // namespace swabby
