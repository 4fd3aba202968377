// SPDX-License-Identifier: MIT
#include "watchlist/document/RowTextMap.h"

#include <algorithm>

namespace vx {

void CRowTextMap::ShiftUp(int firstRow, int count) {
    std::vector<int> leaving;
    for (int row = std::max(firstRow - count, 1); row < firstRow; ++row) leaving.push_back(row);
    std::vector<std::string> gone;
    m_table.RemoveRows(leaving, gone);
}

std::string CRowTextMap::Serialise() const {
    std::string out;
    for (const auto& [row, text] : *this) out.append(std::to_string(row)).append(":").append(text).append(";");
    return out;
}

std::string CNoteStore::Cleaned(std::string_view text) {
    std::string out(text);
    std::erase_if(out, [](char c) { return c == ';' || c == ':' || c == ','; });
    return out;
}

} // namespace vx
