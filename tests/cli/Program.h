#pragma once

#include "support/TemporaryMachine.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>

namespace swabby {

/// What the program under test said.
struct Answer {
    int status = -1;
    QByteArray output;
    QByteArray problems;

    QJsonValue json() const { return QJsonDocument::fromJson('[' + output + ']').array().first(); }
};

inline Answer run(const QStringList &arguments)
{
    constexpr int patienceMilliseconds = 60'000;
    QProcess program;
    program.start(QStringLiteral(SWABBYCTL), arguments);
    if (!program.waitForFinished(patienceMilliseconds))
        return {};
    return {program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1,
            program.readAllStandardOutput(), program.readAllStandardError()};
}

inline Answer runOn(const TemporaryMachine &machine, const QStringList &arguments)
{
    return run(QStringList{QStringLiteral("--machine"), machine.folder()} + arguments);
}

inline QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace swabby
