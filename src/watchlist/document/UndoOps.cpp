#include "watchlist/document/UndoOps.h"

#include "alerts/rules/AlertsMap.h"
#include "settings/Settings.h"
#include "watchlist/document/CellFormatStore.h"

#include <algorithm>
#include <numeric>

namespace vx {

// Rows

void CRowOp::Touch(CUndoTarget& target, int row) {
    const uint32_t id = target.MakeId(row);
    if (id == 0) return;
    if (id >= m_seen.size()) m_seen.resize(std::max<size_t>(id + 1, m_seen.size() * 2));
    if (m_seen[id]) return;
    m_seen[id] = true;
    m_images.Add(id, target.Read(row));
}

// All rows are read before the first is written: a symbol may go from one of them to another.
void CRowOp::Exchange(CUndoTarget& target, STouched& touched) {
    const std::vector<uint32_t>& ids = m_images.Ids();
    const std::vector<int> rows = target.RowsOfIds(ids);
    CRowImages present;
    for (size_t i = 0; i < ids.size(); ++i)
        if (rows[i] != 0) present.Add(ids[i], target.Read(rows[i]));
    m_images.ForEach([&](size_t i, const SRowImage& image) {
        if (rows[i] != 0) target.Write(rows[i], image);
    });
    touched.rowIds.insert(touched.rowIds.end(), ids.begin(), ids.end());
    m_images = std::move(present);
}

bool CRowOp::DropUnchanged(CUndoTarget& target) {
    m_isEdit = false;
    const std::vector<uint32_t>& ids = m_images.Ids();
    const std::vector<int> rows = target.RowsOfIds(ids);
    CRowImages changed;
    m_images.ForEach([&](size_t i, const SRowImage& before) {
        SRowImage now = target.Read(rows[i]); // Of row 0, that is gone: blank.
        if (before == now) return;
        changed.Add(ids[i], before);
        now.shown = before.shown;
        now.typed = before.typed;
        m_isEdit = m_isEdit || before != now;
    });
    m_images = std::move(changed);
    return !m_images.Ids().empty();
}

// Formats

void CFormatOp::Touch(CUndoTarget& target, int row, int column) {
    const uint32_t id = row == 0 ? 0 : target.MakeId(row);
    if (row != 0 && id == 0) return;
    if (!m_seen.insert(uint64_t{id} << 32 | static_cast<uint32_t>(column)).second) return;
    const SCellFormat* format = target.Formats().Find(row, column);
    m_cells.push_back({id, column, format ? std::optional(*format) : std::nullopt});
}

std::vector<int> CFormatOp::Rows(const CUndoTarget& target) const {
    std::vector<uint32_t> ids(m_cells.size());
    std::transform(m_cells.begin(), m_cells.end(), ids.begin(), [](const SCell& cell) { return cell.rowId; });
    return target.RowsOfIds(ids);
}

void CFormatOp::Exchange(CUndoTarget& target, STouched& touched) {
    const std::vector<int> rows = Rows(target);
    CCellFormatStore& formats = target.Formats();
    for (size_t i = 0; i < m_cells.size(); ++i) {
        SCell& cell = m_cells[i];
        if (cell.rowId != 0 && rows[i] == 0) continue;
        const SCellFormat* format = formats.Find(rows[i], cell.column);
        std::optional<SCellFormat> present = format ? std::optional(*format) : std::nullopt;
        if (cell.format)
            formats.Set(rows[i], cell.column, *std::move(cell.format));
        else
            formats.Reset(rows[i], cell.column);
        cell.format = std::move(present);
        if (cell.rowId != 0) touched.rowIds.push_back(cell.rowId);
        touched.firstColumn = touched.firstColumn == 0 ? cell.column : std::min(touched.firstColumn, cell.column);
        touched.lastColumn = std::max(touched.lastColumn, cell.column);
    }
}

bool CFormatOp::DropUnchanged(CUndoTarget& target) {
    const std::vector<int> rows = Rows(target);
    size_t kept = 0;
    for (size_t i = 0; i < m_cells.size(); ++i) {
        const SCell& cell = m_cells[i];
        const bool gone = cell.rowId != 0 && rows[i] == 0;
        const SCellFormat* now = gone ? nullptr : target.Formats().Find(rows[i], cell.column);
        const bool same = now ? cell.format == *now : !cell.format;
        if (same) continue;
        if (kept != i) m_cells[kept] = std::move(m_cells[i]);
        ++kept;
    }
    m_cells.erase(m_cells.begin() + static_cast<std::ptrdiff_t>(kept), m_cells.end());
    return !m_cells.empty();
}

void CFormatColumnsOp::Exchange(CUndoTarget& target, STouched&) {
    CCellFormatStore& formats = target.Formats();
    switch (m_change) {
    case EFormatColumns::Insert:
        formats.RemoveColumn(m_from);
        m_change = EFormatColumns::Remove;
        break;
    case EFormatColumns::Remove:
        formats.InsertColumn(m_from);
        m_change = EFormatColumns::Insert;
        break;
    case EFormatColumns::Move:
        formats.MoveColumn(m_to, m_from);
        std::swap(m_from, m_to);
        break;
    }
}

// Rows that come, go and move

void CRowCountOp::Exchange(CUndoTarget& target, STouched& touched) {
    if (m_inserted) {
        Remove(target, touched);
        m_inserted = false;
    } else if (target.InsertRows(m_places)) {
        for (const SRowPlace& place : m_places) touched.rowIds.push_back(place.id);
        m_inserted = true;
    }
}

void CRowCountOp::Remove(CUndoTarget& target, STouched& touched) {
    std::vector<uint32_t> ids(m_places.size());
    std::transform(m_places.begin(), m_places.end(), ids.begin(), [](const SRowPlace& place) { return place.id; });
    const std::vector<int> rows = target.RowsOfIds(ids);
    for (size_t i = 0; i < m_places.size(); ++i) m_places[i].row = rows[i];
    std::erase_if(m_places, [](const SRowPlace& place) { return place.row == 0; });
    std::sort(m_places.begin(), m_places.end(), [](const SRowPlace& a, const SRowPlace& b) { return a.row < b.row; });
    if (!m_places.empty()) touched.gap = m_places.front().row;
    target.RemoveRows(m_places);
}

void CRowOrderOp::Exchange(CUndoTarget& target, STouched&) {
    std::vector<SRowPlace> places;
    const std::vector<int> rows = target.RowsOfIds(m_ids);
    for (size_t i = 0; i < m_ids.size(); ++i)
        if (rows[i] != 0) places.push_back({rows[i], m_ids[i]});
    if (places.empty()) return;
    std::vector<SRowPlace> present = places;
    std::sort(present.begin(), present.end(), [](const SRowPlace& a, const SRowPlace& b) { return a.row < b.row; });
    std::vector<int> newRowOf(static_cast<size_t>(present.back().row) + 1);
    std::iota(newRowOf.begin(), newRowOf.end(), 0);
    m_ids.resize(places.size());
    for (size_t i = 0; i < places.size(); ++i) {
        newRowOf[static_cast<size_t>(places[i].row)] = present[i].row;
        m_ids[i] = present[i].id;
    }
    target.Reorder(newRowOf);
}

bool CRowOrderOp::DropUnchanged(CUndoTarget& target) {
    const std::vector<int> rows = target.RowsOfIds(m_ids);
    const bool allThere = std::find(rows.begin(), rows.end(), 0) == rows.end();
    return !allThere || !std::is_sorted(rows.begin(), rows.end());
}

// What is hidden cannot be selected to show it.
void CHiddenRowsOp::Exchange(CUndoTarget& target, STouched& touched) {
    m_hidden = !m_hidden;
    for (const int row : target.RowsOfIds(m_ids)) target.SetHidden(row, m_hidden);
    if (!m_hidden) touched.rowIds.insert(touched.rowIds.end(), m_ids.begin(), m_ids.end());
}

// Layout and alerts

void CLayoutOp::Exchange(CUndoTarget& target, STouched& touched) {
    target.ChangeLayout(m_present, m_other);
    if (const auto [first, last] = DifferentColumns(m_present, m_other); first > 0) {
        touched.firstColumn = first;
        touched.lastColumn = last;
    }
    std::swap(m_present, m_other);
}

size_t CLayoutOp::Bytes() const {
    const auto bytes = [](const SLayout& layout) {
        size_t sum = sizeof layout;
        for (const sColumnInfo& column : layout.columns.Columns()) sum += sizeof column + column.name.capacity();
        return sum;
    };
    return bytes(m_other) + bytes(m_present);
}

namespace {

// For each alert of `other` the place of the same one in `present`, or -1. Those that the step changed so much that
// they are the same no more are paired in their order, while there are as many on both sides.
std::vector<int> PairAlerts(const CAlertArray& other, const CAlertArray& present) {
    std::vector<int> places(other.size(), -1);
    std::vector<bool> taken(present.size(), false);
    for (size_t i = 0; i < other.size(); ++i) {
        const auto same =
            std::find_if(present.begin(), present.end(), [&](const A_INFO& a) { return IsSameAlert(a, other[i]); });
        const auto place = static_cast<size_t>(same - present.begin());
        if (same == present.end() || taken[place]) continue;
        taken[place] = true;
        places[i] = static_cast<int>(place);
    }
    if (std::count(places.begin(), places.end(), -1) != std::count(taken.begin(), taken.end(), false)) return places;
    size_t next = 0;
    for (int& place : places) {
        if (place >= 0) continue;
        while (taken[next]) ++next;
        place = static_cast<int>(next++);
    }
    return places;
}

// Alerts fire and are armed again outside of steps, which moves none of them: that is no edit, and stays.
void KeepWhatBecameOf(const CAlertArray& present, const CAlertArray& now, CAlertArray& other) {
    if (present.size() != now.size()) return;
    const std::vector<int> places = PairAlerts(other, present);
    for (size_t i = 0; i < other.size(); ++i) {
        if (places[i] < 0) continue;
        const A_INFO& left = present[static_cast<size_t>(places[i])];
        const A_INFO& became = now[static_cast<size_t>(places[i])];
        if (other[i].value == left.value) other[i].value = became.value;
        if (became.enabled != left.enabled) other[i].enabled = became.enabled;
    }
}

} // namespace

CAlertOp::CAlertOp(CUndoTarget& target) {
    for (std::string& symbol : target.Alerts().Symbols()) {
        CAlertArray alerts = target.Alerts().Get(symbol);
        m_alerts.push_back({std::move(symbol), std::move(alerts), {}});
    }
}

bool CAlertOp::DropUnchanged(CUndoTarget& target) {
    m_isDifference = true;
    const CAlertsMap& now = target.Alerts();
    std::vector<SAlerts> changed;
    for (const std::string& symbol : now.Symbols()) {
        const auto before =
            std::lower_bound(m_alerts.begin(), m_alerts.end(), symbol,
                             [](const SAlerts& entry, const auto& name) { return entry.symbol < name; });
        if (before == m_alerts.end() || before->symbol != symbol) changed.push_back({symbol, {}, now.Get(symbol)});
    }
    for (SAlerts& entry : m_alerts) {
        entry.present = now.Get(entry.symbol);
        if (entry.other != entry.present) changed.push_back(std::move(entry));
    }
    m_alerts = std::move(changed);
    return !m_alerts.empty();
}

void CAlertOp::Exchange(CUndoTarget& target, STouched&) {
    if (!m_isDifference) DropUnchanged(target);
    CAlertsMap& map = target.Alerts();
    for (auto& [symbol, other, present] : m_alerts) {
        CAlertArray now = map.Get(symbol);
        KeepWhatBecameOf(present, now, other);
        map.RemoveSymbol(symbol);
        for (const A_INFO& alert : other) map.Add(symbol, alert);
        other = std::move(now);
        present = map.Get(symbol);
    }
}

size_t CAlertOp::Bytes() const {
    size_t sum = 0;
    for (const auto& [symbol, other, present] : m_alerts)
        sum += sizeof m_alerts.front() + symbol.capacity() + (other.capacity() + present.capacity()) * sizeof(A_INFO);
    return sum;
}

// Settings

CTextSettingOp::CTextSettingOp(const STextSetting& setting, CUndoTarget& target)
    : m_setting(setting), m_other(target.Settings().ReadTextOrDefault(setting)) {}

bool CTextSettingOp::DropUnchanged(CUndoTarget& target) {
    m_present = target.Settings().ReadTextOrDefault(m_setting);
    return m_present != m_other;
}

void CTextSettingOp::Exchange(CUndoTarget& target, STouched&) {
    CSettings& settings = target.Settings();
    if (settings.ReadTextOrDefault(m_setting) == m_present && settings.WriteText(m_setting, m_other))
        std::swap(m_present, m_other);
}

} // namespace vx
