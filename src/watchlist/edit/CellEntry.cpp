// SPDX-License-Identifier: MIT
#include "watchlist/edit/CellEntry.h"

#include "base/MessageBox.h"
#include "base/Text.h"
#include "data/text/CellText.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/RowCellText.h"

#include <algorithm>

namespace vx {

namespace {

constexpr char kAnnotationMark = '#';
constexpr char kSymbolMark = '=';
constexpr std::ptrdiff_t kMostBlanksInSymbol = 1;

bool BeginsWith(std::string_view text, char mark) { return !text.empty() && text.front() == mark; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

std::string PlainText(std::string_view text) {
    std::string plain;
    AppendWithoutControls(plain, text.substr(0, kMostCellText));
    return plain;
}

std::string UsableText(std::string_view typed) {
    std::string text = PlainText(typed);
    if (text.find(',') != std::string::npos) text = kCommaSymbol;
    return text;
}

std::string StepName(std::string_view typed) {
    constexpr size_t kMostShown = 20;
    if (typed.empty()) return "clear cell";
    std::string name = "type \"";
    name += typed.substr(0, kMostShown);
    name += typed.size() > kMostShown ? "...\"" : "\"";
    std::replace_if(name.begin(), name.end(), IsControl, ' ');
    return name;
}

void Tell(const char* text) { ShowMessageBox({text, {}, EBoxButtons::Ok, EBoxIcon::None}); }

/// One cell of a document whose editing has ended.
class CCellEntry {
public:
    /// typed: what to remember where the row comes to show something else.
    CCellEntry(const CWatchlistDoc& doc, CWatchlistEdit& edit, int row, int column, std::string_view typed = {})
        : m_doc(doc), m_edit(edit), m_row(row), m_column(column),
          m_inSymbolColumn(doc.Columns().PositionOf(kSymbolColumn) == column), m_typed(PlainText(TrimBlanks(typed))) {}

    void Enter(const std::string& text) {
        if (text.empty()) return Clear();
        if (TrimBlanks(text).empty()) return m_edit.Cancel(); // Nothing was said, so nothing may be lost.
        switch (m_doc.RowKind(m_row)) {
        case ERowKind::Symbol:
            return m_inSymbolColumn ? Retype(text) : RefuseInSymbolRow(text);
        case ERowKind::Annotation:
            return BeginsWith(text, kSymbolMark) ? SymbolOverAnnotation(text) : Annotate(text);
        case ERowKind::Empty:
            return m_inSymbolColumn ? EnterInEmptyRow(text) : Annotate(text);
        }
    }

    void Correct(const std::string& text) {
        if (!text.empty() && TrimBlanks(text).empty()) return m_edit.Cancel();
        m_edit.EmptyRow(m_row);
        if (text.empty()) return Finish();
        EnterInEmptyRow(text);
    }

    void Overwrite(const std::string& text) {
        const std::string_view trimmed = TrimBlanks(text);
        if (trimmed.empty()) return;
        if (const auto symbol = TypedSymbol(trimmed); symbol && *symbol == m_doc.RowSymbol(m_row) && IsPlain()) return;
        m_edit.EmptyRow(m_row);
        EnterInEmptyRow(text);
    }

    bool ClearAll(const std::vector<int>& columns) {
        const ERowKind kind = m_doc.RowKind(m_row);
        const bool hadNote = m_doc.Notes().Has(m_row);
        bool changed = false;
        for (const int column : columns) {
            const bool hasFormat = m_doc.Formats().Find(m_row, column);
            if (kind == ERowKind::Empty && !hadNote && !hasFormat) continue;
            CCellEntry(m_doc, m_edit, m_row, column).Clear();
            changed = changed || hasFormat;
        }
        return changed || m_doc.RowKind(m_row) != kind || m_doc.Notes().Has(m_row) != hadNote;
    }

private:
    bool IsPlain() const { return m_doc.ShownText(m_row).empty(); }

    void Refuse(const char* why) {
        m_edit.Cancel();
        Tell(why);
    }

    void Clear() {
        const ERowKind kind = m_doc.RowKind(m_row);
        if (kind == ERowKind::Annotation || (kind == ERowKind::Symbol && m_inSymbolColumn))
            m_edit.EmptyRow(m_row);
        else
            m_edit.Notes().Remove(m_row);
        Finish();
    }

    void RefuseInSymbolRow(const std::string& text) {
        Refuse(BeginsWith(text, kSymbolMark) ? "This cell is reserved for Symbol Data."
                                             : "Annotations may not be placed in Symbol Rows.");
    }

    void Retype(const std::string& text) {
        if (BeginsWith(text, kAnnotationMark)) return m_edit.Cancel();
        if (const std::optional<std::string> symbol = TypedSymbol(text))
            Place(*symbol);
        else
            m_edit.ShowText(m_row, TrimBlanks(text));
    }

    void SymbolOverAnnotation(std::string_view text) {
        if (!m_inSymbolColumn || m_column != 1) return Refuse("This row is reserved for Annotation Data.");
        text.remove_prefix(1);
        if (TrimBlanks(text).empty()) return m_edit.Cancel();
        if (const std::optional<std::string> symbol = TypedSymbol(text))
            Place(*symbol);
        else
            Annotate(TrimBlanks(text));
    }

    void EnterInEmptyRow(const std::string& text) {
        if (BeginsWith(text, kAnnotationMark)) return Annotate(text);
        if (const std::optional<std::string> symbol = TypedSymbol(text))
            Place(*symbol);
        else
            Annotate(TrimBlanks(text));
    }

    void Place(const std::string& symbol) {
        m_edit.EnterSymbol(m_row, symbol);
        Finish();
        if (!m_typed.empty() && m_typed != symbol) m_edit.KeepTyped(m_row, m_typed);
    }

    void Annotate(std::string_view text) {
        m_edit.SetAnnotation(m_row, text);
        Finish();
        if (!m_typed.empty() && text == kCommaSymbol) m_edit.KeepTyped(m_row, m_typed);
    }

    // What the user had given the old content belongs to it.
    void Finish() {
        if (m_column >= 1) m_edit.Formats().Reset(m_row, m_column);
        if (m_doc.RowKind(m_row) == ERowKind::Annotation) m_edit.Formats().Reset(m_row, HeadingColumn(m_doc.Columns()));
        m_edit.ShowText(m_row, {});
    }

    const CWatchlistDoc& m_doc;
    CWatchlistEdit& m_edit;
    int m_row;
    int m_column;
    bool m_inSymbolColumn;
    std::string m_typed;
};

} // namespace

void EnterCellText(CWatchlistDoc& doc, int row, int column, std::string_view oldText, std::string_view newText) {
    if (newText == oldText) return;
    if (row < 1 || row > CRowTable::kMaxRow || column < 1 || column >= doc.Columns().Count()) return;
    doc.Edit(StepName(newText), [&](CWatchlistEdit& edit) {
        edit.SelectColumns(column, column);
        CCellEntry(doc, edit, row, column, newText).Enter(UsableText(newText));
    });
}

void CorrectRejected(CWatchlistDoc& doc, int row, std::string_view text) {
    if (!doc.IsRejected(row)) return;
    const int column = doc.Columns().PositionOf(kSymbolColumn);
    doc.Edit(StepName(text), [&](CWatchlistEdit& edit) {
        edit.SelectColumns(column, column);
        CCellEntry(doc, edit, row, column, text).Correct(UsableText(text));
    });
}

void OverwriteRow(const CWatchlistDoc& doc, CWatchlistEdit& edit, int row, std::string_view text) {
    if (row < 1 || row > CRowTable::kMaxRow) return;
    const bool marked = BeginsWith(text, kAnnotationMark); // No symbol was meant that a comma could spoil.
    // One word needs no memory: it comes back in capitals.
    const bool keeps = text.find_first_of(" ,") != std::string_view::npos;
    CCellEntry(doc, edit, row, doc.Columns().PositionOf(kSymbolColumn), keeps ? text : std::string_view{})
        .Overwrite(marked ? PlainText(text) : UsableText(text));
}

bool ClearCells(const CWatchlistDoc& doc, CWatchlistEdit& edit, int row, const std::vector<int>& columns) {
    if (row < 1 || row > CRowTable::kMaxRow || columns.empty()) return false;
    return CCellEntry(doc, edit, row, columns.front()).ClearAll(columns);
}

void AppendWithoutControls(std::string& out, std::string_view text) {
    const size_t begin = out.size();
    out += text;
    std::replace_if(out.begin() + static_cast<std::ptrdiff_t>(begin), out.end(), IsControl, ' ');
}

std::optional<std::string> TypedSymbol(std::string_view text) {
    text = TrimBlanks(text);
    if (std::count(text.begin(), text.end(), ' ') > kMostBlanksInSymbol) return std::nullopt;
    if (text.find(',') != std::string_view::npos) return std::nullopt;
    const bool hasUpper = std::any_of(text.begin(), text.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    return hasUpper ? std::string(text) : UpperAscii(text);
}

void AddCurrentSymbol(CWatchlistDoc& doc, const CSettings& settings, int row) {
    const std::string current = UsableText(settings.ReadTextOrDefault(kCurrentSymbol));
    const std::string symbol(TrimBlanks(current));
    if (symbol.empty() || row < 1 || row > CRowTable::kMaxRow) return;
    if (doc.RowKind(row) != ERowKind::Empty) {
        const std::string question =
            "Would you like to replace the contents of the row with symbol information for \"" + symbol + "\"?";
        if (ShowMessageBox({question, "Replace Row?", EBoxButtons::YesNo, EBoxIcon::Question}) != EBoxAnswer::Yes)
            return;
    }
    doc.Edit("add current symbol", [&](CWatchlistEdit& edit) {
        edit.EnterSymbol(row, symbol);
        if (const int column = doc.Columns().PositionOf(kSymbolColumn); column >= 1) edit.Formats().Reset(row, column);
    });
}

} // namespace vx
