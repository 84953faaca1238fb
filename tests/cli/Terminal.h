#pragma once

#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>

namespace swabby {

/// What the terminal program did and said.
struct Answer {
    int status = -1;
    QByteArray output;
    QByteArray problems;

    QJsonValue json() const { return QJsonDocument::fromJson('[' + output + ']').array().first(); }
    /// One document a line.
    QJsonArray lines() const
    {
        QJsonArray documents;
        for (const QByteArray &line : output.trimmed().split('\n'))
            documents.append(QJsonDocument::fromJson(line).object());
        return documents;
    }
};

inline QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Runs it to its end.
inline Answer run(const QStringList &arguments, const QByteArray &input = {},
                  const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    constexpr int patienceMilliseconds = 60'000;
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(SWABBYCTL), arguments);
    program.write(input);
    program.closeWriteChannel();
    if (!program.waitForFinished(patienceMilliseconds))
        return {};
    return {program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1,
            program.readAllStandardOutput(), program.readAllStandardError()};
}

inline Answer runOn(const TemporaryMachine &machine, const QStringList &arguments,
                    const QByteArray &input = {})
{
    return run(QStringList{u"--machine"_qs, machine.folder(), u"--run-tools"_qs} + arguments, input);
}

/// The same with arguments that have no blanks.
inline Answer runOn(const TemporaryMachine &machine, const char *arguments, const QByteArray &input = {})
{
    return runOn(machine, words(arguments), input);
}

/// Runs every row of a file of tests/fixtures on the machine, whose home folder is "~" in it: the arguments,
/// with "_" for a blank in one of them, then the status and what is printed. Wrong usage says so in one line,
/// and nothing else.
inline void compareTranscript(const TemporaryMachine &machine, const QString &name)
{
    compareTable(fixture(name), [&](const Cells &row) {
        QStringList arguments = words(row[0]).replaceInStrings(u"_"_qs, u" "_qs);
        const Answer answer = runOn(machine, arguments.replaceInStrings(u"~"_qs, machine.home()));
        const QString shown = QString::fromUtf8(answer.output.trimmed()).replace(machine.home(), u"~"_qs);
        const bool isInOneLine = answer.status != 2 || answer.problems.count('\n') == 1;
        return QString(u"%1 %2"_qs)
            .arg(answer.status)
            .arg(isInOneLine ? shown : u"in other lines"_qs)
            .trimmed();
    });
}

} // namespace swabby
