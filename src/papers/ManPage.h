#pragma once

#include "papers/CommandWords.h"

namespace swabby {

/// The program's manual page, in the man macros.
QString manPage(const CommandWords &program, const QString &version);

} // namespace swabby
