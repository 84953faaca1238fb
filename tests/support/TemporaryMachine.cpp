#include "support/TemporaryMachine.h"

#include "platform/machinefolder/FolderMachine.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtTest/QTest>

namespace swabby {

TemporaryMachine::TemporaryMachine(const QJsonObject &facts)
{
    writeFile(QStringLiteral("machine.json"), QJsonDocument(facts).toJson());
    QDir(folder()).mkpath(QStringLiteral("home"));
}

QString TemporaryMachine::historyFile() const
{
    return home() + QStringLiteral("/Library/Application Support/Swabby/history.json");
}

void TemporaryMachine::writeFile(const QString &relativePath, const QByteArray &content) const
{
    const QString path = folder() + QLatin1Char('/') + relativePath;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

void TemporaryMachine::addTool(const QString &path, const QByteArray &script) const
{
    const QString relativePath = QStringLiteral("root") + path;
    const QString place = folder() + QLatin1Char('/') + relativePath;
    // Under another name first: the one that is there may run at this moment.
    writeFile(relativePath + QStringLiteral(".new"), "#!/bin/sh\n" + script + '\n');
    QFile::setPermissions(place + QStringLiteral(".new"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (std::rename(qPrintable(place + QStringLiteral(".new")), qPrintable(place)) != 0)
        qFatal("cannot write %s", qPrintable(place));
}

void TemporaryMachine::setProcesses(const QList<QByteArray> &rows) const
{
    QByteArray listing = "  PID  PPID  %CPU %MEM    RSS COMM\n";
    for (const QByteArray &row : rows)
        listing += row + '\n';
    writeFile(QStringLiteral("listing"), listing);
    addTool(QStringLiteral("/bin/ps"), "cat \"$MACHINE_DIR/listing\"");
}

std::shared_ptr<Machine> TemporaryMachine::open() const
{
    QString problem;
    auto machine = makeFolderMachine({folder(), true}, &problem);
    if (!machine)
        qFatal("%s", qPrintable(problem));
    return machine;
}

QJsonArray TemporaryMachine::events(const QString &kind) const
{
    QFile file(folder() + QStringLiteral("/events.jsonl"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QJsonArray events;
    for (const QByteArray &line : file.readAll().split('\n'))
        if (const QJsonObject event = QJsonDocument::fromJson(line).object(); event.contains(kind))
            events.append(event.value(kind));
    return events;
}

QString TemporaryMachine::runs() const
{
    QStringList lines;
    for (const QJsonValue &run : events(QStringLiteral("run")))
        lines.append(run.toVariant().toStringList().join(QLatin1Char(' ')));
    return lines.join(QLatin1Char('\n'));
}

bool waitUntil(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, patience);
}

} // namespace swabby
