// SPDX-License-Identifier: MIT
#include "watchlist/document/ColumnMap.h"

#include "base/Text.h"

#include <algorithm>

namespace vx {

const SFieldEntry* sColumnInfo::Entry() const {
    const bool known = number >= 0 && number < static_cast<int>(kCatalogueSize);
    return known ? &Catalogue()[static_cast<size_t>(number)] : nullptr;
}

CColumnMap::CColumnMap() { Clear(); }

void CColumnMap::Clear() {
    m_columns.clear();
    m_unknownNames.clear();
    m_columns.push_back({kRowNumberColumn, std::string(Catalogue()[kRowNumberColumn].name), kRowNumberWidthPx});
}

void CColumnMap::SetNames(std::string_view names) {
    const std::vector<sColumnInfo> before = std::move(m_columns);
    m_columns.assign(1, before.front());
    for (const std::string_view name : SplitCountingTail(names, ';')) {
        if (Count() >= kMostColumns) return;
        if (name.empty() || PositionOf(name) >= 0) continue;
        const auto old = std::ranges::find(before, name, &sColumnInfo::name);
        Append(name);
        if (old != before.end()) m_columns.back() = *old;
    }
}

std::string CColumnMap::Names() const {
    std::string names;
    for (auto column = m_columns.begin() + 1; column != m_columns.end(); ++column) names += column->name + ';';
    return names;
}

int CColumnMap::Append(std::string_view name, int width) {
    int position = PositionOf(name);
    if (position < 0) {
        if (Count() >= kMostColumns) return -1;
        position = Count();
        m_columns.push_back({Register(name), std::string(name)});
    }
    SetWidth(position, width);
    return position;
}

bool CColumnMap::Insert(int position, std::string_view name, int width) {
    if (PositionOf(name) >= 0 || Count() >= kMostColumns) return false;
    Move(Append(name, width), position);
    return true;
}

void CColumnMap::Remove(int position) {
    if (position > 0 && position < Count()) m_columns.erase(m_columns.begin() + position);
}

void CColumnMap::Move(int from, int to) {
    if (from <= 0 || from >= Count()) return;
    const auto first = m_columns.begin();
    to = std::clamp(to, 1, Count() - 1);
    if (from < to) std::rotate(first + from, first + from + 1, first + to + 1);
    if (to < from) std::rotate(first + to, first + from, first + from + 1);
}

void CColumnMap::SetWidth(int position, int width) {
    if (position >= 0 && position < Count()) m_columns[static_cast<size_t>(position)].width = std::max(width, 0);
}

void CColumnMap::SetLook(int position, const SColumnLook& look) {
    if (position > 0 && position < Count()) m_columns[static_cast<size_t>(position)].look = look;
}

int CColumnMap::PositionOf(std::string_view name) const {
    const auto found = std::ranges::find(m_columns, name, &sColumnInfo::name);
    return found == m_columns.end() ? -1 : static_cast<int>(found - m_columns.begin());
}

int CColumnMap::NumberOf(std::string_view name) const {
    if (const int index = FieldIndex(name); index != kNoField) return index;
    const auto found = std::ranges::find(m_unknownNames, name);
    return found == m_unknownNames.end()
               ? kNoField
               : static_cast<int>(kCatalogueSize) + static_cast<int>(found - m_unknownNames.begin());
}

std::string_view CColumnMap::NameOf(int number) const {
    if (number < 0) return {};
    const auto index = static_cast<size_t>(number);
    if (index < kCatalogueSize) return Catalogue()[index].name;
    return index - kCatalogueSize < m_unknownNames.size() ? m_unknownNames[index - kCatalogueSize] : std::string_view{};
}

int CColumnMap::Register(std::string_view name) {
    if (const int number = NumberOf(name); number != kNoField) return number;
    m_unknownNames.emplace_back(name);
    return static_cast<int>(kCatalogueSize + m_unknownNames.size() - 1);
}

} // namespace vx
