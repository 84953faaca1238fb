#include "ai/KeychainStore.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "flows/ai/AssistantNotes.h"
#include "platform/Utf8.h"
#include "platform/posix/MemoryPrivacy.h"

#include <QtCore/QFile>

#include <cstdio>
#include <unistd.h>

namespace swabby {
namespace {

constexpr qsizetype longestKey = 64 * 1024;
const QString account = QLatin1String(KeychainStore::apiKeyAccount);

/// Without the line end that a shell or a person adds; no value for what is no text.
std::optional<QString> keyIn(QByteArray bytes)
{
    if (bytes.endsWith('\n'))
        bytes.chop(1);
    if (bytes.endsWith('\r'))
        bytes.chop(1);
    const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return bytes.size() <= longestKey && isUtf8(view) ? std::optional(textOf(view)) : std::nullopt;
}

/// The whole of standard input, or the line that a person types there, who does not see it.
std::optional<QString> keyFromInput()
{
    if (::isatty(STDIN_FILENO) == 1) {
        std::fputs("Key: ", stderr);
        const QByteArray line = typedLine(Echo::off);
        return line.trimmed().isEmpty() ? std::nullopt : keyIn(line);
    }
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes;
    while (bytes.size() <= longestKey) {
        const QByteArray more = input.read(longestKey + 1 - bytes.size());
        if (more.isEmpty())
            break;
        bytes += more;
    }
    return keyIn(bytes);
}

void printStored(const Arguments &arguments, bool stored)
{
    if (arguments.json)
        print(jsonText(QJsonObject{{QStringLiteral("stored"), stored}}) + '\n');
    else
        print(stored ? QStringLiteral("A key is stored.\n") : QStringLiteral("No key is stored.\n"));
}

int setKey(const Arguments &arguments, SecretStore &store)
{
    keepMemoryPrivate();
    const std::optional<QString> key = keyFromInput();
    if (!key) {
        printProblem(
            QStringLiteral("swabbyctl: what came on standard input is no key; it takes one line of text"));
        return wrongUsage;
    }
    const bool isKept = KeychainStore::write(store, *key, account);
    printStored(arguments, isKept);
    if (!isKept)
        printProblem(QStringLiteral(
            "swabbyctl: the system's secret store could not keep the key; it is stored nowhere"));
    return isKept ? done : notDone;
}

} // namespace

int runKey(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    const QString &word = arguments.operands.first();
    if (word == QLatin1String("set"))
        return setKey(arguments, *machine->secrets);
    if (word == QLatin1String("delete"))
        KeychainStore::erase(*machine->secrets, account);
    else if (word != QLatin1String("status")) {
        printProblem(QStringLiteral("swabbyctl: no \"key %1\"; usage: swabbyctl %2")
                         .arg(word, QLatin1String(arguments.row->usage)));
        return wrongUsage;
    }
    using Keeper = SecretReading::Keeper;
    const SecretReading key = KeychainStore::read(*machine->secrets, account);
    // A locked store says that it keeps one, a silent one nothing.
    const bool isStored = key.value.has_value() || key.keeper == Keeper::locked;
    printStored(arguments, isStored);
    if (key.keeper != Keeper::open)
        printProblem(AssistantNotes::reason(ModelFailure::storeLocked));
    const bool isLeft = word == QLatin1String("delete") && isStored;
    return isLeft || key.keeper == Keeper::silent ? notDone : done;
}

} // namespace swabby
