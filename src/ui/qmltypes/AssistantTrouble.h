#pragma once

#include "flows/ai/AssistantNotes.h"

#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// Why the assistant did not answer, as the note beneath its sentence says it.
struct AssistantTrouble {
    Q_GADGET
    QML_VALUE_TYPE(assistantTrouble)
    Q_PROPERTY(QString reason MEMBER reason)
    Q_PROPERTY(bool isMendedInSettings MEMBER isMendedInSettings)

public:
    AssistantTrouble() = default;
    explicit AssistantTrouble(const std::optional<ModelFailure> &failure)
        : reason(AssistantNotes::reason(failure)),
          isMendedInSettings(AssistantNotes::isMendedInSettings(failure))
    {
    }

    QString reason; ///< empty when it did answer
    bool isMendedInSettings = false;
};

} // namespace swabby
