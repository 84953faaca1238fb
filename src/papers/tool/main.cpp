#include "app/CommandLine.h"
#include "cli/Arguments.h"
#include "papers/Completion.h"
#include "papers/ManPage.h"
#include "platform/posix/WholeFile.h"

#include <cstdio>

// swabby-papers FOLDER: writes there what is installed beside the programs and told by their own tables.
int main(int argc, char *argv[])
{
    using namespace swabby;
    if (argc != 2)
        return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]) + QLatin1Char('/');
    for (const CommandWords &program : {applicationWords(), terminalWords()}) {
        const std::pair<QString, QString> files[] = {
            {program.name + QStringLiteral(".1"), manPage(program, QStringLiteral(SWABBY_VERSION))},
            {program.name + QStringLiteral(".bash"), bashCompletion(program)},
            {program.name + QStringLiteral(".fish"), fishCompletion(program)},
            {program.name + QStringLiteral(".zsh"), zshCompletion(program)}};
        for (const auto &[name, text] : files) {
            const QString problem = saveWholeFile(folder + name, text.toUtf8());
            if (problem.isEmpty())
                continue;
            std::fprintf(stderr, "%s: %s\n", qPrintable(folder + name), qPrintable(problem));
            return 1;
        }
    }
    return 0;
}
