// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vx::test {

/// A watchlist as lists and maps without any cleverness: what the real document is compared with.
///
/// Undo keeps the whole list before and after an edit. What the feed did to a row since stays where the edit did not
/// touch the row.
class CPlainList {
public:
    enum class EKind { Empty, Symbol, Heading, Rejected };
    struct SRow {
        uint32_t id = 0;
        EKind kind = EKind::Empty;
        std::string text, note;
        bool hidden = false;

        bool operator==(const SRow&) const = default;
        bool IsBlank() const { return kind == EKind::Empty && note.empty() && !hidden; }
    };
    struct SAlert {
        double above = 0;
        bool armed = true;

        bool operator==(const SAlert&) const = default;
    };
    using Alerts = std::map<std::string, std::vector<SAlert>>;

    /// The rows from 1 on, as a text to be compared.
    std::string Look() const;
    std::string AlertLook() const;
    /// The symbols that are in a row and were not rejected.
    std::set<std::string> Watched() const;
    int LastUsedRow() const;

    // Edits. Rows count from 1.

    void Fill(int row, const std::vector<std::string>& texts);
    void Insert(int row, int count);
    void Delete(int row, int count);
    void Move(int row, int count, int before);
    void Empty(int row);
    void SetNote(int row, std::string_view text);
    void SetHidden(int row, bool hidden);
    /// Takes over an order: order[i] is the number of the row that is row i + 1 from here on, 0 for a fresh one.
    void Reorder(const std::vector<int>& order);
    void AddAlert(const std::string& symbol, double above) { alerts[symbol].push_back({above, true}); }

    // What the feed does.

    void Reject(const std::string& symbol);
    /// The symbol's price. Returns the thresholds of the alerts that fire.
    std::vector<double> Price(const std::string& symbol, double price);

    // Undo. Each edit is between Begin and End; keep: false when it was none.

    void Begin() { m_before = *this; }
    void End(bool keep);
    /// Takes back what was edited since Begin.
    void Cancel();
    bool Undo();
    bool Redo();
    /// Another list, or this one read again: what was rejected is asked for again, and there is nothing to undo.
    void Reopen();
    size_t UndoCount() const { return m_undo.size(); }
    size_t RedoCount() const { return m_redo.size(); }

    std::vector<SRow> rows;
    Alerts alerts;
    std::string looks; ///< Columns, formats and options as the program wrote them after the last edit of theirs.

private:
    struct SState {
        std::vector<SRow> rows;
        Alerts alerts;
        std::string looks;

        SState& operator=(const CPlainList& list) {
            rows = list.rows;
            alerts = list.alerts;
            looks = list.looks;
            return *this;
        }
    };
    struct SStep {
        SState from, to;
    };

    SRow& At(int row);
    void Tidy();
    void TakeRejections(SStep& step) const;
    void Become(const SState& from, const SState& to);

    uint32_t m_lastId = 0;
    SState m_before;
    std::vector<SStep> m_undo, m_redo;
};

} // namespace vx::test
