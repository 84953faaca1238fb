#include "flows/ai/AssistantNotes.h"

namespace swabby {
namespace {

struct Row {
    ModelFailure failure;
    const char *reason;
    bool isMendedInSettings;
};

constexpr Row rows[] = {
    {ModelFailure::noAssistant,
     "The assistant has no connection of its own yet. Adding a key of yours in the AI settings brings the "
     "answers.",
     true},
    {ModelFailure::switchedOff, "The assistant is turned off in the AI settings.", true},
    {ModelFailure::unsettled,
     "The settings cannot be read, so nobody is asked until it is certain that you want that.", false},
    {ModelFailure::keyRefused,
     "The key was refused. It may be mistyped or withdrawn; another one goes into the AI settings.", true},
    {ModelFailure::limit,
     "The key's credit is used up, or there were too many questions at once. Wait a little, or add credit.",
     false},
    {ModelFailure::offline,
     "There is no connection to the assistant. Check that this computer is online, then try again.", false},
    {ModelFailure::ownOffline,
     "Nothing answers at the address that you gave. Check that the model there runs, or change the address "
     "in "
     "the AI settings.",
     true},
    {ModelFailure::busy, "The assistant's service is busy right now. It usually helps to try again soon.",
     false},
    {ModelFailure::retired,
     "The model or its address is gone. A newer Swabby knows the next one, or name one in the AI settings.",
     true},
    {ModelFailure::storeLocked,
     "The password store that keeps your key is locked or does not answer. Unlock it, then try again.",
     false},
    {ModelFailure::unreadable, "What came back could not be read as an answer.", false},
    {ModelFailure::replaced, "Swabby was updated or removed while it ran. Start it anew, then ask again.",
     false},
    {ModelFailure::cancelled, "You stopped this before the answer came.", false},
};

const Row *rowOf(const std::optional<ModelFailure> &failure)
{
    for (const Row &row : rows)
        if (failure == row.failure)
            return &row;
    return nullptr;
}

QString sentFor(const QString &what, const QString &host)
{
    return QStringLiteral("Sent to %1 to generate this %2.")
        .arg(host.isEmpty() ? QStringLiteral("Claude") : host, what);
}

} // namespace

QString AssistantNotes::sentForAnswer(const QString &host)
{
    return sentFor(QStringLiteral("answer"), host);
}

QString AssistantNotes::sentForExplanation(const QString &host)
{
    return sentFor(QStringLiteral("explanation"), host);
}

QString AssistantNotes::reason(const std::optional<ModelFailure> &failure)
{
    const Row *const row = rowOf(failure);
    return row ? QLatin1String(row->reason) : QString();
}

bool AssistantNotes::isMendedInSettings(const std::optional<ModelFailure> &failure)
{
    const Row *const row = rowOf(failure);
    return row && row->isMendedInSettings;
}

} // namespace swabby
