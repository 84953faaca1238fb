#pragma once

#include <cstddef>
#include <functional>

namespace swabby {

/// Calls work(0) to work(count - 1), begun in this order, as many at once as there are processors, and
/// comes back when all have ended. The work may not throw and keeps its results where its number says, so
/// that they stand in order. Blocks for as long as the work does.
void sideBySide(std::size_t count, const std::function<void(std::size_t)> &work);

} // namespace swabby
