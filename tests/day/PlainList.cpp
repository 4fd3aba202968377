// SPDX-License-Identifier: MIT
#include "day/PlainList.h"

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

namespace vx::test {

namespace {

std::string Upper(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

const CPlainList::SRow* Find(const std::vector<CPlainList::SRow>& rows, uint32_t id) {
    const auto found = std::ranges::find(rows, id, &CPlainList::SRow::id);
    return found == rows.end() ? nullptr : &*found;
}

} // namespace

std::string CPlainList::Look() const {
    std::string out;
    for (const SRow& row : rows) {
        const char* mark = row.kind == EKind::Heading ? "#" : row.kind == EKind::Rejected ? "!" : "";
        out += fmt::format("{}{}{}{}|", mark, row.text, row.note.empty() ? "" : "~" + row.note, row.hidden ? "^" : "");
    }
    return out;
}

std::string CPlainList::AlertLook() const {
    std::string out;
    for (const auto& [symbol, list] : alerts)
        for (const SAlert& alert : list) out += fmt::format("{}>{}{};", symbol, alert.above, alert.armed ? "" : " off");
    return out;
}

std::set<std::string> CPlainList::Watched() const {
    std::set<std::string> out;
    for (const SRow& row : rows)
        if (row.kind == EKind::Symbol) out.insert(row.text);
    return out;
}

int CPlainList::LastUsedRow() const {
    for (size_t i = rows.size(); i > 0; --i)
        if (rows[i - 1].kind != EKind::Empty) return static_cast<int>(i);
    return 0;
}

CPlainList::SRow& CPlainList::At(int row) {
    while (rows.size() < static_cast<size_t>(row)) rows.push_back({++m_lastId, EKind::Empty, {}, {}, false});
    return rows[static_cast<size_t>(row - 1)];
}

void CPlainList::Tidy() {
    while (!rows.empty() && rows.back().IsBlank()) rows.pop_back();
}

void CPlainList::Fill(int row, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        SRow& to = At(row++);
        if (text.empty()) continue;
        const bool heading = text.starts_with('#');
        to.kind = heading ? EKind::Heading : EKind::Symbol;
        to.text = heading ? text.substr(1) : Upper(text);
    }
    Tidy();
}

void CPlainList::Insert(int row, int count) {
    if (static_cast<size_t>(row) > rows.size()) return;
    std::vector<SRow> fresh;
    for (int i = 0; i < count; ++i) fresh.push_back({++m_lastId, EKind::Empty, {}, {}, false});
    rows.insert(rows.begin() + row - 1, fresh.begin(), fresh.end());
}

void CPlainList::Delete(int row, int count) {
    const int end = std::min(row - 1 + count, static_cast<int>(rows.size()));
    if (row <= end) rows.erase(rows.begin() + row - 1, rows.begin() + end);
    Tidy();
}

void CPlainList::Move(int row, int count, int before) {
    At(std::max(row + count - 1, before - 1));
    const auto first = rows.begin() + row - 1, last = first + count;
    if (before > row + count)
        std::rotate(first, last, rows.begin() + before - 1);
    else if (before < row)
        std::rotate(rows.begin() + before - 1, first, last);
    Tidy();
}

void CPlainList::Empty(int row) {
    At(row).kind = EKind::Empty;
    At(row).text.clear();
    Tidy();
}

void CPlainList::SetNote(int row, std::string_view text) {
    At(row).note = text;
    Tidy();
}

void CPlainList::SetHidden(int row, bool hidden) {
    At(row).hidden = hidden;
    Tidy();
}

void CPlainList::Reorder(const std::vector<int>& order) {
    std::vector<SRow> sorted;
    for (const int row : order) sorted.push_back(row > 0 ? At(row) : SRow{++m_lastId, EKind::Empty, {}, {}, false});
    rows = std::move(sorted);
    Tidy();
}

void CPlainList::Reject(const std::string& symbol) {
    for (SRow& row : rows)
        if (row.kind == EKind::Symbol && row.text == symbol) row.kind = EKind::Rejected;
}

std::vector<double> CPlainList::Price(const std::string& symbol, double price) {
    std::vector<double> fired;
    if (!Watched().contains(symbol) || !alerts.contains(symbol)) return fired;
    for (SAlert& alert : alerts[symbol])
        if (alert.armed && price > alert.above) {
            alert.armed = false;
            fired.push_back(alert.above);
        }
    return fired;
}

void CPlainList::End(bool keep) {
    if (!keep) return;
    SStep step{m_before, {}};
    step.to = *this;
    m_undo.push_back(std::move(step));
    m_redo.clear();
}

void CPlainList::Cancel() {
    rows = m_before.rows;
    alerts = m_before.alerts;
    looks = m_before.looks;
}

// The order and the rows that the edit changed; an alert that both states have keeps what became of it.
void CPlainList::Become(const SState& from, const SState& to) {
    std::vector<SRow> next;
    for (const SRow& row : to.rows) {
        const SRow* was = Find(from.rows, row.id);
        const SRow* now = Find(rows, row.id);
        next.push_back(was && *was == row && now ? *now : row);
    }
    rows = std::move(next);
    looks = to.looks;
    Tidy();
    Alerts kept;
    for (const auto& [symbol, list] : to.alerts)
        for (SAlert alert : list) {
            for (const SAlert& now : alerts[symbol])
                if (now.above == alert.above) alert.armed = now.armed;
            kept[symbol].push_back(alert);
        }
    alerts = std::move(kept);
}

// What was rejected since stays so.
void CPlainList::TakeRejections(SStep& step) const {
    for (std::vector<SRow>* out : {&step.from.rows, &step.to.rows})
        for (SRow& row : *out)
            if (const SRow* now = Find(rows, row.id); now && now->kind == EKind::Rejected && now->text == row.text)
                row.kind = EKind::Rejected;
}

bool CPlainList::Undo() {
    if (m_undo.empty()) return false;
    SStep step = std::move(m_undo.back());
    m_undo.pop_back();
    for (auto& [symbol, list] : step.to.alerts) // Comes back as it is now.
        for (SAlert& alert : list)
            for (const SAlert& now : alerts[symbol])
                if (now.above == alert.above) alert.armed = now.armed;
    TakeRejections(step);
    Become(step.to, step.from);
    m_redo.push_back(std::move(step));
    return true;
}

bool CPlainList::Redo() {
    if (m_redo.empty()) return false;
    SStep step = std::move(m_redo.back());
    m_redo.pop_back();
    TakeRejections(step);
    Become(step.from, step.to);
    m_undo.push_back(std::move(step));
    return true;
}

void CPlainList::Reopen() {
    m_undo.clear();
    m_redo.clear();
    for (SRow& row : rows)
        if (row.kind == EKind::Rejected) row.kind = EKind::Symbol;
}

} // namespace vx::test
