#include "feed/ListedMarkets.h"

#include <algorithm>

namespace vx {

namespace {

bool IsEntry(int id) { return id >= 0 && id < kTableEntries; }

} // namespace

void CListedMarkets::Load() {
    if (IsLoaded() || !Exchange("SLM\r\n")) return;
    const std::lock_guard guard(m_lock);
    ReadTableReply(Reply(), [&](int id, std::span<const std::string_view> texts) {
        Entry& entry = m_entries[static_cast<size_t>(id)];
        for (size_t i = 0; i < std::min(texts.size(), entry.size()); ++i) entry[i] = texts[i];
        ++m_count;
    });
    m_loaded = true;
}

bool CListedMarkets::IsLoaded() const {
    const std::lock_guard guard(m_lock);
    return m_loaded;
}

int CListedMarkets::Count() const {
    const std::lock_guard guard(m_lock);
    return m_count;
}

bool CListedMarkets::Has(int id) const {
    const Entry entry = At(id);
    return std::ranges::any_of(entry, [](const std::string& text) { return !text.empty(); });
}

CListedMarkets::Entry CListedMarkets::At(int id) const {
    const std::lock_guard guard(m_lock);
    return IsEntry(id) ? m_entries[static_cast<size_t>(id)] : Entry{};
}

std::string_view CListedMarkets::Name(int id) const {
    const std::lock_guard guard(m_lock);
    return IsEntry(id) ? std::string_view(m_entries[static_cast<size_t>(id)][0]) : std::string_view{};
}

} // namespace vx
