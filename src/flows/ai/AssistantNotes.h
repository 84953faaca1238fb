#pragma once

#include "ai/ModelFailure.h"

#include <QtCore/QString>

namespace swabby::AssistantNotes {

// What a card says beneath an answer: only what happened.

/// Under an answer for which a question left this computer; host is where it went, if the person chose that.
QString sentForAnswer(const QString &host = {});
QString sentForExplanation(const QString &host = {});

/// Why there is no answer, and what to do about it, in a sentence or two. Empty for none.
QString reason(const std::optional<ModelFailure> &failure);
/// Whether the AI settings are the place to do it.
bool isMendedInSettings(const std::optional<ModelFailure> &failure);

} // namespace swabby::AssistantNotes
