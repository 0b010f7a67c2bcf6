#include "engine/source/LineEnds.h"

#include <algorithm>
#include <array>

LineEnd UsualLineEnd(const QString& text, LineEnd otherwise)
{
    std::array<qsizetype, 3> counts{};   // by LineEnd
    ForEachLineEnd(text, false, [&counts](qsizetype, qsizetype, LineEnd end) { ++counts[std::size_t(end)]; });
    if (counts == std::array<qsizetype, 3>{})
        return otherwise;
    const auto most = std::max_element(counts.begin(), counts.end());   // the first of equals
    return static_cast<LineEnd>(most - counts.begin());
}

bool BreaksInTheTextControl(const QString& text)
{
    return std::any_of(text.begin(), text.end(), TextControlBreak);
}
