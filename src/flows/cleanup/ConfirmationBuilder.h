#pragma once

#include "cleanup/RemovableItem.h"
#include "engine/ProcessSample.h"
#include "flows/cleanup/CleanupFlow.h"
#include "flows/cleanup/QuitFlow.h"

#include <QtCore/QString>

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace swabby {

/// A question that stands between a person and something that cannot simply be taken back.
struct ConfirmationInfo {
    QString title;
    QString message;
    QString warning; ///< beneath the message, of what no way leads back from; mostly empty
    QString confirmLabel;
    bool isDestructive = true;
    std::optional<int> trustRatio;                      ///< of the program, 5 to 99; absent for removals
    std::optional<ActionRecommendation> recommendation; ///< absent for removals
    std::function<void()> onConfirm;                    ///< called once, when the person agrees
};

/// Turns what somebody wants done into the question to ask first. Nothing here acts before onConfirm is
/// called.
namespace ConfirmationBuilder {

/// The plan is the flow's, for this program. In the question it goes by the name that is shown of it; for an
/// empty one by its own.
ConfirmationInfo quit(const ProcessSample &process, const QuitPlan &plan, QuitFlow &flow,
                      const QString &shownName = {});

/// onRemoved is called as soon as the removal has begun.
ConfirmationInfo remove(const std::vector<RemovableItem> &items, CleanupFlow &flow,
                        const std::function<void()> &onRemoved = {});

/// What of it goes for good, in a few words: "Gone for good: 3 things in the Trash". Empty for none.
QString goneForGood(std::span<const RemovableItem> items);

/// What is said of a forced quit before it is done.
QString forceQuitWarning();

/// The listed program that somebody calls by this name, whatever the case: by its whole name first, then by a
/// part. None for a blank name.
std::optional<ProcessSample> findProcess(const QString &name, const AppState &state);

} // namespace ConfirmationBuilder

} // namespace swabby
