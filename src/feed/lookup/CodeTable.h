#pragma once

#include "feed/lookup/LookupSystemInfo.h"

#include <algorithm>
#include <array>

namespace vx {

/// A table of texts by a code from 0 to 255, loaded from the lookup port.
///
/// Shape   kTexts texts for each id; any id outside the table has empty ones
/// Errors  a load leaves the table as it was when the lookup port cannot be reached or does not answer; a refused
///         request and a connection that the feed client ends count as loaded
/// Owns    the texts; a view of one is good until the next load
/// Thread  Load as CLookupSystemInfo; the readers any
template <size_t kTexts> class CCodeTable : public CLookupSystemInfo {
public:
    using Entry = std::array<std::string, kTexts>;

    using CLookupSystemInfo::CLookupSystemInfo;

    bool IsLoaded() const {
        const std::lock_guard guard(m_lock);
        return m_loaded;
    }
    /// Lines that were taken; one id may have had several.
    int Count() const {
        const std::lock_guard guard(m_lock);
        return m_count;
    }
    Entry At(int id) const {
        const std::lock_guard guard(m_lock);
        return IsCode(id) ? m_entries[static_cast<size_t>(id)] : Entry{};
    }
    /// Whether the id has any text.
    bool Has(int id) const {
        const Entry entry = At(id);
        return std::ranges::any_of(entry, [](const std::string& text) { return !text.empty(); });
    }
    /// The first text of an id, by which it is shown.
    std::string_view Name(int id) const {
        const std::lock_guard guard(m_lock);
        return IsCode(id) ? std::string_view(m_entries[static_cast<size_t>(id)].front()) : std::string_view{};
    }

protected:
    enum class EOrder { AsSent, Reversed };

    /// Loads the table unless it is loaded; texts that a line does not have stay as they are.
    void LoadTable(std::string_view request, EOrder order) {
        if (IsLoaded() || !Exchange(request)) return;
        const std::lock_guard guard(m_lock);
        ReadTableReply(Reply(), [&](int id, std::span<const std::string_view> texts) {
            Entry& entry = m_entries[static_cast<size_t>(id)];
            for (size_t i = 0; i < std::min(texts.size(), kTexts); ++i)
                entry[order == EOrder::AsSent ? i : kTexts - 1 - i] = texts[i];
            ++m_count;
        });
        m_loaded = true;
    }

private:
    static bool IsCode(int id) { return id >= 0 && id < kTableEntries; }

    bool m_loaded = false;
    int m_count = 0;
    std::array<Entry, kTableEntries> m_entries;
};

} // namespace vx
