#include "vxconnect/RowReader.h"

#include "base/Text.h"
#include "vxconnect/CsvFields.h"
#include "vxconnect/InputValue.h"
#include "vxconnect/JsonFields.h"
#include "vxconnect/WireText.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr size_t kSymbolSlot = 0;

std::string UnknownField(std::string_view name) { return fmt::format("\"{}\" is no field name", Shown(name)); }

} // namespace

bool CRowReader::Complain(std::string text) {
    m_error = std::move(text);
    return false;
}

CRowReader::EResult CRowReader::Read(std::string_view line, SRow& row) {
    m_error.clear();
    row.symbol.clear();
    row.values.clear();
    const size_t first = line.find_first_not_of(" \t");
    if (first == std::string_view::npos) return EResult::NoRow;
    if (m_format == EFormat::Unknown && line[first] == '{') m_format = EFormat::Json;
    if (m_format == EFormat::Unknown) return ReadHeader(line) ? EResult::NoRow : EResult::Error;
    const bool good = m_format == EFormat::Json ? ReadJson(line, row) : ReadCsv(line, row);
    if (!good) return EResult::Error;
    if (row.symbol.empty()) return Complain("field \"Symbol\" is empty"), EResult::Error;
    return EResult::Row;
}

bool CRowReader::ReadHeader(std::string_view line) {
    if (line.starts_with("\xFF\xFE") || line.starts_with("\xFE\xFF"))
        return Complain("the text is UTF-16; save it as UTF-8");
    if (line.starts_with('[')) return Complain("JSON must hold one object in each line, not a list");
    m_separator = CsvSeparatorOf(line);
    m_columns.clear();
    const std::string wrong = ReadCsvLine(WireTextOf(line), m_separator, m_values);
    if (!wrong.empty()) return Complain(wrong);
    bool hasSymbol = false;
    for (const std::string& name : m_values) {
        const SInputField* const field = FindInputField(name);
        if (!field) return Complain(UnknownField(name));
        if (!AddColumn(*field)) return false;
        hasSymbol |= field->slot == kSymbolSlot;
    }
    if (!hasSymbol) return Complain("no column \"Symbol\"");
    m_format = EFormat::Csv;
    return true;
}

bool CRowReader::AddColumn(const SInputField& field) {
    const auto same = [&](const SInputField* other) { return other->slot == field.slot; };
    const auto twice = std::find_if(m_columns.begin(), m_columns.end(), same);
    if (twice == m_columns.end()) {
        m_columns.push_back(&field);
        return true;
    }
    if (*twice == &field) return Complain(fmt::format("field \"{}\" is given twice", field.name));
    return Complain(fmt::format("\"{}\" and \"{}\" are the same field", (*twice)->name, field.name));
}

bool CRowReader::ReadCsv(std::string_view line, SRow& row) {
    const std::string wrong = ReadCsvLine(WireTextOf(line), m_separator, m_values);
    if (!wrong.empty()) return Complain(wrong);
    if (m_values.size() != m_columns.size())
        return Complain(fmt::format("{} values where the header names {}", m_values.size(), m_columns.size()));
    for (size_t i = 0; i < m_values.size(); ++i)
        if (!Add(*m_columns[i], m_values[i], row)) return false;
    return true;
}

bool CRowReader::ReadJson(std::string_view line, SRow& row) {
    const std::string wrong = ReadJsonLine(line, m_members);
    if (!wrong.empty()) return Complain(wrong);
    m_columns.clear();
    for (const SJsonField& member : m_members) {
        const SInputField* const field = FindInputField(member.name);
        if (!field) return Complain(UnknownField(member.name));
        if (!AddColumn(*field)) return false;
        if (member.nested) return Complain(fmt::format("field \"{}\" is neither text nor number", field->name));
        if (!Add(*field, member.value, row)) return false;
    }
    return true;
}

bool CRowReader::Add(const SInputField& field, std::string_view text, SRow& row) {
    if (TrimBlanks(text).empty()) return true;
    SInputValue value = ReadInputValue(field.kind, text);
    if (!value.error.empty()) return Complain(fmt::format("field \"{}\": {}", field.name, value.error));
    if (value.text.empty()) return true; // It was nothing but commas.
    if (field.slot == kSymbolSlot) {
        row.symbol = std::move(value.text);
    } else {
        row.values.push_back({field.slot, std::move(value.text)});
    }
    return true;
}

} // namespace vx::sim
