// SPDX-License-Identifier: MIT
#include "vxconnect/data/RowReader.h"

#include "base/Text.h"
#include "vxconnect/common/WireText.h"
#include "vxconnect/data/InputValue.h"
#include "vxconnect/data/JsonFields.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace vx::sim {

namespace {

constexpr size_t kSymbolSlot = 0;

// The slot of the day on which a trade's time is, 0 for other slots.
size_t DateSlotOf(size_t slot) {
    switch (static_cast<EField>(slot)) {
    case EField::LastTime:
        return static_cast<size_t>(EField::LastDate);
    case EField::RecentTime:
        return static_cast<size_t>(EField::RecentDate);
    case EField::ExtendedTime:
        return static_cast<size_t>(EField::ExtendedDate);
    default:
        return 0;
    }
}

bool Holds(const SRow& row, size_t slot) {
    return std::any_of(row.values.begin(), row.values.end(), [=](const SRowValue& v) { return v.slot == slot; });
}

} // namespace

bool CRowReader::Wrong(const std::string& what) {
    m_complain(Line(), what);
    return false;
}

void CRowReader::Restart() {
    m_format = EFormat::Unknown;
    m_csv = CCsvReader();
    m_lines = CLineCutter(kMaxLine);
    m_linesBefore = 0;
    m_columns.clear();
}

void CRowReader::Append(std::string_view bytes) {
    constexpr std::string_view kNothing = "\xEF\xBB\xBF \t\r\n"; // A byte-order mark too.
    if (m_format == EFormat::Unknown) {
        const size_t first = std::min(bytes.find_first_not_of(kNothing), bytes.size());
        m_linesBefore += static_cast<uint64_t>(std::count(bytes.begin(), bytes.begin() + first, '\n'));
        bytes.remove_prefix(first);
        if (bytes.empty()) return;
        m_format = bytes.front() == '{' ? EFormat::Json : EFormat::Csv;
    }
    m_format == EFormat::Json ? m_lines.Append(bytes) : m_csv.Append(bytes);
}

void CRowReader::End() {
    m_csv.End();
    m_lines.End();
}

CRowReader::EResult CRowReader::Next(SRow& row) {
    row.symbol.clear();
    row.values.clear();
    m_dates.clear();
    m_symbolWrong = false;
    if (m_format == EFormat::Unknown) return EResult::NeedsMore;
    return m_format == EFormat::Json ? NextJson(row) : NextCsv(row);
}

CRowReader::EResult CRowReader::NextCsv(SRow& row) {
    if (!m_csv.Next()) return EResult::NeedsMore;
    m_line = m_csv.Line();
    if (IsBlankRecord()) return EResult::Blank;
    if (m_csv.IsTooLong())
        Wrong(fmt::format("longer than {} bytes", kMaxLine));
    else if (m_csv.HasBadQuote())
        Wrong("a quote is not closed, or text follows a closing quote");
    else if (m_origin == EOrigin::Stream && m_csv.IsUnended())
        Wrong("no line end: it may be incomplete and is ignored");
    else if (m_columns.empty() || IsHeaderAgain())
        ReadHeader();
    else if (ReadCsv(row))
        return Finish(row);
    return EResult::NoRow;
}

bool CRowReader::IsBlankRecord() const {
    for (size_t i = 0; i < m_csv.FieldCount(); ++i)
        if (m_csv.Field(i).find_first_not_of(" \t") != std::string_view::npos) return false;
    return true;
}

CRowReader::EResult CRowReader::NextJson(SRow& row) {
    const auto line = m_lines.Next();
    if (!line) return EResult::NeedsMore;
    m_line = line->number;
    if (line->text.find_first_not_of(" \t") == std::string_view::npos) return EResult::Blank;
    if (line->tooLong) {
        Wrong(fmt::format("longer than {} bytes", kMaxLine));
        return EResult::NoRow;
    }
    return ReadJson(line->text, row) ? Finish(row) : EResult::NoRow;
}

CRowReader::EResult CRowReader::Finish(SRow& row) {
    for (SRowValue& date : m_dates)
        if (!Holds(row, date.slot)) row.values.push_back(std::move(date));
    if (!row.symbol.empty()) return EResult::Row;
    if (!m_symbolWrong) Wrong("field \"Symbol\" is empty");
    return EResult::NoRow;
}

// The writer has started again: the symbol's field contains its column's name, and another field a name as well.
bool CRowReader::IsHeaderAgain() const {
    const auto isName = [&](size_t i) { return m_names.Find(m_csv.Field(i)).field != nullptr; };
    if (CompareNoCase(m_csv.Field(m_symbolColumn), m_symbolName) != 0) return false;
    size_t names = 0;
    for (size_t i = 0; i < m_csv.FieldCount(); ++i) names += isName(i);
    return names > 1;
}

bool CRowReader::ReadHeader() {
    const std::string_view first = m_csv.Field(0);
    if (first.starts_with("\xFF\xFE") || first.starts_with("\xFE\xFF"))
        return Wrong("the text is UTF-16; save it as UTF-8");
    if (first.starts_with('[')) return Wrong("JSON must hold one object in each line, not a list");
    const auto isSymbol = [&](size_t i) {
        const SInputField* const field = m_names.Find(m_csv.Field(i)).field;
        return field && field->slot == kSymbolSlot;
    };
    m_columns.clear();
    for (m_symbolColumn = 0; m_symbolColumn < m_csv.FieldCount() && !isSymbol(m_symbolColumn);) ++m_symbolColumn;
    if (m_symbolColumn == m_csv.FieldCount()) return Wrong("no column \"Symbol\"; use --map NAME=Symbol to name it");
    m_symbolName = m_csv.Field(m_symbolColumn);
    for (size_t i = 0; i < m_csv.FieldCount(); ++i) m_columns.push_back(ColumnOf(m_csv.Field(i)));
    return true;
}

// The field of a name, null for one that is ignored.
const SInputField* CRowReader::ColumnOf(std::string_view name) {
    constexpr size_t kMostNames = 100, kMostOfOne = 64; // That are remembered.
    const CFieldNames::SFound found = m_names.Find(name);
    const auto same = [&](const SInputField* other) {
        return other && found.field && other->slot == found.field->slot;
    };
    const auto twice = std::find_if(m_columns.begin(), m_columns.end(), same);
    if (found.field && twice == m_columns.end()) return found.field;
    if (found.leftOut || TrimBlanks(name).empty() || m_ignored.size() >= kMostNames) return nullptr;
    if (!m_ignored.emplace(name.substr(0, kMostOfOne)).second) return nullptr;
    const std::string shown = Shown(TrimBlanks(name));
    if (found.field)
        Wrong(fmt::format("\"{}\" is ignored: field \"{}\" has been given already", shown, (*twice)->name));
    else
        Wrong(fmt::format("\"{}\" is not a field and is ignored; the nearest are {}", shown, NearestFields(name)));
    return nullptr;
}

bool CRowReader::ReadCsv(SRow& row) {
    size_t count = m_csv.FieldCount();
    while (count > m_columns.size() && TrimBlanks(m_csv.Field(count - 1)).empty()) --count;
    if (count != m_columns.size())
        return Wrong(fmt::format("{} values where the header names {}", count, m_columns.size()));
    for (size_t i = 0; i < count; ++i)
        if (m_columns[i]) Add(*m_columns[i], m_csv.Field(i), row);
    return true;
}

bool CRowReader::ReadJson(std::string_view line, SRow& row) {
    const std::string wrong = ReadJsonLine(line, m_members);
    if (!wrong.empty()) return Wrong(wrong);
    m_columns.clear();
    for (const SJsonField& member : m_members) {
        const SInputField* const field = ColumnOf(member.name);
        m_columns.push_back(field);
        if (field && member.nested)
            Wrong(fmt::format("field \"{}\" is neither text nor number", field->name));
        else if (field)
            Add(*field, member.value, row);
    }
    return true;
}

void CRowReader::Add(const SInputField& field, std::string_view text, SRow& row) {
    const std::string_view trimmed = TrimBlanks(text);
    if (trimmed.empty()) return;
    const auto tell = [&](std::string_view what) { Wrong(fmt::format("field \"{}\": {}", field.name, what)); };
    const auto refuse = [&](std::string_view what) {
        tell(what);
        m_symbolWrong |= field.slot == kSymbolSlot;
    };
    const std::optional<std::string> wire = WireTextOf(trimmed);
    if (!wire) return refuse(fmt::format("\"{}\" contains characters that Windows-1252 does not have", Shown(trimmed)));
    SInputValue value = ReadInputValue(field.kind, *wire);
    if (!value.error.empty()) return refuse(value.error);
    if (value.capped && m_capped.insert(field.slot).second)
        tell(fmt::format("\"{}\" is too large; {}, the most that fits, is sent instead", Shown(*wire), value.text));
    if (value.text.empty()) return; // It was nothing but commas.
    if (!value.date.empty() && DateSlotOf(field.slot) != 0)
        m_dates.push_back({DateSlotOf(field.slot), std::move(value.date)});
    if (field.slot == kSymbolSlot)
        row.symbol = std::move(value.text);
    else
        row.values.push_back({field.slot, std::move(value.text)});
}

} // namespace vx::sim
