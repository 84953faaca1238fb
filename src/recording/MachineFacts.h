#pragma once

#include "cleanup/RemovableItem.h"
#include "recording/Heard.h"
#include "recording/Rewriting.h"

#include <QtCore/QJsonObject>

namespace swabby {

/// The machine.json of what was heard, and of the caches among what was found that a Mac does not have.
QJsonObject machineFacts(const Heard &heard, Machine &machine, const std::vector<RemovableItem> &found,
                         Rewriting &rewriting);

/// The settings that figures and lists depend on: numbers, switches, choices and the pinned names.
QJsonObject settingsOf(const Machine &machine, Rewriting &rewriting);

} // namespace swabby
