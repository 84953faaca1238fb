#include "flows/ai/AssistantNotes.h"

namespace swabby {

QString AssistantNotes::sentForAnswer()
{
    return QStringLiteral("Sent to Claude to generate this answer.");
}

QString AssistantNotes::sentForExplanation()
{
    return QStringLiteral("Sent to Claude to generate this explanation.");
}

QString AssistantNotes::wantsKey()
{
    return QStringLiteral("The assistant has no connection of its own yet. Adding a key of yours in the AI "
                          "settings brings the answers.");
}

QString AssistantNotes::isSwitchedOff()
{
    return QStringLiteral("The assistant is turned off in the AI settings.");
}

} // namespace swabby
