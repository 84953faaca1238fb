#pragma once

#include "platform/Machine.h"

#include <QtCore/QLocale>

#include <memory>

namespace swabby {

/// Sets in the environment what this system's libraries would otherwise find in ways of their own. Before the
/// first thread.
void prepareForThisComputer();

/// The locale in which the person in front of it reads times. Ask before the environment is changed for
/// tools.
QLocale localeOfTimes();

/// How this computer speaks of itself, for what is said before a machine is made.
MachineWords wordsOfThisComputer();

/// The computer this program runs on. Each system's folder has the one implementation of it.
std::shared_ptr<Machine> makeThisComputer();

} // namespace swabby
