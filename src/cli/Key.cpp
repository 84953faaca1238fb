#include "ai/KeychainStore.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "platform/Utf8.h"
#include "platform/posix/MemoryPrivacy.h"

#include <QtCore/QFile>

#include <cstdio>

namespace swabby {
namespace {

const QString account = QLatin1String(KeychainStore::apiKeyAccount);

/// The whole of standard input but for the line end that a shell adds; no value for what is no text.
std::optional<QString> keyFromInput()
{
    constexpr qint64 most = 64 * 1024;
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes;
    while (bytes.size() <= most) {
        const QByteArray more = input.read(most + 1 - bytes.size());
        if (more.isEmpty())
            break;
        bytes += more;
    }
    if (bytes.endsWith('\n'))
        bytes.chop(1);
    if (bytes.endsWith('\r'))
        bytes.chop(1);
    const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return bytes.size() <= most && isUtf8(view) ? std::optional(textOf(view)) : std::nullopt;
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
    const bool isStored = KeychainStore::read(*machine->secrets, account).has_value();
    printStored(arguments, isStored);
    return word == QLatin1String("delete") && isStored ? notDone : done;
}

} // namespace swabby
