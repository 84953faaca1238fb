#include "cli/Output.h"
#include "cli/Verbs.h"
#include "machine/MachineChoice.h"
#include "platform/posix/ForeignHome.h"
#include "platform/posix/TerminationSignals.h"

#include <QtCore/QCoreApplication>

namespace {

void complain(const QString &words)
{
    swabby::printProblem(QStringLiteral("swabbyctl: ") + words);
}

} // namespace

int main(int argc, char *argv[])
{
    using namespace swabby;
    prepareProcess();
    const TerminationSignals signalsEndTheLoop;
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(SWABBY_VERSION));

    const auto parsed = parseArguments(QCoreApplication::arguments());
    if (const auto *information = std::get_if<Information>(&parsed)) {
        print(information->text);
        return done;
    }
    if (const auto *wrong = std::get_if<WrongUsage>(&parsed)) {
        complain(wrong->text);
        return wrongUsage;
    }
    const Arguments &arguments = std::get<Arguments>(parsed);
    QString problem;
    std::optional<MachineFolder> folder;
    if (arguments.machineFolder)
        folder = {*arguments.machineFolder, arguments.runTools, complain};
    const std::shared_ptr<Machine> machine = chooseMachine(folder, &problem);
    if (!machine) {
        complain(problem);
        return wrongUsage;
    }
    problem = arguments.machineFolder ? QString() : foreignHome(machine->places);
    if (!problem.isEmpty() && storesOrRemoves(arguments)) {
        printProblem(QStringLiteral("swabbyctl: ") + problem);
        return notDone;
    }
    const int status = arguments.row->run(arguments, machine);
    // Only what this call tried has been noticed.
    for (const Permission permission : machine->permissions->refused())
        printProblem(QStringLiteral("swabbyctl: ") +
                     machine->words.permissions.at(static_cast<std::size_t>(permission)).refusal);
    return status;
}
