// SPDX-License-Identifier: MIT
#include "day/TradingDay.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/FiredAlert.h"
#include "day/PlainList.h"
#include "support/Random.h"
#include "watchlist/FileFixture.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/edit/ColumnMoves.h"
#include "watchlist/edit/PasteText.h"
#include "watchlist/edit/SortCommands.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/RecoveryKeeper.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>

namespace vx::test {

namespace {

using EKind = SDayStep::EKind;

constexpr std::array kKindNames = {"paste", "insert", "delete", "move",   "empty",  "note",     "hide",
                                   "sort",  "format", "column", "option", "alert",  "together", "price",
                                   "undo",  "redo",   "wait",   "save",   "reopen", "kill"};
static_assert(kKindNames.size() == static_cast<size_t>(EKind::Count));
// How often each comes, of a hundred.
constexpr std::array kChances = {12, 5, 5, 5, 4, 5, 4, 4, 5, 5, 3, 7, 8, 10, 9, 4, 2, 1, 1, 1};

constexpr std::array kTexts = {"ibm", "MSFT", "ge", "T", "aa", "nope1", "NOPE2", "#Banks", "#Big tech names", ""};
constexpr std::array kSymbols = {"AA", "GE", "IBM", "MSFT", "T"};
constexpr std::array kFields = {"Bid", "Ask", "Volume", "% Chg", "Open", "Settle"};
constexpr std::array kLookKeys = {"TrailingRows", "LockedColumns", "ShowToolBar", "Columns",
                                  "Formatting",   "Vx.Columns",    "Vx.Looks",    "Vx.SortAcrossHeadings"};
constexpr uint32_t kRows = 14;
constexpr int64_t kMostPauseMs = 950; // Between two steps of a user who does not rest.
constexpr int64_t kPromisedMs = 5000; // No kill takes more than the work of so long.
constexpr int64_t kMostRestMs = 4500;

bool IsUnknown(std::string_view symbol) { return symbol.starts_with("NOPE"); }

/// The real program without its window, and the plain list beside it.
class CWorld : public CFileFixture, private CFiredAlertReceiver {
public:
    CWorld() {
        doc.AlertRules().SetReceiver(this);
        doc.SetFeedReady();
        boxes.answer = EBoxAnswer::Yes;
        keeper.emplace(doc, file, state.Path());
        m_saved.looks = plain.looks = Looks();
        Remember();
    }

    /// What does not agree after the step; empty for nothing.
    std::string Take(const SDayStep& step) {
        m_fault.clear();
        const std::string before = plain.Look() + plain.AlertLook() + plain.looks;
        const size_t steps = doc.Undo().UndoCount();
        plain.Begin();
        const bool isEdit = Edit(step);
        if (isEdit) {
            const bool made = doc.Undo().UndoCount() > steps;
            plain.looks = Looks();
            plain.End(made);
            if (!made && before != plain.Look() + plain.AlertLook() + plain.looks) m_fault = "a change made no step";
        } else {
            Other(step);
        }
        FeedAnswers();
        now += 50 + step.c % (kMostPauseMs - 50);
        keeper->Poll({}, now);
        Compare();
        Remember();
        return m_fault;
    }

private:
    void TestBody() override {}

    void PostFired(std::string record, const A_INFO&) override { m_fired.push_back(ReadAlertRecord(record).threshold); }
    void PostFiredNews(SAlertRecord, const A_INFO&) override {}

    bool Edit(const SDayStep& step) {
        const int row = 1 + static_cast<int>(step.a % kRows), count = 1 + static_cast<int>(step.b % 3);
        switch (step.kind) {
        case EKind::Paste: {
            std::vector<std::string> texts;
            std::string text;
            for (int i = 0; i < count; ++i) {
                texts.emplace_back(kTexts[(step.c / (1U << (4 * i))) % kTexts.size()]);
                text += texts.back() + "\n";
            }
            if (text.find_first_not_of('\n') == std::string::npos) return true;
            PasteText(doc, row, 1, text);
            plain.Fill(row, texts);
            return true;
        }
        case EKind::Insert:
            doc.InsertRows(row, count);
            plain.Insert(row, count);
            return true;
        case EKind::Delete:
            doc.DeleteRows(row, count);
            plain.Delete(row, count);
            return true;
        case EKind::Move: {
            const int last = std::max(1, plain.LastUsedRow());
            const int first = 1 + row % last, many = std::min(count, last - first + 1);
            const int before = 1 + static_cast<int>(step.c) % (last + 1);
            doc.MoveRows(first, many, before);
            plain.Move(first, many, before);
            return true;
        }
        case EKind::Empty: {
            doc.Edit("empty row", [&](CWatchlistEdit& edit) { edit.EmptyRow(row); });
            plain.Empty(row);
            return true;
        }
        case EKind::Note: {
            const std::string note = step.c % 3 == 0 ? std::string() : "n" + std::to_string(step.c % 100);
            doc.Edit("note", [&](CWatchlistEdit& edit) {
                edit.Notes().Set(row, note);
                edit.ShowText(row, {});
            });
            plain.SetNote(row, note);
            return true;
        }
        case EKind::Hide: {
            const int used = 1 + row % std::max(1, plain.LastUsedRow());
            if (plain.LastUsedRow() == 0) return true;
            doc.SetRowsHidden({used}, step.b % 2 == 0);
            plain.SetHidden(used, step.b % 2 == 0);
            return true;
        }
        case EKind::Sort:
            Sort();
            return true;
        case EKind::Format: {
            SCellFormat format;
            format.decimals = static_cast<int>(step.b % 6);
            const int column = static_cast<int>(step.c % static_cast<uint32_t>(doc.Columns().Count()));
            const int formatted = column == 0 || step.b % 5 == 0 ? 0 : row;
            doc.Edit("format", [&](CWatchlistEdit& edit) { edit.Formats().Set(formatted, column, format); });
            return true;
        }
        case EKind::Column:
            EditColumns(step);
            return true;
        case EKind::Option: {
            doc.Edit("option", [&](CWatchlistEdit& edit) {
                SWatchlistOptions& options = edit.Options();
                (step.a % 3 == 0 ? options.trailingRows : options.lockedColumns) = static_cast<int>(step.b % 4);
                options.sortAcrossHeadings = step.c % 4 == 0;
                options.showToolBar = step.c % 5 != 0;
            });
            return true;
        }
        case EKind::Alert: {
            const std::string symbol = kSymbols[step.a % kSymbols.size()];
            const double above = step.b % 40 + ++m_alerts / 64.0;
            A_INFO alert;
            alert.enabled = 1;
            alert.fieldId = AlertFieldId("Last").value();
            alert.condition = 1;
            alert.value = above;
            doc.Edit("new alert", [&](CWatchlistEdit& edit) { edit.Alerts().Add(symbol, alert); });
            plain.AddAlert(symbol, above);
            return true;
        }
        case EKind::Together: {
            doc.Edit("together", [&](CWatchlistEdit& edit) {
                for (uint32_t i = 1 + step.b % 7; i > 0; --i) {
                    Edit({static_cast<EKind>((step.a >> i) % static_cast<uint32_t>(EKind::Together)), step.a / i,
                          step.b / i, step.c / i});
                    if (step.c % 5 != i) continue;
                    edit.Cancel();
                    plain.Cancel();
                }
            });
            return true;
        }
        default:
            return false;
        }
    }

    void EditColumns(const SDayStep& step) {
        const int columns = doc.Columns().Count() - 1;
        const int at = 1 + static_cast<int>(step.b) % columns, to = 1 + static_cast<int>(step.c) % columns;
        switch (step.a % 4) {
        case 0:
            InsertColumn(doc, at, kFields[step.c % kFields.size()]);
            return;
        case 1:
            if (columns > 3) RemoveColumn(doc, at);
            return;
        case 2:
            return MoveColumn(doc, at, to);
        default:
            return SetColumnWidth(doc, at, static_cast<int>(step.c % 4) * 40);
        }
    }

    // The order is the program's; that headings stay, and what is under them, is the plain list's.
    void Sort() {
        const int rows = static_cast<int>(plain.rows.size());
        std::vector<uint32_t> ids;
        for (int row = 1; row <= rows; ++row) ids.push_back(doc.RowId(row));
        ManualSort(doc, {1, std::max(1, doc.RowCount()), 1, 1, 1});
        std::vector<int> order(static_cast<size_t>(rows), 0);
        for (int row = 1; row <= rows; ++row) {
            const int to = doc.RowOfId(ids[static_cast<size_t>(row - 1)]);
            if (to < 1) {
                m_fault = "a sort lost a row";
                return;
            }
            if (static_cast<size_t>(to) > order.size()) order.resize(static_cast<size_t>(to), 0);
            order[static_cast<size_t>(to - 1)] = row;
        }
        int headings = 0;
        std::vector<int> blockOf;
        for (const CPlainList::SRow& row : plain.rows)
            blockOf.push_back(row.kind == CPlainList::EKind::Heading ? -++headings : headings);
        headings = 0;
        for (const int row : order) {
            if (row == 0 || doc.Options().sortAcrossHeadings) continue;
            const int block = blockOf[static_cast<size_t>(row - 1)];
            if (block < 0 ? block != -++headings : block != headings) m_fault = "a sort mixed what is under headings";
        }
        plain.Reorder(order);
    }

    void Other(const SDayStep& step) {
        switch (step.kind) {
        case EKind::Price: {
            const std::string symbol = kSymbols[step.a % kSymbols.size()];
            const uint32_t price = 1 + step.b % 49;
            if (!m_wire.contains(symbol)) return;
            FeedSets(symbol, "Last", std::to_string(price));
            if (std::exchange(m_fired, {}) != plain.Price(symbol, price)) m_fault = "other alerts fired";
            return;
        }
        case EKind::Undo:
            if (doc.Undo().Undo().done != plain.Undo()) m_fault = "only one could undo";
            return;
        case EKind::Redo:
            if (doc.Undo().Redo().done != plain.Redo()) m_fault = "only one could redo";
            return;
        case EKind::Wait:
            now += step.a % kMostRestMs;
            return;
        case EKind::Save:
            if (!(file.Path().empty() ? SaveAs("day.vxw") : Save()).IsDone()) m_fault = "the save failed";
            m_saved = plain;
            return;
        case EKind::Reopen:
            OpenSaved();
            plain = m_saved;
            return plain.Reopen();
        case EKind::Kill:
            return Kill();
        default:
            return;
        }
    }

    void OpenSaved() {
        if (const std::string path = file.Path(); !path.empty()) {
            if (!file.Open(path).IsDone()) m_fault = "the file could not be opened";
        } else {
            doc.NewDocument();
            file.Forget();
        }
    }

    // What comes back is a state of the last few seconds.
    void Kill() {
        keeper->Flush();
        const std::string path = file.Path();
        keeper.reset();
        std::vector<SRecovery> found = FindRecoveries(state.Path());
        if (found.size() > 1) m_fault = "several recoveries";
        if (found.empty())
            OpenSaved();
        else
            file.OpenRecovered(found.front());
        if (file.Path() != path) m_fault = "recovery forgot the file";
        keeper.emplace(doc, file, state.Path());
        if (!found.empty()) keeper->Adopt(found.front());
        FeedAnswers();
        const int64_t oldest = now - kPromisedMs - 2 * kMostPauseMs;
        const std::string look = Look(), alerts = AlertLook(), looks = Looks();
        int64_t replacedMs = now;
        for (auto past = m_history.rbegin(); past != m_history.rend() && replacedMs >= oldest; ++past) {
            if (past->second.Look() == look && past->second.AlertLook() == alerts && past->second.looks == looks) {
                plain = past->second;
                return plain.Reopen();
            }
            replacedMs = past->first;
        }
        m_fault = fmt::format("after a kill there is no state of the last seconds: {} {}", look, alerts);
    }

    // Asks and answers until there is silence. What nobody knows is refused.
    void FeedAnswers() {
        for (std::vector<std::string> sent = feed.Take(); !sent.empty(); sent = feed.Take()) {
            for (const std::string& command : sent) {
                const std::string symbol = command.substr(1, command.find_last_not_of("\r\n"));
                if (command.front() == 'w') m_wire.insert(symbol);
                if (command.front() == 'r') m_wire.erase(symbol);
            }
            const std::set<std::string> asked = m_wire;
            for (const std::string& symbol : asked) {
                if (!IsUnknown(symbol)) continue;
                m_wire.erase(symbol);
                doc.SymbolNotFound(symbol);
                plain.Reject(symbol);
            }
        }
        for (CPlainList::SRow& row : plain.rows)
            if (row.kind == CPlainList::EKind::Symbol && IsUnknown(row.text)) row.kind = CPlainList::EKind::Rejected;
    }

    std::string Look() {
        std::string out;
        const std::vector<int> hidden = doc.HiddenRows();
        const int last = std::max({doc.LastUsedRow(), doc.Notes().LastRow(), hidden.empty() ? 0 : hidden.back()});
        for (int row = 1; row <= last; ++row) {
            const std::string_view note = doc.Notes().Get(row), rejected = doc.RejectedSymbol(row);
            if (!rejected.empty())
                out += fmt::format("!{}", rejected);
            else if (doc.RowKind(row) == ERowKind::Annotation)
                out += fmt::format("#{}", doc.AnnotationText(row));
            else
                out += doc.RowSymbol(row);
            out += fmt::format("{}{}{}|", note.empty() ? "" : "~", note, doc.IsRowHidden(row) ? "^" : "");
        }
        return out;
    }
    /// The lines of the file that tell of columns, formats and options.
    std::string Looks() const {
        std::string out;
        const std::string text = Written();
        for (size_t begin = 0; begin < text.size();) {
            const size_t end = text.find("\r\n", begin);
            const std::string line = text.substr(begin, end - begin);
            if (std::ranges::count(kLookKeys, line.substr(0, line.find('='))) != 0) out += line + "\n";
            begin = end + 2;
        }
        return out;
    }
    std::string AlertLook() {
        std::string out;
        for (const char* symbol : kSymbols)
            for (const A_INFO& alert : doc.Alerts().Get(symbol))
                out += fmt::format("{}>{}{};", symbol, alert.value, alert.enabled != 0 ? "" : " off");
        return out;
    }

    void Compare() {
        if (!m_fault.empty()) return;
        if (Look() != plain.Look())
            m_fault = fmt::format("rows\n  {}\n  {}", Look(), plain.Look());
        else if (AlertLook() != plain.AlertLook())
            m_fault = fmt::format("alerts\n  {}\n  {}", AlertLook(), plain.AlertLook());
        else if (Looks() != plain.looks)
            m_fault = fmt::format("columns, formats, options\n  {}\n  {}", Looks(), plain.looks);
        else if (m_wire != plain.Watched())
            m_fault = "other symbols are watched than are in rows";
        else if (doc.Undo().UndoCount() != plain.UndoCount())
            m_fault = fmt::format("steps: {} and {}", doc.Undo().UndoCount(), plain.UndoCount());
        else if (!boxes.shown.empty() && boxes.shown.back().icon == EBoxIcon::Stop)
            m_fault = "an error was told: " + boxes.shown.back().text;
    }
    void Remember() {
        m_history.emplace_back(now, plain);
        if (m_history.size() > 400) m_history.erase(m_history.begin(), m_history.begin() + 200);
    }

    int64_t now = 0;
    CPlainList plain, m_saved;
    std::optional<CRecoveryKeeper> keeper;
    std::set<std::string> m_wire;
    std::vector<double> m_fired;
    std::vector<std::pair<int64_t, CPlainList>> m_history;
    int m_alerts = 0;
    std::string m_fault;
};

} // namespace

Day MakeDay(uint64_t seed, int steps) {
    CRandom random(seed);
    Day day;
    for (int i = 0; i < steps; ++i) {
        uint32_t chance = random.Below(100);
        size_t kind = 0;
        while (kind + 1 < kChances.size() && chance >= static_cast<uint32_t>(kChances[kind]))
            chance -= static_cast<uint32_t>(kChances[kind++]);
        const auto number = [&] { return static_cast<uint32_t>(random.Next() >> 40); };
        day.push_back({static_cast<EKind>(kind), number(), number(), number()});
    }
    return day;
}

std::string LiveThrough(const Day& day) {
    CWorld world;
    for (size_t i = 0; i < day.size(); ++i)
        if (const std::string fault = world.Take(day[i]); !fault.empty())
            return fmt::format("step {} ({}): {}", i + 1, kKindNames[static_cast<size_t>(day[i].kind)], fault);
    return {};
}

std::string Shortest(Day day) {
    for (size_t piece = std::max<size_t>(day.size() / 2, 1); piece > 0; piece /= 2)
        for (size_t at = 0; at < day.size();) {
            Day shorter = day;
            const auto begin = shorter.begin() + static_cast<std::ptrdiff_t>(at);
            shorter.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(piece, shorter.size() - at)));
            if (LiveThrough(shorter).empty())
                at += piece;
            else
                day = std::move(shorter);
        }
    std::string out;
    for (const SDayStep& step : day)
        out += fmt::format("  {} {} {} {}\n", kKindNames[static_cast<size_t>(step.kind)], step.a, step.b, step.c);
    return out + LiveThrough(day);
}

} // namespace vx::test
