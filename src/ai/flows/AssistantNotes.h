#pragma once

#include <QtCore/QString>

namespace swabby::AssistantNotes {

// What a card says beneath an answer: only what happened.

/// Under an answer for which a question left this computer.
QString sentForAnswer();
QString sentForExplanation();
/// Where there is no way to the model without a key.
QString wantsKey();

} // namespace swabby::AssistantNotes
