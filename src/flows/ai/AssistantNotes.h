#pragma once

#include "ai/CloudAI.h"

#include <QtCore/QString>

namespace swabby::AssistantNotes {

// What a card says beneath an answer: only what happened.

/// Under an answer for which a question left this computer.
QString sentForAnswer();
QString sentForExplanation();
/// Where there is no way to the model without a key.
QString wantsKey();
/// Where the person has turned the assistant off.
QString isSwitchedOff();

/// Which of them belongs beneath the answer; sent is the one for a question that left. Empty: none.
template <typename Value>
QString beneath(const Answered<Value> &answer, const QString &sent)
{
    if (answer.wasSent)
        return sent;
    if (answer.wantsKey)
        return wantsKey();
    return answer.isSwitchedOff ? isSwitchedOff() : QString();
}

} // namespace swabby::AssistantNotes
