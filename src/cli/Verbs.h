#pragma once

#include "cli/Arguments.h"
#include "flows/cleanup/ConfirmationBuilder.h"
#include "platform/Machine.h"
#include "state/AppState.h"

#include <functional>
#include <memory>
#include <span>

namespace swabby {

/// What the program ends with.
enum ExitStatus { done = 0, notDone = 1, wrongUsage = 2 };

/// One verb.
struct Verb {
    const char *usage; ///< as help shows it: the name, then the operands and the options of its own
    const char *does;  ///< in a sentence without its subject and its full stop
    int fewestOperands;
    int mostOperands;
    /// Carries it out on the machine. Needs a QCoreApplication; gives the exit status.
    int (*run)(const Arguments &arguments, const std::shared_ptr<Machine> &machine);

    QString name() const;
    /// Whether the option of that name is one of its own, or one of every verb's.
    bool knows(const char *option) const;
};

/// All of them, in the order of the help.
std::span<const Verb> verbs();

// One each, in the file of its name.
int runSnapshot(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runWatch(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runSettings(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runStartup(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runAsk(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runExplain(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runCaches(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runDuplicates(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runDeepScan(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runApps(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runDeveloper(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runItems(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runRemove(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runPutBack(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runQuit(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runCheck(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runRecord(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runKey(const Arguments &arguments, const std::shared_ptr<Machine> &machine);

/// What to end with once a setting of that machine was written or not, which is said then.
int statusOfWriting(bool isWritten, const Machine &machine);

/// Says when the values of that machine's settings are not what is stored, or nothing may go until they are.
void printSettingsProblem(const Machine &machine);

/// Whether the verb as it was called keeps something on the disk or takes something off it.
bool storesOrRemoves(const Arguments &arguments);

/// Refreshes that many times, calls, and runs the event loop until somebody ends it. Gives the status it was
/// ended with.
int runRefreshed(AppState &state, int refreshes, const std::function<void()> &then);

enum class Echo { off, on };
/// The line a person types, with its end. Empty when the input ends, and when the program is asked to end
/// meanwhile: the event loop hears that.
QByteArray typedLine(Echo echo);

/// Asks a question on the terminal, beside the output, and runs the event loop until it is answered; the
/// details are whole lines below its message. True for "y" and "yes" in any case, and when the arguments say
/// yes; false when interrupted, and without asking when there is no terminal.
bool isAgreed(const Arguments &arguments, const ConfirmationInfo &info, const QString &details = {});

/// The program of that id among the published ones, else as the system knows it now; none when there is none.
std::optional<ProcessSample> findProcess(std::int32_t pid, const AppState &state);

} // namespace swabby
