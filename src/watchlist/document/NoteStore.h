#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// Hears of every note before it changes.
///
/// Thread  GUI thread only
class CNoteObserver {
public:
    virtual ~CNoteObserver() = default;
    virtual void BeforeNote(int row) = 0;
};

/// The notes of a watchlist: a short text for a row, of one line or several.
///
/// Shape   grid row number (1 and up) -> Windows-1252 text, lines ended by CR LF; a note never holds ";", ":" or ",",
///         which its text in the file needs: they are left out when it is set. Empty notes are not kept
/// Thread  GUI thread only
class CNoteStore {
public:
    /// Who is told before a note is set or removed; null, as at first, is nobody. Clear and rows that move are not
    /// told.
    void SetObserver(CNoteObserver* observer) { m_observer = observer; }

    /// The note of a row, or an empty text.
    std::string_view Get(int row) const;
    bool Has(int row) const { return m_notes.count(row) != 0; }
    /// Sets a row's note; when nothing remains of the text, the row's note goes. A row below 1 is ignored.
    void Set(int row, std::string_view text);
    void Remove(int row);
    void Clear() { m_notes.clear(); }
    int Count() const { return static_cast<int>(m_notes.size()); }
    int LastRow() const { return m_notes.empty() ? 0 : m_notes.rbegin()->first; }

    /// As in CRowTextMap: notes stay with their rows.
    void ShiftDown(int firstRow, int count);
    void ShiftUp(int firstRow, int count);
    void Reorder(const std::vector<int>& newRowOf);

    auto begin() const { return m_notes.begin(); }
    auto end() const { return m_notes.end(); }

    /// A note's text without the characters that it may not hold.
    static std::string Cleaned(std::string_view text);

private:
    CNoteObserver* m_observer = nullptr;
    std::map<int, std::string> m_notes;
};

} // namespace vx
