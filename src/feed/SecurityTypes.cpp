#include "feed/SecurityTypes.h"

#include <algorithm>

namespace vx {

namespace {

bool IsEntry(int id) { return id >= 0 && id < kTableEntries; }

} // namespace

void CSecurityTypes::Load() {
    if (IsLoaded() || !Exchange("SST\r\n")) return;
    const std::lock_guard guard(m_lock);
    ReadTableReply(Reply(), [&](int id, std::span<const std::string_view> texts) {
        Entry& entry = m_entries[static_cast<size_t>(id)];
        // Kept in reverse: the first text of the line stands last.
        for (size_t i = 0; i < std::min(texts.size(), entry.size()); ++i) entry[entry.size() - 1 - i] = texts[i];
        ++m_count;
    });
    m_loaded = true;
}

bool CSecurityTypes::IsLoaded() const {
    const std::lock_guard guard(m_lock);
    return m_loaded;
}

int CSecurityTypes::Count() const {
    const std::lock_guard guard(m_lock);
    return m_count;
}

bool CSecurityTypes::Has(int id) const {
    const Entry entry = At(id);
    return std::ranges::any_of(entry, [](const std::string& text) { return !text.empty(); });
}

CSecurityTypes::Entry CSecurityTypes::At(int id) const {
    const std::lock_guard guard(m_lock);
    return IsEntry(id) ? m_entries[static_cast<size_t>(id)] : Entry{};
}

std::string_view CSecurityTypes::Name(int id) const {
    const std::lock_guard guard(m_lock);
    return IsEntry(id) ? std::string_view(m_entries[static_cast<size_t>(id)][0]) : std::string_view{};
}

} // namespace vx
