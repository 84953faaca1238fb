#pragma once

#include "state/AppState.h"

namespace swabby {

/// The whole state for a person at a terminal.
QString stateText(const AppState &state);

/// One refresh in one line.
QString stateLine(const AppState &state);

QString loginItemsText(const QList<LoginItem> &items);

} // namespace swabby
