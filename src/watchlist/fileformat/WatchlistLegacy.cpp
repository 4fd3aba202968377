// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/WatchlistLegacy.h"

#include "base/Number.h"
#include "base/Text.h"
#include "data/catalogue/Catalogue.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace vx {

namespace {

struct SRename {
    std::string_view from, to;
};

// Applied from the first to the last, each wherever its old text occurs in the whole list: the order is part of the
// format. Only the three with ";" around them stand for whole names.
constexpr std::array kRenames = {
    SRename{"52 Week High", "52wk High"},
    SRename{"52 Week Low", "52wk Low"},
    SRename{";Ask Volume;", ";A Size;"},
    SRename{"Average Volume", "Avg Vol"},
    SRename{"Avg Volume", "Avg Vol"},
    SRename{"Balance Date", "Bal Date"},
    SRename{";Bid Volume;", ";B Size;"},
    SRename{"Chg From Open", "ChgFrmOpn"},
    SRename{"Cmn Shr Out", "Shares Out"},
    SRename{"Cur Assets", "Assets"},
    SRename{"Cur EPS", "EPS"},
    SRename{"Cur Liab", "Liabilities"},
    SRename{"Debt", "LT Debt"},
    SRename{"Div Amount", "Div Amt"},
    SRename{"Div Exp Date", "Ex Div Date"},
    SRename{"ET Change", "ET Chg"},
    SRename{"Expiration Date", "Exp Date"},
    SRename{"Fisc Yr End", "Fisc Yr End"},
    SRename{"Growth %", "5yr Growth %"},
    SRename{"Leaps", "Leap Symbols"},
    SRename{"Net Asset Value", "Tot Assets"},
    SRename{"Open Interest", "Open Int"},
    SRename{"Options", "Option Symbols"},
    SRename{"Pay Date", "Div Pay Date"},
    SRename{"Split #1", "Split1 Date;Split1 Ratio"},
    SRename{"Split #2", "Split2 Date;Split2 Ratio"},
    SRename{"Strike Price", "Strike"},
    SRename{";Time;", ";T Time;"},
    SRename{"Trade Volume", "Tick Vol"},
    SRename{"UPC11830 IND", "Restricted"},
    SRename{"Years High", "Cal High"},
    SRename{"Years Low", "Cal Low"},
    SRename{"% Change", "% Chg"},
};

std::string Replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    for (size_t at = text.find(from); at != std::string_view::npos; at = text.find(from)) {
        out += text.substr(0, at);
        out += to;
        text.remove_prefix(at + from.size());
    }
    out += text;
    return out;
}

// Every text of the list gets the annotation mark, unless it has it already.
std::string MarkedTexts(std::string_view list) {
    if (list.empty()) return {};
    std::string marked = Replaced(Replaced(fmt::format("#{}", list), ",", ",#"), ",##", ",#");
    if (marked.ends_with(",#")) marked.pop_back();
    return marked;
}

std::string_view Behind(std::string_view text, std::string_view mark) {
    const size_t at = text.find(mark);
    return at == std::string_view::npos ? text : text.substr(at + mark.size());
}

/// Two lists that belong together but are on different lines.
struct SListPair {
    std::string texts, rows;

    template <typename Visit> void Walk(Visit&& visit) const {
        std::string_view textsLeft = texts, rowsLeft = rows;
        while (!textsLeft.empty() && !rowsLeft.empty()) {
            const std::string_view text = TakeUntil(textsLeft, ',');
            const int row = ReadInt32(TakeUntil(rowsLeft, ','));
            if (row != 0 && !text.empty()) visit(row, text);
        }
    }
};

class CLegacyReader {
public:
    CLegacyReader(SWatchlistContent& content, CReadReport& report) : m_content(content), m_report(&report) {}

    void ReportTo(CReadReport& report) { m_report = &report; }

    void ApplyLine(std::string_view line, size_t number) {
        std::string_view value = line;
        const std::string_view key = TakeUntil(value, '=');
        if (key.size() == line.size()) { // Without "=": a section's name, or nothing that can be read.
            if (!line.starts_with('[')) m_report->LeftOut(number, "there is no \"=\" in it", line);
            return;
        }
        m_line = number;
        if (ApplyPlacement(key, value) || ApplyList(key, value) || ApplyRecords(key, value))
            ++m_content.knownLines;
        else
            m_report->LeftOut(number, "the key is unknown", key);
    }

    void Finish() {
        m_symbols.Walk(
            [&](int row, std::string_view symbol) { ReadSymbolAt(row, symbol, m_symbolsLine, m_content, *m_report); });
        m_annotations.texts = MarkedTexts(m_annotations.texts);
        m_annotations.Walk([&](int row, std::string_view text) {
            ReadAnnotationAt(row, text, m_annotationsLine, m_content, *m_report);
        });
    }

private:
    bool ApplyPlacement(std::string_view key, std::string_view value) {
        SPlacement& placement = m_content.options.placement;
        const std::pair<std::string_view, int*> edges[] = {{"RectLeft", &placement.left},
                                                           {"RectTop", &placement.top},
                                                           {"RectWidth", &placement.width},
                                                           {"RectHeight", &placement.height}};
        for (const auto& [name, edge] : edges)
            if (key == name) return *edge = ReadInt32(value), true;
        if (key == "Maximized") return placement.maximised = ReadFlag(value), true;
        if (key == "AlwaysOnTop") return placement.alwaysOnTop = ReadFlag(value), true;
        return false;
    }

    bool ApplyList(std::string_view key, std::string_view value) {
        if (key == "ColumnNames") return ReadColumnNames(value), true;
        if (key == "Symbols") return m_symbols.texts = value, m_symbolsLine = m_line, true;
        if (key == "SymbolNumbers") return m_symbols.rows = value, true;
        if (key == "Annotations") return m_annotations.texts = value, m_annotationsLine = m_line, true;
        if (key == "AnnoNumbers") return m_annotations.rows = value, true;
        return false;
    }

    bool ApplyRecords(std::string_view key, std::string_view value) {
        if (key == "LockColumns") return ReadKey("LockedColumns", value, m_line, m_content, *m_report);
        if (key == "Formatting") return ReadKey(key, value, m_line, m_content, *m_report);
        if (!key.starts_with("AlertNumber")) return false;
        if (const std::string record = ModernAlert(value); !record.empty())
            ReadKey("Alerts", record, m_line, m_content, *m_report);
        else
            m_report->LeftOut(m_line, "the alert was not understood", value);
        return true;
    }

    void ReadColumnNames(std::string_view value) {
        m_content.columns.clear();
        m_content.columnsGiven = true;
        CColumnListReader columns(m_content, *m_report, m_line);
        const std::string names = ModernColumnNames(value);
        for (const std::string_view name : SplitCountingTail(names, ';'))
            if (!name.empty()) columns.Add(name, kDefaultColumnWidthPx);
    }

    SWatchlistContent& m_content;
    CReadReport* m_report;
    size_t m_line = 0;
    SListPair m_symbols, m_annotations;
    size_t m_symbolsLine = 0, m_annotationsLine = 0;
};

} // namespace

std::string ModernColumnNames(std::string_view legacyNames) {
    std::string names(legacyNames);
    std::ranges::replace(names, ',', ';');
    if (!ContainsText(names, ";Symbol;") && !names.starts_with("Symbol;")) names = fmt::format("Symbol;{}", names);
    for (const SRename& rename : kRenames) names = Replaced(names, rename.from, rename.to);
    return names;
}

std::string ModernAlert(std::string_view legacyAlert) {
    const std::string_view symbol = TakeUntil(legacyAlert, '^');
    const std::string_view enabled = TakeUntil(legacyAlert, '^');
    const std::string_view sentence = Behind(TakeUntil(legacyAlert, '^'), "when the ");
    const size_t is = sentence.find(" is ");
    if (symbol.empty() || is == std::string_view::npos) return {};
    std::string_view field = sentence.substr(0, is);
    if (field == "Price" || field == "Last Price") field = "Last";

    constexpr std::pair<std::string_view, std::string_view> kConditions[] = {{"is less than or equal to ", "<="},
                                                                             {"is greater than or equal to ", ">="}};
    std::string_view condition = "=";
    std::string_view value = TrimBlanks(sentence.substr(is + 1));
    const size_t lastBlank = value.rfind(' ');
    for (const auto& [words, sign] : kConditions)
        if (value.starts_with(words)) condition = sign;
    value.remove_prefix(lastBlank == std::string_view::npos ? value.size() : lastBlank + 1);
    std::string number(value);
    std::erase(number, ','); // Between thousands.
    return fmt::format("{}:{},{},{},{};", symbol, field, condition, number, enabled == "Enabled" ? "TRUE" : "FALSE");
}

void ReadLegacyText(std::string_view text, size_t knownBytes, SWatchlistContent& content, CReadReport& report) {
    CReadReport known;
    CLegacyReader reader(content, known);
    const size_t size = text.size();
    size_t number = 0;
    for (size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        if (size - text.size() >= knownBytes) reader.ReportTo(report);
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        ++number;
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!line.empty()) reader.ApplyLine(line, number);
    }
    if (!text.empty()) report.LeftOut(number + 1, "the last line has no end and was not read", text);
    reader.Finish();
}

} // namespace vx
