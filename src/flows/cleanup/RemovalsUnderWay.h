#pragma once

#include "cleanup/RemovableItem.h"

#include <algorithm>
#include <vector>

namespace swabby {

/// Takes those out of the items.
inline void eraseEach(std::vector<RemovableItem> &items, const std::vector<RemovableItem> &those)
{
    std::erase_if(items, [&](const RemovableItem &item) {
        return std::find(those.begin(), those.end(), item) != those.end();
    });
}

/// What the removals that run just now take away; a search that begins meanwhile may still find it.
class RemovalsUnderWay {
public:
    void begin(const std::vector<RemovableItem> &items)
    {
        ++m_count;
        m_items.insert(m_items.end(), items.begin(), items.end());
    }
    /// Which of them ended nobody says: all count until none runs, except for what stayed.
    void end(const std::vector<RemovableItem> &left)
    {
        m_count = std::max(0, m_count - 1); // it may have begun before this stood
        eraseEach(m_items, left);
        if (m_count == 0)
            m_items.clear();
    }

    bool isEmpty() const { return m_count == 0; }
    const std::vector<RemovableItem> &items() const { return m_items; }

private:
    int m_count = 0;
    std::vector<RemovableItem> m_items;
};

} // namespace swabby
