#include "cli/Background.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "recording/Recording.h"

namespace swabby {

int runRecord(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    const QString &folder = arguments.operands.first();
    const auto names = arguments.withNames ? PeoplesNames::kept : PeoplesNames::replaced;
    const auto record = [&](const Search &search) {
        return recordMachine(*machine, folder, names, search.control);
    };
    return searchInBackground(*machine, record, [&](const Recording &recording) {
        const bool isDone = recording.problem.isEmpty();
        if (!isDone)
            printProblem(QStringLiteral("swabbyctl: nothing whole was recorded; ") +
                         harmless(recording.problem));
        if (arguments.json)
            print(jsonText(QJsonObject{{QStringLiteral("recorded"), isDone},
                                       {QStringLiteral("answers"), recording.answers},
                                       {QStringLiteral("withNames"), arguments.withNames}}) +
                  '\n');
        else if (isDone)
            print(QStringLiteral("Recorded in %1, %2. Look through it before you send it to anybody.\n"
                                 "swabbyctl --machine %1 snapshot shows what it tells.\n")
                      .arg(harmless(folder), arguments.withNames
                                                 ? QStringLiteral("with all names")
                                                 : QStringLiteral("with names of your own replaced")));
        QCoreApplication::exit(isDone ? done : notDone);
    });
}

} // namespace swabby
