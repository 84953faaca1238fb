#pragma once

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
    return run(QStringList{u"--machine"_qs, machine.folder()} + arguments, input);
}

/// The same with arguments that have no blanks.
inline Answer runOn(const TemporaryMachine &machine, const char *arguments, const QByteArray &input = {})
{
    return runOn(machine, words(arguments), input);
}

} // namespace swabby
