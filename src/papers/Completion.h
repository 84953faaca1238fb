#pragma once

#include "papers/CommandWords.h"

namespace swabby {

/// What completes a program's command line in each shell: the whole file that the shell looks for.
QString bashCompletion(const CommandWords &program);
QString fishCompletion(const CommandWords &program);
QString zshCompletion(const CommandWords &program);

} // namespace swabby
